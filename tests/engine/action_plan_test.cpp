#include "engine/game/action_plan.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "engine/game/game.h"
#include "tests/engine/support.h"

namespace kestrel {
namespace {

const char* const river_board = "AdJd8s4c2h";
const char* const turn_board = "AdJd8s4c";

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
        {"two streets on the river", river(both("2e")), "", "x b1791"},
        {"geometric with a limit", river(both("2%75e")), "", "x b750"},
        {"no sizes", river({}), "", "x"},
        {"no raise sizes", river(both("50%")), "x b500", "f c500"},
        {"chips, halves away from zero", river(both("33.25%, 250c")), "", "x b250 b333"},
        {"smallest bet", river(both("0.01%")), "", "x b1"},
        {"the stack is the limit", river(both("200%, a"), 1500), "", "x a1500"},
        {"call of a short stack", river(both("a", "a"), 1500), "a1500", "f c1500"},
        {"raises below the least merge", river(both("500c", "10c, 1.5x, 20%")), "b500",
         "f c500 r1000"},
        {"least raise after a raise", river(both("500c", "1.01x, 1200c")), "b500 r1700",
         "f c1200 r2900"},
        {"multiple is of the bet level", river(both("50%", "2.5x")), "b500 r1250", "f c750 r3125"},
        {"chips are on top of the bet level", river(both("500c", "700c")), "b500", "f c500 r1200"},
        {"raise cap, first raise", river(both("500c", "1500c2r")), "b500", "f c500 r2000"},
        {"raise cap, second raise", river(both("500c", "1500c2r")), "b500 r2000", "f c1500"},
        {"seats have their own sizes", river({"25%", "", "75%", "3x"}), "x", "x b750"},
        {"the other seat's raises", river({"25%", "", "75%", "3x"}), "b250", "f c250 r750"},
        {"no raises for the first seat", river({"25%", "", "75%", "3x"}), "b250 r750", "f c500"},

        {"root is a donk spot", river({"50%", "", "75%", "", "20%, 30%"}), "", "x b200 b300"},
        {"the bet behind a check is not", river({"50%", "", "75%", "", ""}), "x", "x b750"},
        {"empty donk sizes", river({"50%", "", "75%", "", ""}), "", "x"},
        {"donk behind the caller's bet", donk(""), "b500 c500 d", "x b2000"},
        {"donk into the bettor", donk(""), "x b500 c500 d", "x"},
        {"donk into the raiser", donk("10%"), "b500 r1500 c1000 d", "x b400"},
        {"the raiser keeps the lead", donk("10%"), "x b500 r1500 c1000 d", "x b4000"},
        {"donk behind checks", donk(""), "x x d", "x b1000"},
        {"donk rule off", donk(std::nullopt), "x b500 c500 d", "x b2000"},

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
        EXPECT_NO_THROW(check_tree(game));
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
        EXPECT_NO_THROW(check_tree(game));
    }
}

TEST(ActionPlan, FieldsOfTheEndsOfAHand) {
    Spot spot{.board = turn_board};
    spot.turn = both("50%", "3x, a");
    spot.river = both("50%");
    const Game game = game_from(spot);
    const auto at = [&](std::string_view path) -> const GameNode& {
        return game.nodes[descend(game.nodes, path)];
    };

    const GameNode& fold = at("x b500 r1500 f");
    EXPECT_EQ(fold.kind, NodeKind::Terminal);
    EXPECT_EQ(fold.last_action, ActionKind::fold);
    EXPECT_EQ(fold.seat, Seat::IP);
    EXPECT_EQ(fold.last_actor, Seat::IP);
    EXPECT_EQ(fold.matched, 500);
    EXPECT_EQ(fold.pot, 3000);
    EXPECT_EQ(fold.contributed, (std::array{1500, 500}));
    EXPECT_TRUE(fold.children.empty());

    const GameNode& deal = at("x x");
    EXPECT_EQ(deal.kind, NodeKind::Chance);
    EXPECT_EQ(deal.street, Street::River);
    EXPECT_EQ(deal.turn, parse_card("4c"));
    EXPECT_EQ(deal.river, NO_CARD);

    const GameNode& pending = at("b500 a10000 c9500");
    EXPECT_EQ(pending.kind, NodeKind::Terminal);
    EXPECT_EQ(pending.street, Street::River);
    EXPECT_TRUE(pending.runout_pending);
    EXPECT_EQ(pending.matched, 10000);
    EXPECT_EQ(pending.pot, 21000);
    EXPECT_EQ(pending.children.size(), 48U);
    const GameNode& runout = at("b500 a10000 c9500 d7h");
    EXPECT_EQ(runout.kind, NodeKind::Terminal);
    EXPECT_FALSE(runout.runout_pending);
    EXPECT_EQ(runout.river, parse_card("7h"));
    EXPECT_EQ(runout.last_action, ActionKind::call);

    EXPECT_EQ(at("x x d7h x x").last_action, ActionKind::check);
    const GameNode& called = at("x x d7h x b500 c500");
    EXPECT_EQ(called.kind, NodeKind::Terminal);
    EXPECT_FALSE(called.runout_pending);
    EXPECT_EQ(called.last_action, ActionKind::call);
}

Spot preset(std::string_view board, bool add_all_in) {
    Spot spot{.board = board, .oop = std::string(preset_oop), .ip = std::string(preset_ip)};
    spot.pot = 1800;
    spot.stack = 9100;
    spot.flop = add_all_in ? both("50%,a", "50%,a") : both("50%", "50%");
    spot.turn = add_all_in ? both("75%,a", "50%,a") : both("75%", "50%");
    spot.river = add_all_in ? both("75%,a", "75%,a") : both("75%", "75%");
    return spot;
}

TEST(ActionPlan, EveryPresetIsASoundTree) {
    for (const std::string_view board : {"AdJd8s", "AdJd8s4c", "AdJd8s4c2h"}) {
        for (const bool add_all_in : {false, true}) {
            for (const bool dont_donk : {false, true}) {
                SCOPED_TRACE(testing::Message() << board << add_all_in << dont_donk);
                Spot spot = preset(board, add_all_in);
                if (dont_donk) {
                    spot.flop.donk = spot.turn.donk = spot.river.donk = "";
                }
                const Game game = game_from(spot);
                EXPECT_NO_THROW(check_tree(game));
            }
        }
    }
}

TEST(ActionPlan, CheckTreeFindsWhatIsWrong) {
    using Damage = std::function<void(GameNode&)>;
    static const std::uint64_t back[] = {0, 0};
    const std::pair<std::string_view, Damage> cases[] = {
        {"", [](GameNode& n) { n.pot += 1; }},
        {"b500", [](GameNode& n) { n.matched += 1; }},
        {"b500",
         [](GameNode& n) {
             n.contributed = {-500, 1000};
         }},
        {"b500", [](GameNode& n) { n.last_action = ActionKind::check; }},
        {"b500 f", [](GameNode& n) { n.last_actor = Seat::OOP; }},
        {"b500 f", [](GameNode& n) { n.kind = NodeKind::Decision; }},
        {"b500 f", [](GameNode& n) { n.runout_pending = true; }},
        {"x x", [](GameNode& n) { n.actions = n.actions.first(n.actions.size() - 1); }},
        {"x x d7h", [](GameNode& n) { n.river = n.river == 0 ? Card{1} : Card{0}; }},
        {"x x d7h",
         [](GameNode& n) {
             n.contributed = {1, 1};
         }},
        {"x", [](GameNode& n) { n.children = back; }},
        {"x", [](GameNode& n) { n.kind = NodeKind::Terminal; }},
    };
    Spot spot{.board = turn_board};
    spot.turn = both("50%");
    for (const auto& [path, damage] : cases) {
        const Game game = game_from(spot);
        ASSERT_NO_THROW(check_tree(game));
        // The nodes themselves live in a list that is not constant.
        damage(const_cast<GameNode&>(game.nodes[descend(game.nodes, path)]));
        EXPECT_THROW(check_tree(game), std::logic_error) << path;
    }
}

/// Every field of a subtree in depth-first order, without the numbers of its nodes.
void describe(const ActionPlan& plan, std::size_t index, std::vector<std::int64_t>& out) {
    const PlanNode& n = plan.node(index);
    out.insert(out.end(),
               {static_cast<int>(n.kind), static_cast<int>(n.seat), static_cast<int>(n.street),
                n.runout_pending, n.matched, n.pot, n.contributed[0], n.contributed[1],
                static_cast<int>(n.last_action), static_cast<int>(n.last_actor), n.turn, n.river});
    for (std::size_t a = 0; a < n.children.size(); ++a) {
        out.insert(out.end(), {static_cast<int>(n.actions[a].kind), n.actions[a].amount});
        describe(plan, n.children[a], out);
    }
}

TEST(ActionPlanParallel, TasksBuildTheSameTree) {
    const Spot spot = preset(turn_board, true);
    const CardContext cards = cards_from(spot);
    const ActionPlan sequential(options_from(spot), &cards);
    std::vector<std::int64_t> expected;
    describe(sequential, 0, expected);
    for (std::size_t i = 0; i < sequential.node_count(); ++i) {
        for (const std::uint64_t child : sequential.node(i).children) {
            ASSERT_GT(child, i);
        }
        // Depth first: the first child follows at once.
        ASSERT_TRUE(sequential.node(i).children.empty() || sequential.node(i).children[0] == i + 1);
    }

    const ScopedVariable depth("KESTREL_ACTIONPLAN_PARALLEL_DEPTH", "3x");
    const ScopedVariable workers("KESTREL_ACTIONPLAN_MAX_WORKERS", "4");
    const Game game = game_from(spot);
    std::vector<std::int64_t> built;
    describe(game.plan, 0, built);
    EXPECT_EQ(built, expected);
    EXPECT_NO_THROW(check_tree(game));
    EXPECT_EQ(game.plan.memory_bytes(), sequential.memory_bytes());
}

TEST(ActionPlanParallel, AFailureInATaskReachesTheCaller) {
    PlanOptions options;
    options.starting_street = static_cast<Street>(7);
    EXPECT_THROW(ActionPlan(options, nullptr), std::logic_error);
}

TEST(Game, LocksAndSwapLists) {
    Spot spot{.board = "AdJd8s"};
    Game game = game_from(spot);
    EXPECT_TRUE(game.node_lock(0).empty());
    game.set_node_lock(0, {1.0F});
    game.set_node_lock(0, {0.5F, 0.25F});
    EXPECT_TRUE(std::ranges::equal(game.node_lock(0), std::vector{0.5F, 0.25F}));
    EXPECT_TRUE(game.node_lock(1).empty());

    const GameNode& turn = game.nodes[descend(game.nodes, "x x")];
    const GameNode& river = game.nodes[descend(game.nodes, "x x d2d x x")];
    const auto& iso = game.cards.isomorphism;
    EXPECT_EQ(&game.references(turn), &iso.turn_refs);
    EXPECT_EQ(&game.references(river), &iso.river_refs[parse_card("2d")]);
    EXPECT_EQ(&game.swap_list(turn, 0), &iso.turn_swaps[2]);
    EXPECT_EQ(&game.swap_list(river, 12), &iso.river_swaps[1][2]);
    EXPECT_EQ(&game.swap_list(turn, 13), &game.no_swaps);
    EXPECT_EQ(&game.swap_list(river, 13), &game.no_swaps);
    EXPECT_EQ(&game.swap_list(game.nodes[0], 0), &game.no_swaps);
}

}  // namespace
}  // namespace kestrel
