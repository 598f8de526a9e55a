#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "engine/solver/batched_walk.h"
#include "engine/solver/best_response.h"
#include "tests/engine/support.h"

// The walk that works through many nodes at a time against the one that takes them one by one.

namespace kestrel {
namespace {

void expect_same(const DiscountedCfr& a, const DiscountedCfr& b) {
    EXPECT_TRUE(same_states(a.states, b.states));
    EXPECT_TRUE(same_bits({&a.exploitability, 1}, {&b.exploitability, 1}));
    for (std::size_t s = 0; s < 2; ++s) {
        EXPECT_TRUE(same_bits(a.root_values[s], b.root_values[s]));
        EXPECT_TRUE(same_bits(a.measure_values[s], b.measure_values[s]));
    }
}

/// Locks every third decision: whole ranges, every other hand, some first entries of the table, or
/// one mix for all hands. Locked hands play one action, so that others are reached by nobody.
void lock_some(Game& game) {
    for (std::size_t i = 0, k = 0; i < game.nodes.size(); ++i) {
        const GameNode& node = game.nodes[i];
        if (node.kind != NodeKind::Decision || i % 3 != 0) continue;
        const std::size_t actions = node.actions.size();
        const std::size_t hands = game.cards.pockets[index_of(node.seat)].size();
        std::vector<float> lock(actions * hands, -1.0F);
        for (std::size_t h = 0; h < hands; h += 1 + k % 2) {
            for (std::size_t a = 0; a < actions; ++a)
                lock[a * hands + h] = a == (k + h) % actions ? 1.0F : 0.0F;
        }
        if (k % 4 == 2) lock.resize(lock.size() / 2);
        if (k % 4 == 3) lock.assign(actions, 1.0F / static_cast<float>(actions));
        game.set_node_lock(i, std::move(lock));
        ++k;
    }
}

struct WalkCase {
    const char* name;
    Spot spot;
    std::uint32_t most_iterations;
    bool locked = false;
};

std::vector<WalkCase> walk_cases() {
    Spot river{.board = "Td9d6h6c2s", .oop = "TT,87s:0.5,KQo", .ip = "99:0.75,AJs,A6s,54s"};
    river.river = both("50%,a", "3x,a");
    Spot raked_river = river;
    raked_river.rake = 0.05;
    raked_river.rake_cap = 60;
    Spot worthless = river;  // half of the pot is what there is to win
    worthless.rake = 0.5;
    Spot ruinous = river;
    ruinous.rake = 1.5;
    Spot some_raked = river;  // the rake of the smaller pots is too small to count
    some_raked.rake = 5e-13;
    Spot many_actions = raked_river;
    many_actions.river.oop_bets = "10%,20%,30%,40%,50%,60%,70%,80%,90%";
    many_actions.river.ip_raises = "2x,3x,4x,5x,6x,7x,8x,9x";
    Spot single = river;
    single.oop = "AcAh";
    single.ip = "KcKh";
    Spot never_meet = single;
    never_meet.ip = "AcAh";
    Spot everything = raked_river;
    everything.oop = everything.ip = all_hands;
    Spot turn = raked_river;
    turn.board = "Td9d6h6c";
    turn.turn = both("50%,a", "3x,a");
    turn.river.donk = "";
    turn.exact_all_in = true;
    Spot plain_turn = turn;
    plain_turn.rake = 0;
    plain_turn.exact_all_in = false;
    Spot monotone{.board = "AhJh8h", .oop = "99,KTs:0.5,98s,Q9o", .ip = "T9s,QQ:0.5,A2s"};
    monotone.flop = both("a");
    monotone.turn = both("75%");
    Spot paired{.board = "7h7s2c", .oop = "99,KQs:0.5,98s", .ip = "A7s,88:0.5,KQs"};
    paired.flop = paired.turn = both("a");
    paired.river = both("50%");
    paired.rake = 0.05;
    paired.exact_all_in = true;
    return {{"river", river, 300},
            {"raked river", raked_river, 300},
            {"locked river", raked_river, 300, true},
            {"nothing to win", worthless, 50},
            {"winning costs", ruinous, 50},
            {"some pots raked", some_raked, 50},
            {"many actions", many_actions, 50},
            {"many actions, locked", many_actions, 50, true},
            {"one hand each", single, 300},
            {"the same hand", never_meet, 2},
            {"all hands", everything, 2},
            {"turn", turn, 50},
            {"unraked turn", plain_turn, 2},
            {"locked turn", turn, 2, true},
            {"monotone flop", monotone, 2},
            {"paired flop", paired, 2},
            {"locked flop", paired, 1, true}};
}

TEST(Walks, BatchedAndPlainGiveTheSameBits) {
    for (const WalkCase& c : walk_cases()) {
        Game game = game_from(c.spot);
        if (c.locked) lock_some(game);
        for (const std::uint32_t count : {1U, 2U, 50U, 300U}) {
            for (const bool compress : {false, true}) {
                if (count > c.most_iterations) continue;
                SCOPED_TRACE(testing::Message() << c.name << ", " << count << compress);
                CfrOptions options = iterations(count);
                options.compress = compress;
                DiscountedCfr batched(options);
                options.plain_walk = true;
                DiscountedCfr plain(options);
                batched.run(game);
                plain.run(game);
                EXPECT_TRUE(BatchedWalks().prepare(game, batched.states, nullptr, 1));
                expect_same(batched, plain);
                EXPECT_TRUE(same_bits(batched.mes_ev(game), plain.mes_ev(game)));
                expect_same(batched, plain);
                EXPECT_TRUE(same_bits(batched.current_ev(game), plain.current_ev(game)));
                expect_same(batched, plain);
            }
        }
    }
}

// Two deals, so that a fan-out stands inside another; hands enough for both to be worth it.
TEST(WalksParallel, TheSameBitsAtEveryThreadCount) {
    Spot spot{.board = "AdJd8s",
              .oop = "TT-66,KQs,KTs,T9s,98s,AQo,QJs,54s,A4s-A2s",
              .ip = "QQ,TT-99:0.5,A9s-A2s,K9s+,76s,54s"};
    spot.turn = both("75%");
    spot.rake = 0.05;
    for (const auto& [compress, plain] : {std::pair(false, false), {true, false}, {false, true}}) {
        CfrOptions options = iterations(2);
        options.compress = compress;
        options.plain_walk = plain;
        const Solved one(spot, options);
        ASSERT_GE(one.cfr.root_values[0].size(), 64U);
        ASSERT_GE(one.cfr.root_values[1].size(), 64U);
        for (const std::size_t threads : {2U, 5U}) {
            SCOPED_TRACE(threads);
            options.threads = threads;
            expect_same(one.cfr, Solved(spot, options).cfr);
        }
    }
}

/// The values of a seat at every node by the plain walk against those of the queries.
void expect_values_of_plain_walk(const Game& game, const DiscountedCfr& cfr, std::size_t step) {
    for (const Seat seat : {Seat::OOP, Seat::IP}) {
        const std::size_t hands = game.cards.pockets[index_of(seat)].size();
        const auto reach = random_row(game.cards.pockets[index_of(other(seat))].size(), 7);
        const MeasuringWalk plain(game, cfr.states, seat, nullptr, 1);
        const auto value = [&](std::size_t node) {
            std::vector<float> row(hands);
            ScratchStack scratch;
            plain.compute_cfvalue_recursive(node, reach, row, 0, scratch);
            return row;
        };
        for (std::size_t node = 0; node < game.nodes.size(); node += step) {
            EXPECT_TRUE(same_bits(cfr.node_values(game, node, seat, reach), value(node))) << node;
            const GameNode& n = game.nodes[node];
            const auto of_actions = cfr.action_values(game, node, reach);
            EXPECT_EQ(of_actions.empty(), n.kind != NodeKind::Decision);
            if (of_actions.empty() || n.seat != seat) continue;
            for (std::size_t a = 0; a < n.actions.size(); ++a) {
                EXPECT_TRUE(same_bits(std::span(of_actions).subspan(a * hands, hands),
                                      value(n.children[a])));
            }
            EXPECT_TRUE(same_bits(cfr.decision_values(node, of_actions), value(node)));
        }
    }
}

TEST(Walks, QueriesGiveTheBitsOfThePlainWalk) {
    for (const WalkCase& c : walk_cases()) {
        for (const bool compress : {false, true}) {
            SCOPED_TRACE(testing::Message() << c.name << compress);
            Game game = game_from(c.spot);
            if (c.locked) lock_some(game);
            CfrOptions options = iterations(2);
            options.compress = compress;
            DiscountedCfr cfr(options);
            cfr.run(game);
            expect_values_of_plain_walk(game, cfr, game.nodes.size() / 40 + 1);

            std::vector<std::size_t> first;
            std::size_t count = 0;
            for (const GameNode& node : game.nodes)
                first.push_back(std::exchange(count, count + node.actions.size()));
            std::vector<float> all(count, -1.0F);
            cfr.all_action_frequencies(first, all);
            for (std::size_t i = 0; i < game.nodes.size(); ++i) {
                const auto strategy = cfr.average_strategy(i);
                const auto frequencies = cfr.action_frequencies(i);
                const std::size_t actions = strategy.empty() ? 0 : game.nodes[i].actions.size();
                ASSERT_EQ(frequencies.size(), actions);
                for (std::size_t a = 0; a < actions; ++a) {
                    const std::size_t hands = strategy.size() / actions;
                    double sum = 0;
                    for (std::size_t h = 0; h < hands; ++h)
                        sum += static_cast<double>(strategy[a * hands + h]);
                    const auto mean = static_cast<float>(sum / static_cast<double>(hands));
                    EXPECT_EQ(frequencies[a], mean) << i;
                    EXPECT_EQ(all[first[i] + a], mean) << i;
                }
            }
        }
    }
    const Solved solved(walk_cases().front().spot, iterations(1));
    EXPECT_TRUE(solved.cfr.node_values(solved.game, solved.game.nodes.size(), Seat::OOP).empty());
    const std::vector<float> short_row(1, 1.0F);
    const auto zeros = solved.cfr.node_values(solved.game, 0, Seat::IP, short_row);
    EXPECT_TRUE(std::ranges::all_of(zeros, [](float x) { return x == 0.0F; }));
}

// Several threads ask the same solve at once, each with a fan-out of its own.
TEST(WalksParallel, QueriesMayBeAskedTogether) {
    Spot spot{.board = "AdJd8s", .oop = "TT-66,KQs,T9s,AQo,54s", .ip = "QQ,A9s-A2s,K9s+,54s"};
    spot.turn = both("75%");
    CfrOptions options = iterations(1);
    options.threads = 2;
    const Solved solved(spot, options);
    const auto expected = solved.cfr.node_values(solved.game, 0, Seat::OOP);
    std::vector<std::vector<float>> answers(4);
    {
        std::vector<std::jthread> threads;
        for (std::vector<float>& answer : answers) {
            threads.emplace_back(
                [&] { answer = solved.cfr.node_values(solved.game, 0, Seat::OOP); });
        }
    }
    for (const std::vector<float>& answer : answers)
        EXPECT_TRUE(same_bits(answer, expected));
}

}  // namespace
}  // namespace kestrel
