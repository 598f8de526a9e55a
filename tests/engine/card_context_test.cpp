#include "engine/game/card_context.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <thread>
#include <tuple>
#include <vector>

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
            const auto& theirs = cards.pockets[1 - s];
            std::size_t i = 0;
            for (std::size_t index = 0; index < pocket_count; ++index) {
                const Pocket pocket = pocket_from_index(index);
                const float weight = cards.weights[s][index];
                if (weight == 0 || (pocket_mask(pocket) & cards.board_mask) != 0) continue;
                ASSERT_EQ(cards.pockets[s].at(i), pocket);
                ASSERT_EQ(cards.pocket_weights[s][i], weight);
                double free = 0;
                for (std::size_t j = 0; j < theirs.size(); ++j)
                    free += share_cards(pocket, theirs[j]) ? 0 : cards.pocket_weights[1 - s][j];
                ASSERT_FLOAT_EQ(cards.removal_weights[s][i], static_cast<float>(free * weight));
                ++i;
            }
            EXPECT_EQ(cards.pockets[s].size(), i);
        }
        EXPECT_EQ(cards.memory_bytes(),
                  tables_bytes(cards.board, deal_hands(cards.board, cards.weights)));
        EXPECT_NEAR(cards.combination_mass, plain_mass(cards), 1e-9 * cards.combination_mass);
    }
}

TEST(CardContext, SuitIsomorphism) {
    const std::string all(all_hands);
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
        EXPECT_EQ(iso.turn_cards.size(), c.turn_skips);
        EXPECT_EQ(iso.river_refs[turn].size(), c.river_skips);
    }
}

TEST(CardContext, Failures) {
    const Card none = NO_CARD;
    const std::pair<Board, std::string_view> boards[] = {
        {{none, 1, 2, none, none}, "invalid argument: Flop cards must be defined"},
        {{0, 0, 2, 70, none}, "invalid argument: Flop cards must be unique"},
        {{0, 1, 2, 70, none}, "out of range: Card code must be in [0, 52)"},
        {{0, 1, 2, 2, none}, "invalid argument: Turn conflicts with flop"},
        {{0, 1, 2, 3, 254}, "out of range: Card code must be in [0, 52)"},
        {{0, 1, 2, 3, 3}, "invalid argument: River conflicts with existing cards"},
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
    for (const auto& [text, count] : {std::pair(" 2x", std::size_t{2}), {"0", hardware}}) {
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
}

}  // namespace
}  // namespace kestrel
