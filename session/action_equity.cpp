#include "session/action_equity.h"

#include <cstddef>
#include <cstdint>

#include "session/equity.h"

namespace kestrel_app {

ActionEquity::ActionEquity(const DecisionView& view, std::span<const float> their_weights)
    : view_(view),
      their_weights_(their_weights.begin(), their_weights.end()),
      generator_(static_cast<std::uint32_t>(view.index) ^ 0xC0FFEEU) {}

double ActionEquity::of(std::span<const double> own_weights) {
    using kestrel::NO_CARD;
    const kestrel::GameNode& node = view_.node;
    if (node.turn != NO_CARD && node.river != NO_CARD) {
        return exact_equity(view_.cards, view_.hero, node.turn, node.river, own_weights,
                            their_weights_);
    }
    constexpr std::size_t samples_on_the_turn = 4000;
    constexpr std::size_t samples_on_the_flop = 6000;
    const std::size_t samples = node.turn != NO_CARD ? samples_on_the_turn : samples_on_the_flop;
    const auto& their_pockets = view_.cards.pockets[index_of(other(view_.hero))];
    return monte_carlo_equity(generator_, std::span(view_.cards.board).first(3), node.turn,
                              node.river, {view_.pockets, own_weights},
                              {their_pockets, their_weights_}, samples);
}

}  // namespace kestrel_app
