#include "session/reached_values.h"

namespace kestrel_app {

ReachedValues::ReachedValues(const DecisionView& view)
    : own_reach(view.own_reach()),
      their_reach(opponent_reach(view)),
      values(view.solve.recent_values.of(
          view.index,
          [&] { return view.solve.solver->action_values(view.game, view.index, their_reach); })),
      scale(view.game, view.node, view.hero, their_reach) {}

std::vector<float> opponent_reach(const DecisionView& view) {
    const kestrel::Seat opponent = other(view.hero);
    return reach_along(view.solve, view.index, view.solve.parents().path_to(view.index), opponent,
                       range_weights(view.cards, opponent));
}

}  // namespace kestrel_app
