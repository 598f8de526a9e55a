#include "app/play/judgement.h"

#include <algorithm>
#include <cmath>

namespace tidewell {

std::optional<Judgement> judge(std::span<const double> actionEvs, std::size_t chosen) {
    if (chosen >= actionEvs.size() || !std::isfinite(actionEvs[chosen])) {
        return std::nullopt;
    }
    std::size_t best = chosen;
    for (std::size_t a = 0; a < actionEvs.size(); ++a) {
        const bool better =
            actionEvs[a] > actionEvs[best] || (actionEvs[a] == actionEvs[best] && a < best);
        best = std::isfinite(actionEvs[a]) && better ? a : best;
    }
    return Judgement{actionEvs[chosen], actionEvs[best], best};
}

bool isMistake(const Judgement& judgement, const Tolerance& tolerance) {
    constexpr double tiny = 1e-9;  // chips
    const double size = std::max({std::abs(judgement.bestEv), std::abs(judgement.chosenEv), tiny});
    return judgement.loss() > std::max(tolerance.absolute, tolerance.relative * size);
}

}  // namespace tidewell
