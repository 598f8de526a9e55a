#include "engine/game/card_context.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <thread>
#include <tuple>
#include <vector>

#include "engine/poker/evaluator.h"
#include "tests/engine/failure.h"
#include "tests/engine/support.h"

namespace kestrel {
namespace {

// Ranges that overlap in part and touch the board, with weights from tiny to 1.
const Spot spots[] = {
    {.board = "7h7s2c", .oop = "TT-66,AKs,A2o:0.25,7h6h", .ip = "88-55:0.5,AKs,T9s,A2o:1e-30"},
    {.board = "AdJd8s4c", .oop = "AJs,QTo,88", .ip = "AJs,AQo:0.5,44"},
    {.board = "AdJd8s4c2h", .oop = "AJs,QTo,88", .ip = "AJs,AQo:0.5,44"},
};

TEST(CardContext, PocketTablesAgainstAScan) {
    for (const Spot& spot : spots) {
        SCOPED_TRACE(spot.board);
        const CardContext cards = cards_from(spot);
        for (std::size_t s = 0; s < 2; ++s) {
            std::vector<Pocket> pockets;
            std::vector<float> weights;
            for (std::size_t index = 0; index < pocket_count; ++index) {
                const Pocket pocket = pocket_from_index(index);
                if (cards.weights[s][index] > 0 && (pocket_mask(pocket) & cards.board_mask) == 0) {
                    pockets.push_back(pocket);
                    weights.push_back(cards.weights[s][index]);
                }
            }
            ASSERT_EQ(cards.pockets[s], pockets);
            ASSERT_EQ(cards.pocket_weights[s], weights);
            const auto& theirs = cards.pockets[1 - s];
            for (std::size_t i = 0; i < pockets.size(); ++i) {
                double free = 0;
                std::size_t twin = no_position;
                for (std::size_t j = 0; j < theirs.size(); ++j) {
                    if (theirs[j] == pockets[i]) twin = j;
                    if ((pocket_mask(theirs[j]) & pocket_mask(pockets[i])) == 0) {
                        free += cards.pocket_weights[1 - s][j];
                    }
                }
                ASSERT_EQ(cards.all_positions[s][i], i);
                ASSERT_EQ(cards.same_pocket[s][i], twin);
                ASSERT_FLOAT_EQ(cards.removal_weights[s][i], static_cast<float>(free * weights[i]));
            }
        }
        EXPECT_NEAR(cards.combination_mass, plain_mass(cards), 1e-9 * cards.combination_mass);
    }
}

TEST(CardContext, PositionTablesAgainstAScan) {
    for (const Spot& spot : spots) {
        SCOPED_TRACE(spot.board);
        const CardContext cards = cards_from(spot);
        const CardMask flop = mask_of(std::span(cards.board).first(3));
        const CardMask later = cards.board_mask & ~flop;
        // The positions that do not hold a dealt card, and those that do.
        const auto scan = [&](CardMask dealt, bool possible) {
            std::array<PositionLists, 2> lists;
            for (std::size_t s = 0; s < 2; ++s) {
                for (std::size_t i = 0; possible && i < cards.pockets[s].size(); ++i) {
                    lists[(pocket_mask(cards.pockets[s][i]) & dealt) != 0][s].push_back(
                        static_cast<std::uint16_t>(i));
                }
            }
            return lists;
        };
        for (Card card = 0; card < card_count; ++card) {
            const bool possible =
                later == 0 ? (card_bit(card) & flop) == 0 : card == cards.board[3];
            ASSERT_EQ((std::array{cards.valid_by_card[card], cards.blocked_by_card[card]}),
                      scan(card_bit(card), possible));
        }
        for (std::size_t pair = 0; pair < pocket_count; ++pair) {
            const CardMask dealt = pocket_mask(pocket_from_index(pair));
            ASSERT_EQ((std::array{cards.valid_by_pair[pair], cards.blocked_by_pair[pair]}),
                      scan(dealt, (dealt & flop) == 0 && (dealt & later) == later));
        }
    }
}

TEST(CardContext, ShowdownListsAreSortedCompleteAndRight) {
    const std::size_t runouts[] = {1176, 48, 1};
    for (std::size_t k = 0; k < 3; ++k) {
        const CardContext cards = cards_from(spots[k]);
        std::size_t filled = 0;
        for (std::size_t pair = 0; pair < pocket_count; ++pair) {
            if (cards.showdown[pair][0].empty()) continue;
            ++filled;
            const Pocket dealt = pocket_from_index(pair);
            const Board board{cards.board[0], cards.board[1], cards.board[2], dealt.low,
                              dealt.high};
            ASSERT_EQ(&cards.showdown_table(dealt.high, dealt.low), &cards.showdown[pair]);
            for (std::size_t s = 0; s < 2; ++s) {
                std::vector<std::pair<std::uint32_t, std::uint16_t>> expected{{0, no_position}};
                for (const std::uint16_t i : cards.valid_by_pair[pair][s]) {
                    expected.emplace_back(evaluate_hand(cards.pockets[s][i], board) + 1, i);
                }
                expected.emplace_back(4294967295U, no_position);
                std::ranges::sort(expected);
                ASSERT_TRUE(std::ranges::equal(
                    cards.showdown[pair][s], expected, {},
                    [](const ShowdownEntry& e) { return std::pair(e.strength, e.position); }));
            }
        }
        EXPECT_EQ(filled, runouts[k]);
        EXPECT_TRUE(cards.showdown_table(NO_CARD, 0)[0].empty());
        EXPECT_TRUE(cards.showdown_table(200, 0)[1].empty());
    }
}

TEST(CardContext, SuitIsomorphism) {
    const std::string all =
        "22+,A2s+,A2o+,K2s+,K2o+,Q2s+,Q2o+,J2s+,J2o+,T2s+,T2o+,92s+,92o+,82s+,82o+,72s+,72o+,62s+,"
        "62o+,52s+,52o+,42s+,42o+,32s,32o";
    struct Case {
        const char* name;
        Spot spot;
        std::size_t turn_skips;
        std::string_view turn_card;  // whose river deal is counted
        std::size_t river_skips;
    };
    const Case cases[] = {
        {"three suits, three ranks", {"AdJh8s", all, all}, 0, "2c", 0},
        {"monotone", {"AhJh8h", all, all}, 26, "2h", 26},
        {"monotone, a club comes", {"AhJh8h", all, all}, 26, "2c", 13},
        {"two sevens", {"7h7s2c", all, all}, 12, "3c", 12},
        {"two sevens, a heart comes", {"7h7s2c", all, all}, 12, "3h", 0},
        {"two sevens, one range knows hearts", {"7h7s2c", "99,T8s,AhKh", "99"}, 0, "3c", 0},
        {"two empty suits", {"AdJd8s", "99", "T8s"}, 13, "2d", 13},
        {"a dead hand breaks it", {"AdJd8s", "99", "T8s,Ad2h:0.5"}, 0, "2d", 0},
        {"the fixed turn makes two suits equal", {"7h7s2c2d", "AA", "KQs"}, 0, "2d", 24},
        {"the fixed turn makes two differ", {"7h7s2c3h", "AA", "KQs"}, 0, "3h", 0},
        {"fixed river", {"7h7s2c2d3d", all, all}, 0, "2d", 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const CardContext cards = cards_from(c.spot);
        const SuitIsomorphism& iso = cards.isomorphism;
        const Card turn = parse_card(c.turn_card);
        const auto turn_suit = static_cast<std::size_t>(suit_of(turn));
        EXPECT_EQ(iso.turn_cards.size(), c.turn_skips);
        EXPECT_EQ(iso.river_refs[turn].size(), c.river_skips);

        // The child that stands for a skipped card has its rank in a lower suit, and the swap list
        // of the suit exchanges just the pockets that are each other's images.
        const auto check = [&](std::span<const std::uint8_t> refs, std::span<const Card> skipped,
                               CardMask dead, const std::array<SwapList, suit_count>& swaps) {
            ASSERT_EQ(refs.size(), skipped.size());
            std::vector<Card> children;
            for (Card card = 0; card < card_count; ++card) {
                if (((dead | mask_of(skipped)) & card_bit(card)) == 0) children.push_back(card);
            }
            for (std::size_t k = 0; k < refs.size(); ++k) {
                const Card stands_in = children.at(refs[k]);
                ASSERT_EQ(rank_of(stands_in), rank_of(skipped[k]));
                ASSERT_LT(suit_of(stands_in), suit_of(skipped[k]));
                if (k > 0 && suit_of(skipped[k]) == suit_of(skipped[k - 1])) continue;
                const auto image = [&](Card card) {
                    const int both_suits = suit_of(stands_in) ^ suit_of(skipped[k]);
                    const bool exchanged =
                        suit_of(card) == suit_of(stands_in) || suit_of(card) == suit_of(skipped[k]);
                    return exchanged ? static_cast<Card>(card ^ both_suits) : card;
                };
                for (std::size_t s = 0; s < 2; ++s) {
                    const auto& pockets = cards.pockets[s];
                    std::vector<std::pair<std::uint16_t, std::uint16_t>> expected;
                    for (std::size_t i = 0; i < pockets.size(); ++i) {
                        const Pocket q = pocket_from_index(
                            pocket_index(image(pockets[i].low), image(pockets[i].high)));
                        const auto j = static_cast<std::size_t>(std::ranges::find(pockets, q) -
                                                                pockets.begin());
                        if (j > i && j < pockets.size()) expected.emplace_back(i, j);
                    }
                    ASSERT_EQ(swaps[static_cast<std::size_t>(suit_of(skipped[k]))][s], expected);
                }
            }
        };
        check(iso.turn_refs, iso.turn_cards, cards.board_mask, iso.turn_swaps);
        check(iso.river_refs[turn], iso.river_cards[turn_suit], cards.board_mask | card_bit(turn),
              iso.river_swaps[turn_suit]);
    }
}

TEST(CardContext, Failures) {
    const Card none = NO_CARD;
    const std::pair<Board, std::string_view> boards[] = {
        {{none, 1, 2, none, none}, "invalid argument: Flop cards must be defined"},
        {{0, 1, none, none, none}, "invalid argument: Flop cards must be defined"},
        {{0, 52, 2, none, none}, "out of range: Card code must be in [0, 52)"},
        {{0, 0, 2, 70, none}, "invalid argument: Flop cards must be unique"},
        {{0, 1, 2, 70, none}, "out of range: Card code must be in [0, 52)"},
        {{0, 1, 2, 2, none}, "invalid argument: Turn conflicts with flop"},
        {{0, 1, 2, 3, 254}, "out of range: Card code must be in [0, 52)"},
        {{0, 1, 2, 3, 3}, "invalid argument: River conflicts with existing cards"},
        {{0, 1, 2, none, 1}, "invalid argument: River conflicts with existing cards"},
        {{0, 1, 2, none, 9}, "invalid argument: River cannot be dealt without a turn"},
    };
    const Range aces = parse_range("AA");
    for (const auto& [board, message] : boards) {
        EXPECT_EQ(failure_of([&] { CardContext(board, {aces, aces}); }), message);
    }
    for (const char* text : {"", "AdKd,JdJs:0.5", "22:0"}) {
        const Range range = parse_range(text);
        for (const auto& ranges : {std::array{range, aces}, std::array{aces, range}}) {
            EXPECT_EQ(failure_of([&] { CardContext(board_from("AdJd8s"), ranges); }),
                      "invalid argument: Player range empty after filtering board cards");
        }
    }
}

TEST(CardContext, WorkerCount) {
    const std::size_t hardware = std::max(1U, std::thread::hardware_concurrency());
    EXPECT_EQ(CardContext::worker_count(), hardware);
    const std::pair<const char*, std::size_t> cases[] = {
        {"3", 3},       {" 2x", 2},         {"0", hardware},
        {"", hardware}, {"many", hardware}, {"99999999999999999999", hardware},
    };
    for (const auto& [text, count] : cases) {
        const ScopedVariable variable("KESTREL_CARDCTX_MAX_WORKERS", text);
        EXPECT_EQ(CardContext::worker_count(), count) << text;
    }
}

/// Copies that outlive the context, so that the next one cannot share its tables.
auto tables_with_workers(const char* workers) {
    const ScopedVariable variable("KESTREL_CARDCTX_MAX_WORKERS", workers);
    const CardContext cards = cards_from(spots[0]);
    std::vector<std::pair<std::uint32_t, std::uint16_t>> showdown;
    for (const ShowdownTable& table : cards.showdown) {
        for (const auto& list : table) {
            for (const ShowdownEntry& e : list)
                showdown.emplace_back(e.strength, e.position);
        }
    }
    return std::tuple(cards.pockets, cards.pocket_weights, showdown, cards.valid_by_pair);
}

TEST(CardContextParallel, TablesDoNotDependOnTheWorkers) {
    const auto one = tables_with_workers("1");
    EXPECT_EQ(one, tables_with_workers("3"));
    EXPECT_EQ(one, tables_with_workers("5000"));
}

TEST(CardContextParallel, LiveContextsOfOneSpotShareTheirTables) {
    const CardContext first = cards_from(spots[0]);
    const CardContext second = cards_from(spots[0]);
    EXPECT_EQ(&first.showdown, &second.showdown);
    Spot other = spots[0];
    other.ip += ",32s:0.125";
    const CardContext third = cards_from(other);
    EXPECT_NE(first.cache_key, third.cache_key);
    EXPECT_NE(&first.showdown, &third.showdown);
    EXPECT_GT(first.memory_bytes(), first.showdown.size() * sizeof(ShowdownTable));

    std::array<double, 4> masses{};
    std::vector<std::jthread> threads;
    for (double& mass : masses) {
        threads.emplace_back([&mass] { mass = cards_from(spots[1]).combination_mass; });
    }
    threads.clear();
    EXPECT_EQ(masses, (std::array{masses[0], masses[0], masses[0], masses[0]}));
    EXPECT_NEAR(masses[0], plain_mass(cards_from(spots[1])), 1e-9 * masses[0]);
}

}  // namespace
}  // namespace kestrel
