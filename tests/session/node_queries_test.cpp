#include "session/node_queries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <string>
#include <vector>

#include "session/hand_classes.h"
#include "session/hand_distributions.h"
#include "session/hand_labels.h"
#include "session/node_here.h"
#include "session/reach_strategy.h"
#include "tests/session/finished.h"

// Answers against the plain form: reach by a walk from the root, values pair by pair.

namespace kestrel_app {
namespace {

using kestrel::GameNode;
using kestrel::NO_CARD;
using kestrel::NodeKind;
using kestrel::Pocket;
using kestrel::Seat;
using Row = std::vector<double>;

kestrel::Spot river_spot() {
    kestrel::Spot spot{.board = "Td9c6h6c2s", .oop = "TT,87s:0.5,KQo", .ip = "99:0.75,AJs,A6s,T8s"};
    spot.river = kestrel::both("50%,a", "3x,a");
    return spot;
}

/// No two suits can be exchanged, so every card is dealt.
kestrel::Spot turn_spot() {
    kestrel::Spot spot{.board = "Td9c6h2s", .oop = "TT,87s:0.5,AcKd", .ip = "99:0.75,T8s,AdAc"};
    spot.stack = 3000;
    spot.turn = kestrel::both("50%,a");
    spot.river = kestrel::both("75%");
    return spot;
}

/// The reach of both seats at every node, parents before children.
std::vector<std::array<Row, 2>> plain_reaches(const Answered& a) {
    const kestrel::Game& game = a.game();
    std::vector<std::array<Row, 2>> reaches(game.nodes.size());
    for (std::size_t s = 0; s < 2; ++s) {
        const auto& weights = game.cards.pocket_weights[s];
        reaches[0][s].assign(weights.begin(), weights.end());
    }
    for (std::size_t i = 0; i < game.nodes.size(); ++i) {
        const GameNode& node = game.nodes[i];
        const auto strategy = a.cfr().average_strategy(i);
        for (std::size_t k = 0; k < node.children.size(); ++k) {
            auto& next = reaches[node.children[k]] = reaches[i];
            for (std::size_t s = 0; s < 2; ++s) {
                for (std::size_t h = 0; h < next[s].size(); ++h) {
                    const bool dealt = node.kind != NodeKind::Decision;
                    const auto card =
                        dealt ? static_cast<kestrel::Card>(node.actions[k].amount) : NO_CARD;
                    if ((pocket_mask(game.cards.pockets[s][h]) & kestrel::card_bit(card)) != 0)
                        next[s][h] = 0;
                    if (!dealt && s == index_of(node.seat))
                        next[s][h] *= static_cast<double>(strategy[k * next[s].size() + h]);
                }
            }
        }
    }
    return reaches;
}

/// Weight of the other seat's hands that each hand of a seat can meet.
Row plain_met(const kestrel::Game& game, Seat seat, const Row& reach) {
    Row met;
    for (const Pocket& own : game.cards.pockets[index_of(seat)]) {
        double sum = 0;
        const auto& theirs = game.cards.pockets[index_of(other(seat))];
        for (std::size_t o = 0; o < theirs.size(); ++o)
            sum += kestrel::share_cards(own, theirs[o]) ? 0.0 : reach[o];
        met.push_back(sum);
    }
    return met;
}

/// What each hand of a seat expects to take out of the pot of `at`, from the values at `node`.
Row plain_evs(const Answered& a, std::size_t at, std::size_t node, Seat seat, const Row& reach) {
    const bool exact = a.game().options.exact_all_in;
    Row values = kestrel::plain_walk(*a.solved, node, seat, false, reach, exact);
    const Row met = plain_met(a.game(), seat, reach);
    const double mass = kestrel::plain_mass(a.game().cards);
    for (std::size_t h = 0; h < values.size(); ++h) {
        values[h] = values[h] * (met[h] > 0 ? mass / met[h] : 1) +
                    kestrel::plain_pot(a.game(), a.game().nodes[at]) / 2;
    }
    return values;
}

double sum_of(const Row& row) {
    return std::accumulate(row.begin(), row.end(), 0.0);
}

/// River, raked river and turn.
std::vector<kestrel::Spot> spots() {
    kestrel::Spot raked = river_spot();
    raked.rake = 0.05;
    raked.rake_cap = 100;
    return {river_spot(), raked, turn_spot()};
}

TEST(HandCombos, ValuesArePairByPair) {
    for (const kestrel::Spot& spot : spots()) {
        SCOPED_TRACE(std::string(spot.board) + (spot.rake > 0 ? " raked" : ""));
        const Answered a(spot);
        const auto reaches = plain_reaches(a);
        for (std::size_t node = 0; node < a.game().nodes.size(); ++node) {
            const GameNode& n = a.game().nodes[node];
            const auto combos = hand_combos(a.finish, node);
            ASSERT_EQ(combos.has_value(), n.kind == NodeKind::Decision);
            if (!combos) continue;
            const Row& theirs = reaches[node][index_of(other(n.seat))];
            std::vector<Row> of_actions;
            for (const auto child : n.children)
                of_actions.push_back(plain_evs(a, node, child, n.seat, theirs));
            const Row of_node = plain_evs(a, node, node, n.seat, theirs);
            const Row met = plain_met(a.game(), n.seat, theirs);
            const double total = sum_of(theirs);
            const auto strategy = a.cfr().average_strategy(node);
            const auto& pockets = a.game().cards.pockets[index_of(n.seat)];
            ASSERT_EQ(combos->size(), pockets.size());
            for (const char* const bucket : {"", " Top PAIR", "set", "none"}) {
                const auto told = reach_strategy(a.finish, node, bucket);
                ASSERT_TRUE(told);
                EXPECT_EQ(*told, reach_strategy(*combos, n.actions.size(), bucket)) << bucket;
                EXPECT_TRUE(bucket[0] != 'n' || told->empty());
            }
            for (std::size_t k = 0; k < combos->size(); ++k) {
                const HandCombo& combo = (*combos)[k];
                EXPECT_TRUE(k == 0 || (*combos)[k - 1].ev >= combo.ev) << "by falling value";
                const std::size_t h = position_of(a.game(), n.seat, combo.c1 + combo.c2);
                EXPECT_NEAR(combo.weight, reaches[node][index_of(n.seat)][h], 1e-6);
                // Float values of pots of thousands, scaled up where little is met.
                const double bound = 0.01 * (met[h] > 0 ? 1 + total / met[h] : 1);
                EXPECT_NEAR(combo.ev, of_node[h], bound) << combo.c1 + combo.c2 << ' ' << node;
                for (std::size_t action = 0; action < of_actions.size(); ++action) {
                    EXPECT_NEAR(combo.action_evs[action], of_actions[action][h], bound);
                    EXPECT_NEAR(combo.action_probs[action],
                                static_cast<double>(strategy[action * pockets.size() + h]), 1e-6);
                }
                EXPECT_EQ(combo.buckets, classify(a.game(), n, pockets[h]).names());
                if (k % 7 == 0) {
                    EXPECT_EQ(pocket_action_evs(a.finish, node, n.seat, combo.c2, combo.c1),
                              combo.action_evs);
                }
            }
        }
    }
}

/// Chance of `hero` against the opposing weights: for each board that the sampler deals alike, the
/// hands that it can meet there in proportion to their weights among those that the board leaves.
double plain_equity(const Answered& a, const GameNode& node, Seat seat, const Pocket& hero,
                    const Row& theirs) {
    GameNode open = node;
    open.last_action = kestrel::ActionKind::check;
    double met = 0;
    double won = 0;
    for (const kestrel::Board& board : kestrel::plain_boards(a.game(), open)) {
        const kestrel::CardMask dealt = kestrel::mask_of(board);
        const auto& pockets = a.game().cards.pockets[index_of(other(seat))];
        double left = 0;
        for (std::size_t o = 0; o < pockets.size(); ++o)
            left += (pocket_mask(pockets[o]) & dealt) != 0 ? 0.0 : theirs[o];
        if ((pocket_mask(hero) & dealt) != 0 || !(left > 0)) continue;
        const auto strength = kestrel::evaluate_hand(hero, board);
        for (std::size_t o = 0; o < pockets.size(); ++o) {
            if ((pocket_mask(pockets[o]) & (dealt | pocket_mask(hero))) != 0) continue;
            const auto their_strength = kestrel::evaluate_hand(pockets[o], board);
            met += theirs[o] / left;
            won += theirs[o] / left * 0.5 *
                   (1 + (strength > their_strength) - (strength < their_strength));
        }
    }
    return met > 0 ? won / met : std::nan("");
}

/// Five standard deviations of the mean of `samples` draws from [0, 1], and half a draw.
double sampling_bound(double mean, double samples) {
    return 5 * std::sqrt(mean * (1 - mean) / samples) + 0.5 / samples;
}

TEST(HandDistributions, ValuesAndEquities) {
    std::vector<kestrel::Spot> all = spots();
    all.push_back({.board = "Td9c6h", .oop = "TT,87s", .ip = "99:0.75,AcAd,T8s"});
    for (const kestrel::Spot& spot : all) {
        SCOPED_TRACE(std::string(spot.board) + (spot.rake > 0 ? " raked" : ""));
        const Answered a(spot, 10);
        const auto reaches = plain_reaches(a);
        const bool flop = a.game().nodes[0].turn == NO_CARD;  // the root alone, which is dear
        const std::size_t step = flop ? a.game().nodes.size() : a.game().nodes.size() / 25 + 1;
        for (std::size_t node = 0; node < a.game().nodes.size(); node += step) {
            const auto answer = hand_distributions(a.finish, node);
            const auto comes = [&](std::size_t s) { return sum_of(reaches[node][s]) > 0; };
            ASSERT_EQ(answer.has_value(), comes(0) && comes(1)) << node;
            if (!answer) continue;
            for (const Seat seat : {Seat::OOP, Seat::IP}) {
                const Row& own = reaches[node][index_of(seat)];
                const Row& theirs = reaches[node][index_of(other(seat))];
                const auto& told = (*answer)[index_of(seat)];
                const Row evs = plain_evs(a, node, node, seat, theirs);
                const Row met = plain_met(a.game(), seat, theirs);
                std::size_t k = 0;
                for (std::size_t h = 0; h < own.size(); ++h) {
                    if (!(own[h] > 0)) continue;
                    const Pocket& pocket = a.game().cards.pockets[index_of(seat)][h];
                    ASSERT_LT(k, told.hands.size());
                    EXPECT_EQ(told.hands[k], kestrel::card_to_string(pocket.low) +
                                                 kestrel::card_to_string(pocket.high));
                    const double bound = 0.01 * (met[h] > 0 ? 1 + sum_of(theirs) / met[h] : 1);
                    EXPECT_NEAR(told.ev[k], evs[h], bound);
                    const double chance =
                        plain_equity(a, a.game().nodes[node], seat, pocket, theirs);
                    // The hero's own cards rule out some of the samples.
                    EXPECT_NEAR(told.equity[k], chance, sampling_bound(chance, 600)) << node;
                    ++k;
                }
                EXPECT_EQ(k, told.hands.size());
            }
        }
        EXPECT_FALSE(hand_distributions(a.finish, a.game().nodes.size()));
    }
}

TEST(ActionStats, CombosValuesAndEquity) {
    for (const kestrel::Spot& spot : spots()) {
        SCOPED_TRACE(std::string(spot.board) + (spot.rake > 0 ? " raked" : ""));
        const Answered a(spot);
        for (std::size_t node = 0; node < a.game().nodes.size(); node += 1 + node / 8) {
            const GameNode& n = a.game().nodes[node];
            const auto stats = node_action_stats(a.finish, node);
            ASSERT_EQ(stats.has_value(), n.kind == NodeKind::Decision);
            if (!stats) continue;
            const auto& range = a.game().cards.pocket_weights[index_of(n.seat)];
            const auto& their_range = a.game().cards.pocket_weights[index_of(other(n.seat))];
            const Row theirs(their_range.begin(), their_range.end());
            const auto strategy = a.cfr().average_strategy(node);
            const kestrel::CardMask dealt = kestrel::card_bit(n.turn) | kestrel::card_bit(n.river);
            Row theirs_left = theirs;
            for (std::size_t o = 0; o < theirs.size(); ++o) {
                const Pocket& pocket = a.game().cards.pockets[index_of(other(n.seat))][o];
                theirs_left[o] *= (pocket_mask(pocket) & dealt) == 0 ? 1 : 0;
            }
            const Row left = plain_met(a.game(), n.seat, theirs_left);
            double combos = 0;
            for (std::size_t k = 0; k < n.actions.size(); ++k) {
                const Row evs = plain_evs(a, node, n.children[k], n.seat, theirs);
                double taken = 0;
                double ev = 0;
                double equity = 0;
                double counted = 0;
                for (std::size_t h = 0; h < range.size(); ++h) {
                    const Pocket& hero = a.game().cards.pockets[index_of(n.seat)][h];
                    const double weight = static_cast<double>(range[h]) *
                                          static_cast<double>(strategy[k * range.size() + h]);
                    taken += weight;
                    ev += weight * evs[h];
                    if ((pocket_mask(hero) & dealt) != 0) continue;
                    // On a full board every pair counts by its weight, elsewhere every hero hand.
                    const double own = n.river != NO_CARD ? weight * left[h] : weight;
                    const double chance = plain_equity(a, n, n.seat, hero, theirs);
                    if (own > 0 && !std::isnan(chance)) {
                        equity += own * chance;
                        counted += own;
                    }
                }
                combos += taken;
                EXPECT_NEAR(stats->combos[k], taken, 1e-6);
                EXPECT_NEAR(stats->ev[k], taken > 0 ? ev / taken : 0, 0.5) << node;
                ASSERT_EQ(std::isnan(stats->equity[k]), !(counted > 0)) << node;
                if (counted > 0) {
                    const double bound =
                        n.river != NO_CARD ? 1e-6 : sampling_bound(equity / counted, 3000) + 0.01;
                    EXPECT_NEAR(stats->equity[k], equity / counted, bound) << node;
                }
            }
            EXPECT_NEAR(combos, sum_of(Row(range.begin(), range.end())), 1e-4);
        }
    }
}

/// A flop spot is too dear for the plain form; here it is compared with the whole range's figures.
kestrel::Spot flop_spot() {
    return {.board = "Td9c6h", .oop = "TT,87s,KQo", .ip = "99,AcAd,T8s"};
}

TEST(ActionStatsHere, AreThoseOfTheHandsThatCome) {
    bool differs = false;
    bool nobody = false;
    for (const kestrel::Spot& spot : spots()) {
        SCOPED_TRACE(std::string(spot.board) + (spot.rake > 0 ? " raked" : ""));
        const Answered a(spot);
        const auto reaches = plain_reaches(a);
        for (std::size_t node = 0; node < a.game().nodes.size(); node += 1 + node / 8) {
            const GameNode& n = a.game().nodes[node];
            const bool decides = n.kind == NodeKind::Decision;
            const bool met_by_both = sum_of(reaches[node][0]) > 0 && sum_of(reaches[node][1]) > 0;
            const auto here = action_stats_here(a.finish, node);
            const auto whole = node_action_stats(a.finish, node);
            ASSERT_EQ(here.has_value(), decides);
            if (!here) {
                EXPECT_EQ(opponent_comes(a.finish, node), met_by_both);
                continue;
            }
            const Row& own = reaches[node][index_of(n.seat)];
            const Row& theirs = reaches[node][index_of(other(n.seat))];
            EXPECT_EQ(here->opponent_comes, sum_of(theirs) > 0);
            EXPECT_EQ(opponent_comes(a.finish, node), sum_of(theirs) > 0);
            const auto strategy = a.cfr().average_strategy(node);
            const Row met = plain_met(a.game(), n.seat, theirs);
            for (std::size_t k = 0; k < n.actions.size(); ++k) {
                const Row evs = plain_evs(a, node, n.children[k], n.seat, theirs);
                Row taken = own;
                Row pairs = own;
                double ev = 0;
                double counted = 0;
                double equity = 0;
                double compared = 0;
                for (std::size_t h = 0; h < own.size(); ++h) {
                    taken[h] *= static_cast<double>(strategy[k * own.size() + h]);
                    if (!(taken[h] > 0 && met[h] > 0)) continue;
                    ev += taken[h] * evs[h];
                    counted += taken[h];
                    const Pocket& hero = a.game().cards.pockets[index_of(n.seat)][h];
                    const double pair = taken[h] * (n.river != NO_CARD ? met[h] : 1.0);
                    equity += pair * plain_equity(a, n, n.seat, hero, theirs);
                    compared += pair;
                }
                EXPECT_NEAR(here->combos[k], sum_of(taken), 1e-6);
                const double share = sum_of(taken) / sum_of(own);
                ASSERT_EQ(std::isnan(here->frequencies[k]), std::isnan(share));
                ASSERT_EQ(std::isnan(here->ev[k]), !(counted > 0)) << node;
                ASSERT_EQ(std::isnan(here->equity[k]), !(compared > 0)) << node;
                nobody = nobody || std::isnan(here->ev[k]);
                if (!(counted > 0)) continue;
                EXPECT_NEAR(here->frequencies[k], share, 1e-6);
                EXPECT_NEAR(here->ev[k], ev / counted, 0.5) << node;
                const double chance = equity / compared;
                const double bound =
                    n.river != NO_CARD ? 1e-5 : sampling_bound(chance, 3000) + 0.01;
                EXPECT_NEAR(here->equity[k], chance, bound) << node;
                const bool deep = a.finish.parents().path_to(node).size() >= 3;
                differs = differs ||
                          (deep && std::abs(here->ev[k] - whole->ev[k]) > 1 &&
                           std::abs(share - static_cast<double>(whole->frequencies[k])) > 0.01);
            }
        }
    }
    EXPECT_TRUE(differs) << "three actions deep";
    EXPECT_TRUE(nobody) << "somewhere";
}

/// At the root everybody comes: to the last digit that is shown, also where equities are sampled.
TEST(ActionStatsHere, AtTheRootAreThoseOfTheWholeRange) {
    kestrel::Spot turn = turn_spot();
    kestrel::Spot river = river_spot();
    for (kestrel::Spot* const spot : {&turn, &river}) {
        spot->oop = "TT,87s,KQo";
        spot->ip = "99,AJs,T8s";
    }
    for (const kestrel::Spot& spot : {turn, river, flop_spot()}) {
        const Answered a(spot, 5);
        const auto here = action_stats_here(a.finish, 0);
        const auto whole = node_action_stats(a.finish, 0);
        ASSERT_TRUE(here && whole && here->opponent_comes);
        for (std::size_t k = 0; k < whole->combos.size(); ++k) {
            EXPECT_EQ(here->combos[k], whole->combos[k]);
            EXPECT_EQ(here->equity[k], whole->equity[k]);
            EXPECT_NEAR(here->ev[k], whole->ev[k], 1e-6);
            EXPECT_NEAR(here->frequencies[k], static_cast<double>(whole->frequencies[k]), 1e-6);
        }
        const auto shares = action_shares_here(a.finish, 0);
        EXPECT_EQ(shares->frequencies, here->frequencies);
        EXPECT_TRUE(std::isnan(shares->ev[0]) && std::isnan(shares->equity[0]));
    }
}

TEST(HandStrategy, MeansByLabelAndBucket) {
    const Answered a(river_spot());
    const GameNode& root = a.game().nodes[0];
    const auto& pockets = a.game().cards.pockets[0];
    const auto strategy = a.cfr().average_strategy(0);
    const auto told = hand_strategy(a.finish, 0);
    const auto buckets = hand_buckets(a.finish, 0);
    ASSERT_TRUE(told && buckets);

    std::map<std::string, std::pair<double, Row>> labels;
    std::map<std::string, std::pair<double, Row>> classes;
    const Row theirs(a.game().cards.pocket_weights[1].begin(),
                     a.game().cards.pocket_weights[1].end());
    const Row met = plain_met(a.game(), Seat::OOP, theirs);
    const std::size_t actions = root.actions.size();
    for (std::size_t h = 0; h < pockets.size(); ++h) {
        const auto range = static_cast<double>(a.game().cards.pocket_weights[0][h]);
        const auto add = [&](auto& entry, double weight) {
            entry.second.resize(actions);
            entry.first += weight;
            for (std::size_t k = 0; k < actions; ++k)
                entry.second[k] += weight * static_cast<double>(strategy[k * pockets.size() + h]);
        };
        add(labels[hand_label(label_index(pockets[h]))], range * met[h]);
        const auto names = classify(a.game(), root, pockets[h]).names();
        for (const std::string& name : names)
            add(classes[name == "pair" && names.size() == 1 ? "air" : name], range);
    }
    for (std::size_t i = 0; i < label_count; ++i) {
        const auto& [weight, played] = labels[hand_label(i)];
        EXPECT_NEAR(told->weights[i], weight, 1e-5) << hand_label(i);
        EXPECT_EQ(told->dominant_action_types[i].empty(), !(weight > 0));
        if (!(weight > 0)) continue;
        for (std::size_t k = 0; k < actions; ++k)
            EXPECT_NEAR(told->action_probs[i][k], played[k] / weight, 1e-6);
        const auto& probs = told->action_probs[i];
        const auto most = std::ranges::max_element(probs) - probs.begin();
        EXPECT_EQ(told->dominant_action_types[i],
                  told->action_types[static_cast<std::size_t>(most)]);
    }
    // At the root all hands come, each counting its share of the range.
    const auto reach = reach_strategy(a.finish, 0, "");
    for (const LabelPlay& play : reach.value()) {
        const bool half = hand_label(play.label) == "87s";
        EXPECT_EQ(play.weight, half ? 0.5 : 1.0) << hand_label(play.label);
        EXPECT_NEAR(sum_of(play.action_probs), 1, 1e-12);
    }
    EXPECT_EQ(reach->size(), 3U);
    classes.erase("pair");
    EXPECT_EQ(buckets->size(), classes.size());
    for (const HandBucket& bucket : *buckets) {
        ASSERT_TRUE(classes.contains(bucket.name)) << bucket.name;
        const auto& [weight, played] = classes[bucket.name];
        EXPECT_NEAR(bucket.combos, weight, 1e-6);
        for (std::size_t k = 0; k < actions; ++k)
            EXPECT_NEAR(static_cast<double>(bucket.action_probs[k]), played[k] / weight, 1e-5);
    }
    EXPECT_EQ(told->action_names.front(), "Check");
    EXPECT_EQ(told->action_types.at(1), "bet 50%");
}

TEST(NodeQueries, WhatCannotBeAsked) {
    const Answered a(turn_spot(), 1);
    const auto& nodes = a.game().nodes;
    const auto chance = static_cast<std::size_t>(
        std::ranges::find(nodes, NodeKind::Chance, &GameNode::kind) - nodes.begin());
    for (const char* const c1 : {"", "T", "Ts", "Xh", "2c"})
        EXPECT_FALSE(pocket_action_evs(a.finish, 0, Seat::OOP, c1, "Ts")) << c1;
    EXPECT_FALSE(pocket_action_evs(a.finish, 0, Seat::IP, "9d", "9h")) << "does not act";

    // Behind a dealt river the hands that hold it are gone.
    const std::size_t dealt = nodes[chance].children[0];
    const auto card = kestrel::card_to_string(nodes[dealt].river);
    const auto left = seat_hand_combos(a.finish, dealt, Seat::IP);
    for (const SeatCombo& combo : left.value()) {
        EXPECT_TRUE(combo.c1 != card && combo.c2 != card);
        EXPECT_TRUE(combo.weight == 0.75 || combo.weight == 1.0);
    }
}

}  // namespace
}  // namespace kestrel_app
