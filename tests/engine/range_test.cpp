#include "engine/poker/range.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "tests/engine/failure.h"

namespace kestrel {
namespace {

std::ptrdiff_t size_of(const Range& range) {
    return std::count_if(range.begin(), range.end(), [](float weight) { return weight != 0.0f; });
}

TEST(Range, PlainPatterns) {
    using Text = std::string_view;
    const std::tuple<Text, std::ptrdiff_t, Text, Text> cases[] = {
        // Text, number of pockets, one that is in, one that is not.
        {"AA", 6, "AcAs", "AsKs"},     {"AK", 16, "AcKs", "AcAs"},     {"aKS", 4, "AhKh", "AhKd"},
        {"T9o", 12, "Th9s", "Th9h"},   {"ahKD", 1, "AhKd", "AdKh"},    {"AhAs", 1, "AhAs", "AcAs"},
        {"A\tK s", 4, "AdKd", "AdKc"}, {"KK,K2o", 18, "Kh2s", "Kh2h"},
    };
    for (const auto& [text, pockets, in, out] : cases) {
        const Range range = parse_range(text);
        EXPECT_EQ(size_of(range), pockets) << text;
        const auto weight = [&](std::string_view combo) {
            return weight_of(range, parse_card(combo.substr(0, 2)), parse_card(combo.substr(2)));
        };
        EXPECT_EQ(weight(in), 1.0f) << text;
        EXPECT_EQ(weight(out), 0.0f) << text;
    }
    for (const auto text : {"", " , ,", " \t\n"}) {
        EXPECT_EQ(parse_range(text), Range{}) << text;
    }
}

// Each text means the same as the list of plain patterns behind it.
TEST(Range, CompoundFormsEqualTheirLists) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"TT+", "TT,JJ,QQ,KK,AA"},
        {"AA+", "AA"},
        {"T9s+", "T9s,JTs,QJs,KQs,AKs"},
        {"KQ+", "KQ,AK"},
        {"A9s+", "A9s,ATs,AJs,AQs,AKs"},
        {"K9o+", "K9o,KTo,KJo,KQo"},
        {"ThTs+", "ThTs,JhJs,QhQs,KhKs,AhAs"},
        {"AhKh+", "AhKh"},
        {"QhTs+", "QhTs,QhJs"},
        {"99-66", "66,77,88,99"},
        {"AA-KK", "AA,KK"},
        {"KK-AA", "AA,KK"},
        {"T9s-65s", "T9s,98s,87s,76s,65s"},
        {"64o-86o", "64o,75o,86o"},
        {"A5s-A2s", "A5s,A4s,A3s,A2s"},
        {"A2s-A5s", "A5s,A4s,A3s,A2s"},
        {"AQ-AA", "AQ,AK,AA"},
        {"AQs-KTs", "AQs,AJs,ATs,KQs,KJs,KTs"},
        {"KTs-AQs", "AQs,AJs,ATs,KQs,KJs,KTs"},
        {"98o-6 2o",
         "98o,97o,96o,95o,94o,93o,92o,87o,86o,85o,84o,83o,82o,76o,75o,74o,73o,72o,"
         "65o,64o,63o,62o"},
        {"AhKh-QhJh", "AhKh,KhQh,QhJh"},
        {"AhKs-QdJc", "AhKs,KhQs,QhJs"},
        {"AhKs-AcTc", "AhKs,AhQs,AhJs,AhTs"},
        {",,QQ,, AK ,", "QQ,AK"},
    };
    for (const auto& [text, list] : cases) {
        EXPECT_EQ(parse_range(text), parse_range(list)) << text;
    }
}

TEST(Range, LaterItemsOverwrite) {
    EXPECT_EQ(parse_range("AA:0.5,AA"), parse_range("AA"));
    EXPECT_EQ(parse_range("TT+,AA:0"), parse_range("KK-TT"));
    const Range range = parse_range("AKs:0.25, AhKh:1e-1, KQs+:0.5, KQo:0x1p-2");
    EXPECT_EQ(weight_of(range, parse_card("Ah"), parse_card("Kh")), 0.5f);
    EXPECT_EQ(weight_of(range, parse_card("Kd"), parse_card("Qc")), 0.25f);
    EXPECT_EQ(size_of(range), 4 + 4 + 12);
}

TEST(Range, Failures) {
    const std::pair<std::string_view, std::string> cases[] = {
        {"AK:", "invalid argument: Weight string is empty"},
        {":", "invalid argument: Weight string is empty"},
        {"AK:x", "invalid argument: invalid stof argument"},
        {"AK:1e99", "out of range: stof argument out of range"},
        {"AK:1e-99", "out of range: stof argument out of range"},
        {"AK:1e99x", "out of range: stof argument out of range"},
        {"AK:0.5x", "invalid argument: Weight string contains invalid characters"},
        {"AK:0.5:0.5", "invalid argument: Weight string contains invalid characters"},
        {std::string_view("AK:1\0", 5),
         "invalid argument: Weight string contains invalid characters"},
        {"AK:1.5", "invalid argument: Weight must be within [0, 1]"},
        {"AK:-0.1", "invalid argument: Weight must be within [0, 1]"},
        {"AK:nan", "invalid argument: Weight must be within [0, 1]"},
        {"AK:inf", "invalid argument: Weight must be within [0, 1]"},
        {":0.5", "invalid argument: Missing range expression"},
        {"AK-", "invalid argument: Empty combo"},
        {"-AK", "invalid argument: Empty combo"},
        {"AA-KK-QQ", "invalid argument: Invalid combo pattern length"},
        {"A", "invalid argument: Invalid combo pattern length"},
        {"AhK9", "invalid argument: Invalid combo pattern length"},
        {"10s9s", "invalid argument: Invalid combo pattern length"},
        {"A1", "invalid argument: Invalid rank character"},
        {"AKQJ", "invalid argument: Invalid suit character"},
        {"AKx", "invalid argument: Invalid suitedness suffix"},
        {"AA-KK+", "invalid argument: Invalid suitedness suffix"},
        {"KA", "invalid argument: First rank must be >= second rank"},
        {"KAs", "invalid argument: First rank must be >= second rank"},
        {"2hAh", "invalid argument: First rank must be >= second rank"},
        {"AAs", "invalid argument: Pair cannot have suitedness suffix"},
        {"AhAh", "invalid argument: Duplicate cards are not allowed"},
        {"AhKh-AhAs", "invalid argument: Duplicate cards are not allowed"},
        {"+", "invalid argument: Expected trailing '+'"},
        {"AKs-AQo", "invalid argument: Suitedness mismatch in range"},
        {"AK-QJs", "invalid argument: Suitedness mismatch in range"},
        {"AA-KQs", "invalid argument: Suitedness mismatch in range"},
        {"AA-KQ", "invalid argument: Unsupported range expression"},
        {"AQ-KT", "invalid argument: Unsupported range expression"},
        {"AhQh-KhTh", "invalid argument: Unsupported range expression"},
        {"QQ,AK:2,x", "invalid argument: Weight must be within [0, 1]"},
    };
    for (const auto& [text, failure] : cases) {
        EXPECT_EQ(failure_of([&] { parse_range(text); }), failure) << text;
    }
    Range range{};
    EXPECT_EQ(failure_of([&] { apply_plus(range, "AK", 1.0f); }),
              "invalid argument: Expected trailing '+'");
    EXPECT_EQ(failure_of([&] { apply_dash(range, "AK", 1.0f); }),
              "invalid argument: Expected '-' in range");
    EXPECT_EQ(failure_of([] { parse_exact_combo("AhK"); }),
              "invalid argument: Exact combo must contain four characters");
    for (const Suitedness suitedness : {Suitedness::Suited, Suitedness::Offsuit}) {
        EXPECT_EQ(failure_of([&] {
                      expand_pattern({12, 12, suitedness});
                  }),
                  "invalid argument: Pair cannot be suited/offsuit");
    }
}

TEST(Range, WeightsByCards) {
    Range range{};
    set_weight(range, 51, 3, 0.75f);
    EXPECT_EQ(weight_of(range, 3, 51), 0.75f);
    EXPECT_EQ(size_of(range), 1);
    const std::string bad_card = "out of range: Card code must be in [0, 52)";
    const std::string bad_weight = "invalid argument: Weight must be within [0, 1]";
    EXPECT_EQ(failure_of([&] { weight_of(range, 52, 3); }), bad_card);
    EXPECT_EQ(failure_of([&] { set_weight(range, 3, NO_CARD, 1.0f); }), bad_card);
    EXPECT_EQ(failure_of([&] { weight_of(range, 3, 3); }), "invalid argument: Cards must differ");
    for (const float weight : {-0.5f, 1.5f, std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_EQ(failure_of([&] { set_weight(range, 3, 4, weight); }), bad_weight);
    }
}

TEST(Range, SuitSymmetry) {
    constexpr int c = 0, d = 1, h = 2, s = 3;
    const std::tuple<std::string_view, int, int, bool> cases[] = {
        {"AhKh", c, d, true},        {"AhKh", h, c, false},          {"AhKh", d, s, true},
        {"TT+,AKs:0.5", c, s, true}, {"AhKh,AcKc", h, c, true},      {"AhKc", h, c, false},
        {"AhKc,AcKh", c, h, true},   {"AhKh:0.5,AcKc", h, c, false}, {"AhAc", h, c, true},
    };
    for (const auto& [text, suit_a, suit_b, symmetric] : cases) {
        EXPECT_EQ(is_suit_symmetric(parse_range(text), suit_a, suit_b), symmetric) << text;
    }
    Range range = parse_range("22+");
    range[pocket_index(parse_card("2s"), parse_card("3s"))] =
        std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(is_suit_symmetric(range, c, d));
}

}  // namespace
}  // namespace kestrel
