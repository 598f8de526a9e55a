#include "engine/game/action_plan.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "engine/game/check_tree.h"
#include "engine/game/game.h"
#include "engine/game/tree_count.h"
#include "tests/engine/failure.h"
#include "tests/engine/support.h"

namespace kestrel {
namespace {

const char* const river_board = "AdJd8s4c2h";
const char* const turn_board = "AdJd8s4c";

/// A tree is sound, and counted as it is built.
void check(const Game& game) {
    EXPECT_NO_THROW(check_tree(game));
    const auto weigh = [](Seat seat, std::size_t actions) {
        return actions * actions + index_of(seat);
    };
    TreeCount built;
    TreeCount first_street;
    for (const GameNode& node : game.nodes) {
        TreeCount one{.nodes = 1, .chances = node.kind == NodeKind::Chance ? 1U : 0U};
        if (node.kind == NodeKind::Decision) {
            one.decisions = 1;
            one.actions[index_of(node.seat)] = node.actions.size();
            one.action_bytes = weigh(node.seat, node.actions.size());
        }
        built += one;
        first_street +=
            one * (node.turn == game.cards.board[3] && node.river == game.cards.board[4]);
    }
    const BettingRules rules(game.options, game.cards.board, &game.cards.isomorphism);
    const NodeCosts costs{.node = 10, .decision = 3, .actions = weigh};
    const auto counted = TreeCounter(rules, costs, {}).count(rules.root());
    EXPECT_FALSE(counted.at_least);
    EXPECT_EQ(counted.tree, built);
    EXPECT_EQ(counted.first_street, first_street);
    EXPECT_EQ(counted.bytes, built.nodes * 10 + built.decisions * 3 + built.action_bytes);
    // Exactly at its size a tree still fits.
    EXPECT_FALSE(TreeCounter(rules, costs, {counted.bytes}).count(rules.root()).at_least);
    const auto beyond = TreeCounter(rules, costs, {counted.bytes - 1}).count(rules.root());
    EXPECT_LE(beyond.bytes, counted.bytes);
}

struct ActionsCase {
    const char* name;
    Spot spot;
    std::string_view path;
    std::string_view expected;
    std::array<double, 2> jam = {};
    double all_in_threshold = 0;
    double merge_threshold = 0;
};

TEST(ActionPlan, ActionsAndAmounts) {
    const auto river = [](Sizes sizes, std::int32_t stack = 10000) {
        Spot spot{.board = river_board};
        spot.stack = stack;
        spot.river = sizes;
        return spot;
    };
    // Turn bets lead to the river rules.
    const auto donk = [](std::optional<std::string_view> sizes) {
        Spot spot{.board = turn_board};
        spot.turn = both("50%", "3x");
        spot.river = both("100%");
        spot.river.donk = sizes;
        return spot;
    };
    Spot flop{.board = "AdJh8s"};
    flop.flop = both("50%, 3e", "100%, 3x");

    const ActionsCase cases[] = {
        {"flop, geometric", flop, "", "x b500 b879"},
        {"flop, facing a bet", flop, "b500", "f c500 r1500 r2500"},
        {"flop, facing a raise", flop, "b500 r1500", "f c1000 r4500 r5500"},
        {"flop, facing an all-in", flop, "b500 r2500 r7500 a10000", "f c2500"},
        {"geometric on the river", river(both("e")), "", "x a10000"},
        {"geometric with a limit", river(both("2%75e")), "", "x b750"},
        {"no sizes", river({}), "", "x"},
        {"chips, halves away from zero", river(both("33.25%, 250c")), "", "x b250 b333"},
        {"the stack is the limit", river(both("200%, a"), 1500), "", "x a1500"},
        {"raises below the least merge", river(both("500c", "10c, 1.5x, 20%")), "b500",
         "f c500 r1000"},
        {"multiple is of the bet level", river(both("50%", "2.5x")), "b500 r1250", "f c750 r3125"},
        {"chips are on top of the bet level", river(both("500c", "700c")), "b500", "f c500 r1200"},
        {"raise cap, first raise", river(both("500c", "1500c2r")), "b500", "f c500 r2000"},
        {"raise cap, second raise", river(both("500c", "1500c2r")), "b500 r2000", "f c1500"},
        {"seats have their own sizes", river({"25%", "", "75%", "3x"}), "x", "x b750"},

        {"root is a donk spot", river({"50%", "", "75%", "", "20%, 30%"}), "", "x b200 b300"},
        {"the bet behind a check is not", river({"50%", "", "75%", "", ""}), "x", "x b750"},
        {"empty donk sizes", river({"50%", "", "75%", "", ""}), "", "x"},
        {"donk behind the caller's bet", donk(""), "b500 c500 d", "x b2000"},
        {"donk into the bettor", donk(""), "x b500 c500 d", "x"},
        {"donk into the raiser", donk("10%"), "b500 r1500 c1000 d", "x b400"},
        {"the raiser keeps the lead", donk("10%"), "x b500 r1500 c1000 d", "x b4000"},
        {"donk behind checks", donk(""), "x x d", "x b1000"},

        {"jam up to the limit", river(both("50%"), 2000), "", "x b500 a2000", {2.0, 0}},
        {"jam beyond the limit", river(both("50%"), 2000), "", "x b500", {1.999, 0}},
        {"jam by seat", river(both("50%"), 2000), "x", "x b500", {2.0, 0}},
        {"jam on a bet", river(both("50%"), 4000), "b500", "f c500 a4000", {0, 2.0}},
        {"no jam beside an all-in", river(both("a"), 2000), "", "x a2000", {9, 9}},
        {"no jam against an all-in", river(both("a"), 2000), "a2000", "f c2000", {9, 9}},
        {"jam in an empty donk spot", river({"50%", "", "", "", ""}, 900), "", "x a900", {1, 0}},

        // Behind 600 of 1000 the pot is 2200 when called: a half of it covers the stack.
        {"all-in threshold", river(both("60%"), 1000), "", "x a1000", {}, 0.5},
        {"below the all-in threshold", river(both("60%"), 1000), "", "x b600", {}, 0.45},
        // (0.52 - 0.1) / 1.1 = 0.382 lies below 0.5 and above 0.3.
        {"merge", river(both("30%, 50%, 52%")), "", "x b300 b520", {}, 0, 0.1},
        {"merge into the all-in", river(both("95%, a"), 1000), "", "x a1000", {}, 0, 0.1},
    };
    for (const ActionsCase& c : cases) {
        SCOPED_TRACE(c.name);
        PlanOptions options = options_from(c.spot);
        options.jam_threshold = c.jam;
        options.all_in_threshold = c.all_in_threshold;
        options.merge_threshold = c.merge_threshold;
        const Game game(options, cards_from(c.spot));
        EXPECT_EQ(text_of(game.nodes[descend(game.nodes, c.path)].actions), c.expected);
        check(game);
    }
}

TEST(ActionPlan, CountsByHand) {
    const auto spot = [](std::string_view board, Sizes sizes) {
        Spot result{.board = board};
        result.flop = result.turn = result.river = sizes;
        return result;
    };
    Spot shove = spot("AdJh8s", {});
    shove.flop.oop_bets = "a";
    const std::pair<Spot, std::size_t> cases[] = {
        {spot(river_board, {}), 3},
        // Bet or check, bet or check behind it, two answers to each bet.
        {spot(river_board, both("50%")), 9},
        {spot(turn_board, {}), 3 + 48 * 3},
        {spot("AdJh8s", {}), 3 + 49 * 3 + 49 * 48 * 3},
        // Clubs stand for hearts; behind a club on the turn nothing is alike.
        {spot("AdJd8s", {}), 3 + (13 + 23) * 3 + (13 * 48 + 23 * 35) * 3},
        // The all-in adds a decision, a fold, and a call with all its run-outs.
        {shove, 3 + 49 * 3 + 49 * 48 * 3 + 2 + 1 + 49 + 49 * 48},
    };
    for (const auto& [s, count] : cases) {
        const Game game = game_from(s);
        EXPECT_EQ(game.plan.node_count(), count) << s.board;
        check(game);
    }
}

Spot three_streets(std::string_view board) {
    Spot spot{.board = board};
    spot.stack = 5000;
    spot.flop = spot.turn = spot.river = both("75%,a", "50%,a");
    spot.turn.donk = "";
    return spot;
}

TEST(ActionPlan, LargeTreesAreSoundAndCounted) {
    // Rainbow, two suits, one, a pair; ranges that leave suits alike and that do not.
    for (const char* board : {"AdJh8s", "AdJd8s", "AhJh8h", "7h7s2c", "7h7s2c2d"}) {
        check(game_from(three_streets(board)));
    }
    Spot odd = three_streets("AdJd8s");
    odd.ip = "KK,AhKh";
    odd.stack = 3000;
    odd.flop = odd.turn = {"500c", "700c2r", "33%,e", "2.5x,10c", "20%"};
    odd.river = {"2e,50%", "3x", "60%,65%,a", "1000c1r", ""};
    PlanOptions options = options_from(odd);
    options.jam_threshold = {0.8, 2};
    options.all_in_threshold = 0.3;
    options.merge_threshold = 0.1;
    check({options, cards_from(odd)});
    odd.board = "AdJd8s4c";  // the flop's street on a board that has its turn
    check({options, cards_from(odd)});
}

TEST(ActionPlan, KeepsToItsLimits) {
    Spot spot = three_streets("AdJd8s");
    const std::uint64_t size = game_from(spot).plan.memory_bytes();
    const auto failure = [](const Spot& s, const TreeLimits& limits) {
        try {
            return failure_of([&] { Game(options_from(s), cards_from(s), limits); });
        } catch (const std::runtime_error& error) {
            return std::string(error.what());
        }
    };
    const std::atomic<bool> stop = true;
    EXPECT_EQ(failure(spot, {size + 16}), "");
    EXPECT_EQ(failure(spot, {size + 15}), "The tree is too large");
    EXPECT_EQ(failure(spot, {size, &stop}), "Stopped");
    // Twenty sizes a street; and raises by the least that there is, line upon line.
    std::string many = "5%";
    for (int percent = 10; percent <= 100; percent += 5)
        many += "," + std::to_string(percent) + "%";
    spot.flop = spot.turn = spot.river = both(many, many);
    spot.stack = 100000;
    EXPECT_EQ(failure(spot, {}), "The tree is too large");
    spot.board = river_board;
    spot.river = both("1c", "1c");
    EXPECT_EQ(failure(spot, {}), "invalid argument: The betting lines are too long");
}

TEST(ActionPlanParallel, TheTreeIsTheSame) {
    const Spot spot = three_streets("AdJd8s");
    const Game alone = game_from(spot);
    for (const char* depth : {"1", "3x", "6"}) {
        const ScopedVariable from("KESTREL_ACTIONPLAN_PARALLEL_DEPTH", depth);
        const ScopedVariable workers("KESTREL_ACTIONPLAN_MAX_WORKERS", "4");
        const Game game = game_from(spot);
        ASSERT_EQ(game.nodes.size(), alone.nodes.size());
        EXPECT_NO_THROW(check_tree(game));
        for (std::size_t i = 0; i < game.nodes.size(); ++i) {
            const GameNode& a = game.nodes[i];
            const GameNode& b = alone.nodes[i];
            ASSERT_TRUE(std::ranges::equal(a.actions, b.actions)) << i;
            ASSERT_TRUE(std::ranges::equal(a.children, b.children)) << i;
            ASSERT_EQ(std::tuple(a.kind, a.seat, a.pot, a.turn, a.river, a.last_action),
                      std::tuple(b.kind, b.seat, b.pot, b.turn, b.river, b.last_action));
        }
    }
}

}  // namespace
}  // namespace kestrel
