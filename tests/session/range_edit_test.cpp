#include "session/range_edit.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "session/solve_config.h"

namespace kestrel_app {
namespace {

// A percentage stays one, and what the solver refuses is kept behind the rest.
TEST(RangeEdit, WritesWhatItHasRead) {
    const std::pair<std::string, std::string> cases[] = {
        {" 33.3% ", "33.3%"},
        {"22+, A2+, K2+, Q2+, J2+, T2+, 92+, 82+, 72+, 62+, 52+, 42+, 32", "100%"},
        {"150%", "150%"},
        {"aa, Z Z ,kks, KK:", "AA, Z Z, kks, KK:"},
        {" , ", ""},
        {"0%", ""}};
    for (const auto& [text, written] : cases) {
        const EditedRange range = read_edited_range(text);
        EXPECT_EQ(edited_text(range), written);
        if (range.refused.empty()) {
            EXPECT_EQ(parse_range_or_percent(written), parse_range_or_percent(text));
        }
    }
}

}  // namespace
}  // namespace kestrel_app
