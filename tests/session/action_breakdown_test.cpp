#include "session/action_breakdown.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <set>
#include <string>

#include "session/node_queries.h"
#include "session/reach.h"
#include "tests/session/finished.h"

namespace kestrel_app {
namespace {

using kestrel::NodeKind;

struct Sums {
    double probability = 0;
    double ev = 0;
};

/// Of parts that stand for all that can come; those of a part add up to its own.
Sums sums_of(const std::vector<FollowUp>& parts) {
    Sums sums;
    for (const FollowUp& part : parts) {
        EXPECT_EQ(std::isnan(part.ev), !(part.probability > 0)) << part.name;
        sums.probability += part.probability;
        sums.ev += part.probability > 0 ? part.probability * part.ev : 0.0;
        if (!part.parts.empty()) {
            const Sums inner = sums_of(part.parts);
            EXPECT_NEAR(inner.probability, 1, 1e-6) << part.name;
            EXPECT_NEAR(inner.ev, part.ev, 0.05) << part.name;
        }
    }
    return sums;
}

std::string key(Follows follows, const kestrel::GameNode& child) {
    const bool missing = follows == Follows::showdown && child.river == kestrel::NO_CARD;
    return std::to_string(static_cast<int>(follows)) + (missing ? " run out" : "");
}

TEST(ActionBreakdown, PartsAddUpToTheValue) {
    kestrel::Spot river{.board = "Td9c6h6c2s", .oop = "TT,87s:0.5,KQo", .ip = "99:0.75,AJs,T8s"};
    river.river = kestrel::both("50%,a", "3x,a");
    kestrel::Spot turn{.board = "Td9c6h2s", .oop = "TT,87s:0.5,AcKd", .ip = "99:0.75,T8s,AdAc"};
    turn.stack = 3000;
    turn.turn = kestrel::both("50%,a", "3x");
    turn.river = kestrel::both("75%");
    // Three suits can trade names, so that most cards of the river stand for others.
    kestrel::Spot alike{.board = "AhQh7h2h", .oop = "KK,JJ,98s", .ip = "TT,99,AKo"};
    alike.turn = alike.river = kestrel::both("50%");
    alike.rake = 0.05;
    alike.rake_cap = 100;
    kestrel::Spot raked = river;
    raked.rake = 0.05;
    raked.rake_cap = 100;
    kestrel::Spot exact = turn;
    exact.exact_all_in = true;
    std::set<std::string> seen;
    for (const kestrel::Spot& spot : {river, raked, turn, alike, exact}) {
        SCOPED_TRACE(std::string(spot.board) + (spot.rake > 0 ? " raked" : ""));
        const Answered a(spot, 15);
        std::size_t asked = 0;
        for (std::size_t node = 0; node < a.game().nodes.size(); ++node) {
            const kestrel::GameNode& n = a.game().nodes[node];
            const bool one_of_many = n.river != kestrel::NO_CARD && a.game().nodes.size() > 500;
            const auto combos = hand_combos(a.finish, one_of_many && node % 29 != 0 ? ~0U : node);
            if (!combos) continue;
            ++asked;
            for (const HandCombo& combo : *combos) {
                for (std::size_t k = 0; k < n.actions.size(); ++k) {
                    const auto told = action_breakdown(a.finish, node, combo.c2, combo.c1, k);
                    const kestrel::CardMask cards =
                        kestrel::card_bit(kestrel::parse_card(combo.c1)) |
                        kestrel::card_bit(kestrel::parse_card(combo.c2));
                    const bool held = (cards & board_at(a.game(), n)) == 0;
                    ASSERT_EQ(told.has_value(), held) << combo.c1 << combo.c2;
                    if (!held) continue;
                    seen.insert(key(told->follows, a.game().nodes[n.children[k]]));
                    if (std::isnan(told->ev)) {
                        EXPECT_TRUE(told->parts.empty());
                        continue;
                    }
                    EXPECT_EQ(told->ev, combo.action_evs[k]);
                    EXPECT_EQ(told->parts.empty(), told->follows == Follows::nothing);
                    if (told->parts.empty()) continue;
                    const Sums sums = sums_of(told->parts);
                    EXPECT_NEAR(sums.probability, 1, 1e-6);
                    // Hundredths of a chip, of which a tenth is the last digit that is shown.
                    EXPECT_NEAR(sums.ev, told->ev, 0.05)
                        << node << ' ' << combo.c1 << combo.c2 << ' ' << k;
                    for (std::size_t i = 1;
                         told->follows == Follows::deal && i < told->parts.size(); ++i) {
                        EXPECT_GE(told->parts[i - 1].ev, told->parts[i].ev);
                    }
                }
            }
        }
        EXPECT_GE(asked, 10U);
    }
    EXPECT_EQ(seen.size(), 5U) << "answers, deals, folds, showdowns and run-outs";
}

/// What an answer takes of the hands that this one meets, counted hand by hand, and what a fold
/// gives.
TEST(ActionBreakdown, AnswersAreCountedWithBlockers) {
    kestrel::Spot spot{.board = "Td9c6h6c2s", .oop = "KQo,TT", .ip = "QJs,KK:0.5,99"};
    spot.river = kestrel::both("50%");
    const Answered a(spot);
    const std::size_t bet = a.game().nodes[0].children[1];
    ASSERT_EQ(a.game().nodes[bet].kind, NodeKind::Decision);
    const auto strategy = a.cfr().average_strategy(bet);
    const auto& theirs = a.game().cards.pockets[1];
    const auto& weights = a.game().cards.pocket_weights[1];
    const kestrel::Pocket hero{kestrel::parse_card("Qc"), kestrel::parse_card("Kd")};
    double met = 0;
    double folded = 0;
    for (std::size_t o = 0; o < theirs.size(); ++o) {
        if (kestrel::share_cards(hero, theirs[o])) continue;
        met += static_cast<double>(weights[o]);
        folded += static_cast<double>(weights[o]) * static_cast<double>(strategy[o]);
    }
    const auto told = action_breakdown(a.finish, 0, "Qc", "Kd", 1);
    ASSERT_TRUE(told && told->parts.size() >= 2);
    EXPECT_EQ(told->parts[0].name, "Fold");
    EXPECT_NEAR(told->parts[0].probability, folded / met, 1e-6);
    EXPECT_NEAR(told->parts[0].ev, static_cast<double>(a.game().options.starting_pot), 0.01);
    EXPECT_EQ(told->parts[1].follows, Follows::showdown);

    const std::atomic<bool> stop = true;
    EXPECT_FALSE(action_breakdown(a.finish, 0, "Qc", "Kd", 1, &stop)) << "nobody waits";
    EXPECT_FALSE(action_breakdown(a.finish, 0, "Qc", "Kd", 9));
    EXPECT_FALSE(action_breakdown(a.finish, 0, "Td", "Th", 0)) << "on the board";
    EXPECT_FALSE(action_breakdown(a.finish, ~std::uint64_t{0}, "Qc", "Kd", 0));
}

}  // namespace
}  // namespace kestrel_app
