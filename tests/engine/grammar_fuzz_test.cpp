#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "engine/poker/bet_size.h"
#include "engine/poker/range.h"
#include "tests/engine/failure.h"

namespace kestrel {
namespace {

// Texts that are nearly right: a seed text with a few bytes replaced, inserted or removed. The
// generator's output is fixed by the standard, and no distribution is used, so a seed means the
// same texts everywhere.
class TextSource {
  public:
    TextSource(std::uint32_t seed, std::string alphabet, std::vector<std::string> seeds)
        : generator_(seed), alphabet_(std::move(alphabet)), seeds_(std::move(seeds)) {}

    std::size_t below(std::size_t limit) { return generator_() % limit; }

    std::string next() {
        std::string text = seeds_[below(seeds_.size())];
        for (std::size_t edits = below(4); edits > 0; --edits) {
            const std::size_t place = below(text.size() + 1);
            // Something in the place of at most one byte: nothing, a byte or a whole text.
            const std::string added[] = {"", std::string(1, byte()), seeds_[below(seeds_.size())]};
            text.replace(place, below(2), added[below(3)]);
        }
        return text;
    }

  private:
    char byte() {
        // Now and then any byte: NUL and those that are negative as a char.
        return below(16) == 0 ? static_cast<char>(below(256)) : alphabet_[below(alphabet_.size())];
    }

    std::mt19937 generator_;
    std::string alphabet_;
    std::vector<std::string> seeds_;
};

constexpr int texts_per_grammar = 20000;

// Both outcomes must be common, or the texts test nothing.
void expect_both_outcomes(int accepted) {
    EXPECT_GT(accepted, texts_per_grammar / 20);
    EXPECT_LT(accepted, texts_per_grammar - texts_per_grammar / 20);
}

TEST(GrammarFuzz, RangesHoldWeightsOrAreRefused) {
    TextSource source(2, "23456789TJQKAakqcdhsSoO+-:,. 01e",
                      {"AA", "AKs", "TT+", "A5s-A2s", "AhKh:0.5", "AQs-KTs:.25,", "QQ,AKo:1e-1",
                       "ThTs+", "99-66,", "T9s-65s", "JhTh-8h7h"});
    int accepted = 0;
    for (int i = 0; i < texts_per_grammar; ++i) {
        const std::string text = source.next();
        Range range{};
        const std::string failure = failure_of([&] { range = parse_range(text); });
        if (failure.empty()) {
            ++accepted;
            for (const float weight : range)
                ASSERT_TRUE(weight >= 0.0F && weight <= 1.0F) << text;
        }
        // Blanks and letter case never matter, neither for the range nor for the message.
        std::string variant;
        for (const char character : text) {
            const auto byte = static_cast<unsigned char>(character);
            variant +=
                static_cast<char>(source.below(2) == 0 ? std::toupper(byte) : std::tolower(byte));
            if (source.below(4) == 0) variant += ' ';
        }
        Range same{};
        ASSERT_EQ(failure_of([&] { same = parse_range(variant); }), failure) << text;
        ASSERT_EQ(same, range) << text;
    }
    expect_both_outcomes(accepted);
}

TEST(GrammarFuzz, SizesResolveWithinTheLimitsOrAreRefused) {
    TextSource source(3, "0123456789.-+eExXcCrRaA%, nif",
                      {"75%", "33.3%", "2.5x", "500c", "500c3r", "500", "3e", "e", "3%75e", "a",
                       "50%,100%", "1e9%", "2147483647", "9e307%", "-1e300%"});
    int accepted = 0;
    for (int i = 0; i < texts_per_grammar; ++i) {
        const std::string text = source.next();
        const bool relative = source.below(2) == 0;
        std::vector<SizeToken> sizes;
        if (!failure_of([&] { sizes = parse_size_list(text, relative); }).empty()) continue;
        ++accepted;
        const auto min_raise_to = static_cast<std::int32_t>(source.below(1U << 31));
        const auto span = static_cast<std::size_t>(INT32_MAX - min_raise_to) + 1;
        const SizeContext context{
            .pot_after_call = static_cast<std::int32_t>(source.below(1U << 31)),
            .street_bet = static_cast<std::int32_t>(source.below(1U << 31)),
            .max_raise_to = min_raise_to + static_cast<std::int32_t>(source.below(span)),
            .min_raise_to = min_raise_to,
            .streets_left = static_cast<std::int32_t>(source.below(4)),
            .stack_to_pot = static_cast<double>(source.below(1000)) / 7.0};
        for (const SizeToken& token : sizes) {
            ASSERT_TRUE(relative || token.kind != SizeKind::RaiseMultiple) << text;
            const std::int32_t amount = resolve_size(token, context);
            ASSERT_GE(amount, context.min_raise_to) << text;
            ASSERT_LE(amount, context.max_raise_to) << text;
        }
    }
    expect_both_outcomes(accepted);
}

}  // namespace
}  // namespace kestrel
