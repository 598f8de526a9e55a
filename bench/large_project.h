#pragma once

#include "app/files/project_file.h"
#include "bench/spots.h"
#include "session/result_snapshot.h"

namespace bench {

/// The project of a flop spot with more than a million nodes and few hands, so that the tree is
/// large and the solver small.
inline const tidewell::ProjectData& large_project() {
    static const tidewell::ProjectData data = [] {
        kestrel_app::SpotInputs spot;
        const auto flop = kestrel::parse_flop("Ad8s5c");
        spot.board = {flop[0], flop[1], flop[2], kestrel::NO_CARD, kestrel::NO_CARD};
        spot.ranges = {kestrel::parse_range("AhKh,KhKs"), kestrel::parse_range("QsJs,JdJh")};
        spot.options.starting_pot = 1000;
        spot.options.effective_stack = 10000;
        spot.options.flop = sizing("33%,75%", "60%");
        spot.options.turn = spot.options.river = sizing("75%", "60%");
        const auto game = make_game(spot);
        kestrel::DiscountedCfr solver(options_of(false));
        solver.prepare_states(*game);
        tidewell::ProjectData result;
        result.hasResults = true;
        result.results.iterations = 1;
        result.results.tree = {std::make_shared<const kestrel_app::TreeSnapshot>(*game, solver),
                               100.0};
        return result;
    }();
    return data;
}

}  // namespace bench
