#include "session/hand_classes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "engine/poker/evaluator.h"
#include "session/hand_labels.h"

namespace kestrel_app {
namespace {

using kestrel::Card;
using kestrel::Pocket;

std::vector<Card> cards_of(std::string_view text) {
    std::vector<Card> cards;
    for (std::size_t i = 0; i < text.size(); i += 2)
        cards.push_back(kestrel::parse_card(text.substr(i, 2)));
    return cards;
}

Pocket pocket_of(std::string_view text) {
    const auto cards = cards_of(text);
    return {std::min(cards[0], cards[1]), std::max(cards[0], cards[1])};
}

TEST(HandLabels, GridFromTheAces) {
    EXPECT_EQ(hand_label(label_index(pocket_of("KhAh"))), "AKs");
    EXPECT_EQ(label_index(pocket_of("AhKd")), 13U);
    EXPECT_EQ(hand_label(167), "32o");
    std::vector<std::size_t> pockets(label_count);
    for (std::size_t i = 0; i < kestrel::pocket_count; ++i)
        ++pockets[label_index(kestrel::pocket_from_index(i))];
    for (std::size_t i = 0; i < label_count; ++i) {
        const std::string& label = hand_label(i);
        EXPECT_EQ(label_index(label), i);
        EXPECT_EQ(pockets[i], label.size() == 2 ? 6U : label[2] == 's' ? 4U : 12U) << label;
    }
    for (const char* none : {"", "KAs", "AK", "AAs", "aks", "AKs "})
        EXPECT_EQ(label_index(std::string_view(none)), label_count) << none;
}

TEST(HandCategory, AgreesWithTheEvaluator) {
    // Seven cards of a fixed stride through the deck, over all strides and starts.
    for (unsigned start = 0; start < 52; ++start) {
        for (unsigned stride = 1; stride < 52; ++stride) {
            std::set<Card> cards;
            for (unsigned i = 0; cards.size() < 7 && i < 52; ++i)
                cards.insert(static_cast<Card>((start + i * stride + i * i) % 52));
            if (cards.size() < 7) continue;
            std::array<Card, 7> seven{};
            std::ranges::copy(cards, seven.begin());
            EXPECT_EQ(static_cast<unsigned>(hand_category(seven)),
                      kestrel::evaluate_seven(seven) >> 26);
        }
    }
    EXPECT_EQ(hand_category(cards_of("AhAdAsAc")), HandCategory::high_card) << "four cards";
}

TEST(HandClasses, TagsOfHands) {
    // Pocket, board and tags: made hands, pairs by their place, draws, and those missed.
    std::istringstream cases(
        R"(7s7d 7c2h2d full house; 7s7d 7c2h5d set; 7s2d 7c7h5d trips; KcQc Kd8h8s2c7d two pair;
        AhKd AcKh5s two pair; 9c8c 7d6h5s straight; Ac2c 3d4h5s straight;
        9h8h 7h6h5h straight flush; AcAd AhAs5d quads; AcAd KdTh7c overpair; 5c5d KdTh7c dry pair;
        KcQd KdTh7c top pair; Tc2s KdTh7c middle pair; 7d2s KdTh7c bottom pair;
        Tc2s KdKhTs two pair; AdKc 9c5h3d7sKs top pair; Ac9d KdJh9s5c3h pair;
        Ac5d KdJh9s5c3h pair; Ac3d KdJh9s5c3h bottom pair; Ac4d KdKh9s5c2h air; Ac4d 8c8d8h trips;
        AhKh Qh7h2c flush draw; 9c8c 7d6h2s open ended straight draw; Tc8c 9d7h6s straight;
        9c7c 6d5h2s gutter; 9cJc 5d7h8s2d open ended straight draw;
        JdTd 9d8d2c flush draw, open ended straight draw; JdTd 9d3c2c back door flush draw;
        JdTd 9d3c2c2h air; KcQd Th8h2h air; QhJh Kh9h2c3h flush, gutter; KcQs 9d8d7d2d air;
        JcTc 8d7h2sAd3s missed gutter; JcTc 9d8h2sAd3s missed OESD;
        JdTd 9d8h2dAc3s missed FD, missed OESD; JdTd 9d8h2dAc9s missed FD, missed OESD;
        JdTd 9d8h2dAcTs middle pair)");
    for (std::string pocket, board, tags;
         std::getline(cases >> pocket >> board >> std::ws, tags, ';');) {
        std::string told;
        for (const std::string& name : classify(cards_of(board), pocket_of(pocket)).names())
            told += (told.empty() ? "" : ", ") + name;
        EXPECT_EQ(told, tags) << pocket << " on " << board;
    }
    EXPECT_TRUE(classify({}, pocket_of("JdTd")).names().empty());
    EXPECT_TRUE(classify(cards_of("9d8h"), pocket_of("JdTd")).names().empty());
}

}  // namespace
}  // namespace kestrel_app
