// Terminals, hand by hand of a seat: the plain evaluation of one after the other, and the lanes.
// Reach rows are those of a solve that has run for a while, in which most hands have left most
// lines; the items are hands of a terminal.

#include <benchmark/benchmark.h>

#include "bench/spots.h"
#include "engine/solver/lane_terminals.h"
#include "engine/solver/simd.h"
#include "engine/solver/terminal.h"

namespace {

using namespace kestrel;
using bench::ReachedTerminal;

constexpr std::uint32_t iterations_before = 60;

/// The terminals of one kind behind the first deal of the river, or before it, all on one board.
struct Terminals {
    std::unique_ptr<Game> game;
    std::vector<ReachedTerminal> list;
    ShowdownOrders orders;

    template <class Wanted>
    Terminals(const kestrel_app::SpotInputs& spot, Wanted wanted) : game(bench::make_game(spot)) {
        list = bench::terminals_of_solve(*game, iterations_before, 0, wanted);
        orders.build(game->cards, nullptr, 1);
    }

    std::size_t hands() const { return game->cards.pockets[1].size(); }
};

const Card river = parse_card("7h");

Terminals& showdowns(bool raked) {
    static Terminals spots[2] = {
        Terminals(bench::full_turn(false),
                  [](const GameNode& n) {
                      return n.river == river && n.last_action != ActionKind::fold;
                  }),
        Terminals(bench::full_turn(true),
                  [](const GameNode& n) {
                      return n.river == river && n.last_action != ActionKind::fold;
                  }),
    };
    return spots[raked ? 1 : 0];
}

Terminals& folds() {
    static Terminals spot(bench::full_turn(false), [](const GameNode& n) {
        return n.river == river && n.last_action == ActionKind::fold;
    });
    return spot;
}

Terminals& turn_all_ins() {
    static Terminals spot(bench::full_turn(true), [](const GameNode& n) {
        return n.runout_pending && n.last_action != ActionKind::fold;
    });
    return spot;
}

void run_plain(benchmark::State& state, Terminals& terminals) {
    std::vector<float> out(terminals.hands());
    for (auto _ : state) {
        for (const ReachedTerminal& t : terminals.list) {
            terminal_eval(*terminals.game, terminals.game->nodes[t.node], Seat::IP, t.reach, out);
            benchmark::ClobberMemory();
        }
    }
    state.counters["terminals"] = static_cast<double>(terminals.list.size());
    state.SetItemsProcessed(state.iterations() *
                            static_cast<std::int64_t>(terminals.list.size() * terminals.hands()));
}

template <class Evaluate>
void run_lanes(benchmark::State& state, Terminals& terminals, Evaluate evaluate) {
    const Game& game = *terminals.game;
    const std::size_t width = padded_row(terminals.hands());
    const std::size_t their_width = padded_row(game.cards.pockets[0].size());
    const std::size_t count = terminals.list.size();
    AlignedBuffer<float> reach(count * their_width);
    AlignedBuffer<float> out(count * width);
    std::vector<LaneTerminal> lanes;
    for (std::size_t i = 0; i < count; ++i) {
        const GameNode& node = game.nodes[terminals.list[i].node];
        float* const row = reach.data() + i * their_width;
        std::fill_n(row, their_width, 0.0F);
        std::ranges::copy(terminals.list[i].reach, row);
        ShowdownRule rule =
            node.river == NO_CARD ? runout_rule(game, node) : showdown_rule(game, node);
        if (node.last_action == ActionKind::fold) {
            rule = {false, {fold_payoff(game, node, Seat::IP), 0.0, 0.0}};
        }
        lanes.push_back({row, out.data() + i * width, rule.raked, rule.payoffs});
    }
    LaneTerminals evaluator(game, terminals.orders);
    const GameNode& first = game.nodes[terminals.list[0].node];
    for (auto _ : state) {
        evaluate(evaluator, first, lanes);
        benchmark::ClobberMemory();
    }
    state.counters["terminals"] = static_cast<double>(count);
    state.SetItemsProcessed(state.iterations() *
                            static_cast<std::int64_t>(count * terminals.hands()));
}

void BM_ShowdownPlain(benchmark::State& state) {
    run_plain(state, showdowns(state.range(0) != 0));
}
BENCHMARK(BM_ShowdownPlain)->ArgName("raked")->Arg(0)->Arg(1);

void BM_ShowdownLanes(benchmark::State& state) {
    run_lanes(state, showdowns(state.range(0) != 0),
              [](LaneTerminals& evaluator, const GameNode& node, std::span<LaneTerminal> lanes) {
                  evaluator.showdowns(Seat::IP, node.turn, node.river, lanes);
              });
}
BENCHMARK(BM_ShowdownLanes)->ArgName("raked")->Arg(0)->Arg(1);

void BM_FoldPlain(benchmark::State& state) {
    run_plain(state, folds());
}
BENCHMARK(BM_FoldPlain);

void BM_FoldLanes(benchmark::State& state) {
    run_lanes(state, folds(),
              [](LaneTerminals& evaluator, const GameNode& node, std::span<LaneTerminal> lanes) {
                  evaluator.folds(Seat::IP, node.turn, node.river, lanes);
              });
}
BENCHMARK(BM_FoldLanes);

void BM_AllInTurnPlain(benchmark::State& state) {
    run_plain(state, turn_all_ins());
}
BENCHMARK(BM_AllInTurnPlain)->Unit(benchmark::kMicrosecond);

void BM_AllInTurnLanes(benchmark::State& state) {
    run_lanes(state, turn_all_ins(),
              [](LaneTerminals& evaluator, const GameNode& node, std::span<LaneTerminal> lanes) {
                  static const auto runouts = runouts_of(*turn_all_ins().game, node);
                  evaluator.all_ins(Seat::IP, runouts, std::nullopt, lanes);
              });
}
BENCHMARK(BM_AllInTurnLanes)->Unit(benchmark::kMicrosecond);

/// All-in on the flop: full ranges, the reach of a range that nobody has left.
Terminals& flop_all_in() {
    static Terminals spot = [] {
        kestrel_app::SpotInputs inputs = bench::full_turn(true);
        inputs.board[3] = NO_CARD;
        inputs.options.starting_street = Street::Flop;
        inputs.options.effective_stack = 500;
        inputs.options.flop = inputs.options.turn;
        inputs.options.flop.oop_bets = inputs.options.flop.ip_raises = parse_size_list("a", false);
        inputs.options.turn = inputs.options.river = {};
        return Terminals(inputs,
                         [](const GameNode& n) { return n.runout_pending && n.turn == NO_CARD; });
    }();
    return spot;
}

void BM_AllInFlopPlain(benchmark::State& state) {
    run_plain(state, flop_all_in());
}
BENCHMARK(BM_AllInFlopPlain)->Unit(benchmark::kMillisecond);

void BM_AllInFlopLanes(benchmark::State& state) {
    run_lanes(state, flop_all_in(),
              [](LaneTerminals& evaluator, const GameNode& node, std::span<LaneTerminal> lanes) {
                  static const auto runouts = runouts_of(*flop_all_in().game, node);
                  evaluator.all_ins(Seat::IP, runouts, std::nullopt, lanes);
              });
}
BENCHMARK(BM_AllInFlopLanes)->Unit(benchmark::kMillisecond);

}  // namespace
