#include "engine/poker/range.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/engine/failure.h"

namespace kestrel {
namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

std::ptrdiff_t size_of(const Range& range) {
    return std::ranges::count_if(range, [](float weight) { return weight != 0.0F; });
}

float weight_in(const Range& range, std::string_view combo) {
    return weight_of(range, parse_card(combo.substr(0, 2)), parse_card(combo.substr(2)));
}

TEST(Range, PlainPatterns) {
    using Text = std::string_view;
    const std::tuple<Text, std::ptrdiff_t, Text, Text> cases[] = {
        // Text, number of pockets, one that is in, one that is not.
        {"aKS", 4, "AhKh", "AhKd"},
        {"T9o", 12, "Th9s", "Th9h"},
        {"ahKD", 1, "AhKd", "AdKh"},
        {"AhAs", 1, "AhAs", "AcAs"},
        {"KK,K2o", 18, "Kh2s", "Kh2h"}};
    for (const auto& [text, pockets, in, out] : cases) {
        const Range range = parse_range(text);
        EXPECT_EQ(std::tuple(size_of(range), weight_in(range, in), weight_in(range, out)),
                  std::tuple(pockets, 1.0F, 0.0F))
            << text;
    }
    EXPECT_EQ(size_of(parse_range(" , ,")), 0);
}

// Each text means the same as the list of plain patterns behind it.
TEST(Range, CompoundFormsEqualTheirLists) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"TT+", "TT,JJ,QQ,KK,AA"},
        {"T9s+", "T9s,JTs,QJs,KQs,AKs"},
        {"K9o+", "K9o,KTo,KJo,KQo"},
        {"ThTs+", "ThTs,JhJs,QhQs,KhKs,AhAs"},
        {"QhTs+", "QhTs,QhJs"},
        {"KK-AA", "AA,KK"},
        {"64o-86o", "64o,75o,86o"},
        {"A2s-A5s", "A5s,A4s,A3s,A2s"},
        {"AQ-AA", "AQ,AK,AA"},
        {"KTs-AQs", "AQs,AJs,ATs,KQs,KJs,KTs"},
        {"65o-4 2o", "65o,64o,63o,62o,54o,53o,52o,43o,42o"},
        {"AhKs-AcTc", "AhKs,AhQs,AhJs,AhTs"},
        {",,QQ,, AK ,", "QQ,AK"},
        {"AA:0.5,AA", "AA"},  // later items overwrite
        {"TT+,AA:0", "KK-TT"},
    };
    for (const auto& [text, list] : cases) {
        EXPECT_EQ(parse_range(text), parse_range(list)) << text;
    }
    const Range range = parse_range("AKs:0.25, AhKh:1e-1, KQs+:0.5, KQo:0x1p-2");
    EXPECT_EQ(weight_in(range, "AhKh"), 0.5F);
    EXPECT_EQ(weight_in(range, "KdQc"), 0.25F);
    EXPECT_EQ(size_of(range), 4 + 4 + 12);
}

TEST(Range, Failures) {
    const std::string head = "invalid argument: ";
    const std::pair<std::string, std::vector<std::string_view>> cases[] = {
        {head + "Weight string is empty", {"AK:"}},
        {head + "invalid stof argument", {"AK:x"}},
        {"out of range: stof argument out of range", {"AK:1e99", "AK:1e-99", "AK:1e99x"}},
        {head + "Weight string contains invalid characters", {"AK:0.5:0.5", {"AK:1\0", 5}}},
        {head + "Weight must be within [0, 1]", {"AK:1.5", "AK:-0.1", "AK:nan", "QQ,AK:2,x"}},
        {head + "Missing range expression", {":0.5"}},
        {head + "Empty combo", {"-AK", "AK-"}},
        {head + "Invalid combo pattern length", {"AA-KK-QQ", "AhK9", "A"}},
        {head + "Invalid rank character", {"A1"}},
        {head + "Invalid suit character", {"AKQJ"}},
        {head + "Invalid suitedness suffix", {"AKx", "AA-KK+"}},
        {head + "First rank must be >= second rank", {"KA", "2hAh"}},
        {head + "Pair cannot have suitedness suffix", {"AAs"}},
        {head + "Duplicate cards are not allowed", {"AhAh", "AhKh-AhAs"}},
        {head + "Expected trailing '+'", {"+"}},
        {head + "Suitedness mismatch in range", {"AKs-AQo", "AA-KQs"}},
        {head + "Unsupported range expression", {"AA-KQ", "AhQh-KhTh"}}};
    for (const auto& [failure, texts] : cases) {
        for (const std::string_view text : texts) {
            EXPECT_EQ(failure_of([&] { parse_range(text); }), failure) << text;
        }
    }
}

TEST(Range, SuitSymmetry) {
    constexpr int c = 0, d = 1, h = 2, s = 3;
    const std::tuple<std::string_view, int, int, bool> cases[] = {
        {"AhKh", c, d, true},        {"AhKh", h, c, false},          {"AhKh", d, s, true},
        {"TT+,AKs:0.5", c, s, true}, {"AhKh,AcKc", h, c, true},      {"AhKc", h, c, false},
        {"AhKc,AcKh", c, h, true},   {"AhKh:0.5,AcKc", h, c, false}, {"AhAc", h, c, true}};
    for (const auto& [text, suit_a, suit_b, symmetric] : cases) {
        EXPECT_EQ(is_suit_symmetric(parse_range(text), suit_a, suit_b), symmetric) << text;
    }
    Range range = parse_range("22+");
    range[pocket_index(parse_card("2s"), parse_card("3s"))] = nan;
    EXPECT_FALSE(is_suit_symmetric(range, c, d));
}

}  // namespace
}  // namespace kestrel
