#include "engine/solver/node_state.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace kestrel {
namespace {

TEST(NodeState, Packing) {
    struct Case {
        std::vector<float> row;
        std::vector<std::int16_t> packed;
        float scale;
    };
    const Case cases[] = {
        {{}, {}, 1},
        {{0, -0.0F, 0}, {0, 0, 0}, 1},
        {{1e-9F, -5e-10F}, {0, 0}, 1},  // lost: not above 1e-9
        {{1.01e-9F, 0}, {32767, 0}, 1.01e-9F},
        {{0.5F, -2, 1}, {8192, -32767, 16384}, 2},  // halves away from zero
        {{-1, 0.5F}, {-32767, 16384}, 1},
        {{-3, -0.75F}, {-32767, -8192}, 3},
    };
    for (const Case& c : cases) {
        std::vector<std::int16_t> packed(c.row.size(), 77);
        EXPECT_EQ(pack_row(c.row, packed), c.scale);
        EXPECT_EQ(packed, c.packed);
        std::vector<float> back(c.row.size(), 77);
        unpack_row(packed, c.scale, back);
        for (std::size_t i = 0; i < back.size(); ++i) {
            EXPECT_EQ(back[i], static_cast<float>(c.packed[i]) / 32767.0F * c.scale);
            EXPECT_NEAR(back[i], c.row[i], c.scale / 65534.0F * 1.001F + 1e-9F);
        }
    }
}

}  // namespace
}  // namespace kestrel
