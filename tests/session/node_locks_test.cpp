#include "session/node_locks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "session/hand_labels.h"
#include "tests/session/finished.h"

namespace kestrel_app {
namespace {

using kestrel::Game;

kestrel::Spot spot() {
    kestrel::Spot result{.board = "Td9c6h6c2s", .oop = "AKs,TT,87s", .ip = "99,AJs,T8s"};
    result.river = kestrel::both("50%,a", "a");
    return result;
}

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

TEST(NodeLocks, RowsOfATable) {
    using Row = std::vector<float>;
    const float third = 1.0F / 3.0F;
    struct Case {
        const char* what;
        std::vector<NodeLockEntry> locks;
        Row suited_ace_king;  // empty: free
    };
    const Case cases[] = {
        {"a mix", {{0, "AKs", -1, 1, {2, 0, 2}}}, {0.5F, 0, 0.5F}},
        {"one action", {{0, "AKs", 1, 0.7F, {}}}, {0.15F, 0.7F, 0.15F}},
        {"more than all", {{0, "AKs", 2, 7.0F, {}}}, {0, 0, 1}},
        {"less than nothing", {{0, "AKs", 2, -7.0F, {}}}, {0.5F, 0.5F, 0}},
        {"no number", {{0, "AKs", 2, nan, {}}}, {0.5F, 0.5F, 0}},
        {"nothing positive", {{0, "AKs", -1, 1, {0, -1, nan}}}, {third, third, third}},
        {"not finite", {{0, "AKs", -1, 1, {INFINITY, 3, 1}}}, {0, 0.75F, 0.25F}},
        {"the later one counts",
         {{0, "AKs", 0, 1, {}}, {0, "TT", 0, 1, {}}, {0, "AKs", 1, 1, {}}},
         {0, 1, 0}},
        {"and is dropped if it does not fit", {{0, "AKs", 0, 1, {}}, {0, "AKs", 3, 1, {}}}, {}},
        {"too few", {{0, "AKs", 1, 1, {1, 1}}}, {}},
        {"no action", {{0, "AKs", -1, 1, {}}}, {}},
        {"no label", {{0, "KAs", 1, 1, {}}, {0, "", 1, 1, {}}}, {}},
        {"another hand", {{0, "AKo", 1, 1, {}}}, {}},
        {"another node", {{1, "AKs", 1, 1, {}}, {99999, "AKs", 1, 1, {}}}, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Game game = kestrel::game_from(spot());
        apply_node_locks(game, c.locks);
        const auto table = game.node_lock(0);
        const auto& pockets = game.cards.pockets[0];
        if (c.suited_ace_king.empty()) {
            EXPECT_TRUE(table.empty());
            continue;
        }
        ASSERT_EQ(table.size(), 3 * pockets.size());
        for (std::size_t h = 0; h < pockets.size(); ++h) {
            const bool locked = hand_label(label_index(pockets[h])) == "AKs";
            for (std::size_t a = 0; a < 3 && (locked || c.locks.size() == 1); ++a) {
                EXPECT_FLOAT_EQ(table[a * pockets.size() + h],
                                locked ? c.suited_ace_king[a] : -1.0F);
            }
        }
    }
}

}  // namespace
}  // namespace kestrel_app
