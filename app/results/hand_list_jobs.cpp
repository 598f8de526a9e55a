#include "app/results/hand_list_jobs.h"

#include <chrono>
#include <memory>
#include <optional>
#include <utility>

namespace tidewell {

using kestrel_app::HandCombo;

bool HandListJobs::request(int node) {
    // Who asks for another node, also for one that is known, waits for no other any more.
    if (pending_ != node) {
        clear();
    }
    if (node < 0 || answers_.knowsHandCombos(node) || !session_.finished()) {
        return true;
    }
    if (pending_ != node) {
        start(node);
    }
    return false;
}

void HandListJobs::start(int node) {
    using Combos = std::vector<HandCombo>;
    const std::weak_ptr<const kestrel_app::FinishedSolve> asked = session_.finished();
    const auto work = [asked, node](const std::atomic<bool>&) -> std::optional<Combos> {
        const auto solve = asked.lock();
        return solve ? hand_combos(*solve, static_cast<std::uint64_t>(node)) : std::nullopt;
    };
    const auto done = [this, node](std::optional<Combos> combos) {
        pending_ = -1;
        if (combos) {
            answers_.keepHandCombos(node, *std::move(combos));
        }
        Q_EMIT ready(node);
    };
    pending_ = node;
    // Whoever asks shows at once that a list is on its way: there is nothing to wait for here.
    job_.start(work, done, std::chrono::milliseconds(0));
}

void HandListJobs::clear() {
    pending_ = -1;
    job_.drop();
}

}  // namespace tidewell
