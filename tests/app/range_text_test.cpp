#include <gtest/gtest.h>

#include <QJSEngine>
#include <QJSValue>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <cmath>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "engine/poker/range.h"
#include "session/hand_labels.h"
#include "session/solve_config.h"

namespace tidewell {
namespace {

using Weights = QVariantMap;

class RangeText : public testing::Test {
  protected:
    void SetUp() override { ASSERT_FALSE(module_.isError()) << module_.toString().toStdString(); }

    QJSValue call(const char* function, const QJSValueList& arguments) {
        const QJSValue result = module_.property(function).call(arguments);
        EXPECT_FALSE(result.isError()) << function << ": " << result.toString().toStdString();
        return result;
    }

    Weights weights(const QString& text) {
        return call("parseRangeWeights", {text}).toVariant().toMap();
    }

    QString toggled(const QString& text, const QString& hand, double current, double add) {
        return call("toggleHand", {text, hand, current, add}).toString();
    }

    QJSEngine engine_;
    QJSValue module_ = engine_.importModule(":/Tidewell/logic/range_text.mjs");
};

// The hands of the grid that are on, with the weights that are not 1: "AA", "KK:0.5".
QStringList shown(const Weights& weights) {
    QStringList hands;
    for (std::size_t i = 0; i < kestrel_app::label_count; ++i) {
        const QString hand = QString::fromStdString(kestrel_app::hand_label(i));
        const double weight = weights.value(hand).toDouble();
        if (weight > 0.0) {
            hands += weight == 1.0 ? hand : QStringLiteral("%1:%2").arg(hand).arg(weight);
        }
    }
    hands.sort();
    return hands;
}

// The hands of the grid whose weight is not the one that the solver reads for each of their
// pockets.
std::string differences(const Weights& weights, const kestrel::Range& range) {
    std::string different;
    for (std::size_t i = 0; i < kestrel_app::label_count; ++i) {
        const std::string& hand = kestrel_app::hand_label(i);
        const auto weight =
            static_cast<float>(weights.value(QString::fromStdString(hand)).toDouble());
        for (const auto pocket : kestrel::expand_pattern(kestrel::parse_pattern(hand))) {
            if (range[pocket] != weight) {
                different += hand + ' ';
                break;
            }
        }
    }
    return different;
}

TEST_F(RangeText, PutsHandsWhereTheSolverHasThem) {
    const QStringList hands = call("allHands", {}).toVariant().toStringList();
    ASSERT_EQ(hands.size(), static_cast<int>(kestrel_app::label_count));
    for (int i = 0; i < hands.size(); ++i) {
        const std::string& label = kestrel_app::hand_label(static_cast<std::size_t>(i));
        EXPECT_EQ(hands[i].toStdString(), label);
        EXPECT_EQ(call("handAt", {i / 13, i % 13}).toString().toStdString(), label);
    }
}

TEST_F(RangeText, ShowsTheHandsOfATextAtTheirWeights) {
    struct Case {
        const char* text;
        const char* shown;
    };
    const Case cases[] = {
        {"", ""},
        {" \n\t, ,", ""},
        {"AA", "AA"},
        {"AK", "AKs AKo"},
        {"aK, 7S6, t9S", "T9s AKo AKs"},
        {"JJ+", "AA KK QQ JJ"},
        {"AA+", "AA"},
        {"a8S+", "AKs AQs AJs ATs A9s A8s"},
        {"K9o+", "KQo KJo KTo K9o"},
        {"T9s+", "T9s"},
        {"99-66", "99 88 77 66"},
        {"66-99", "99 88 77 66"},
        {"QQ-KK", "KK QQ"},
        {"tt-jj", "JJ TT"},
        {"A5s-A2s", "A5s A4s A3s A2s"},
        {"A2s-A5s", "A5s A4s A3s A2s"},
        {"KJo-K9o", "KJo KTo K9o"},
        {"T9s-65s", "T9s"},  // runs that it cannot read show where they begin
        {"AKs-AQo", "AKs"},
        {"AKs:0.5 AQs:0.25\nAJs", "AKs:0.5 AQs:0.25 AJs"},
        {"JJ+:0.5, QQ", "AA:0.5 KK:0.5 QQ JJ:0.5"},
        {"AKs:0.5, AK", "AKs AKo"},
        {"AK, AKs:0", "AKo"},
        {"AA:2, KK:-1, QQ:x, JJ:, TT:0.5:1, 99:.5", "AA QQ JJ TT:0.5 99:0.5"},
        {"AK-AQ, KAs, AAs, A, AhKh, hello, AK+, KAs+, XX-22, AXs-A2s, AA-KK-QQ", ""},
        {"-, +, :, :0.5, A-, -A, ++, --, AA:0.5%", "AA:0.5"},
    };
    for (const Case& expected : cases) {
        QStringList hands = QString(expected.shown).split(' ', Qt::SkipEmptyParts);
        hands.sort();
        EXPECT_EQ(shown(weights(expected.text)), hands) << expected.text;
    }
}

TEST_F(RangeText, ReadsAPercentageAsAllHands) {
    struct Case {
        const char* text;
        double weight;
    };
    const Case cases[] = {{"50%", 0.5}, {" 12.5 % ", 0.125}, {"100%", 1.0}, {"0%", 0.0}};
    for (const Case& expected : cases) {
        const Weights all = weights(expected.text);
        EXPECT_EQ(all.size(), 169) << expected.text;
        EXPECT_EQ(differences(all, kestrel_app::parse_range_or_percent(
                                       QString(expected.text).remove(' ').toStdString())),
                  "");
        EXPECT_EQ(all.value("72o").toDouble(), expected.weight) << expected.text;
    }
    for (const char* const text : {"50", "%", "-50%", "50%%", ".5%", "5.%", "50% 60%"}) {
        EXPECT_EQ(shown(weights(text)), QStringList()) << text;
    }
}

TEST_F(RangeText, SwitchesAHandInTheText) {
    struct Case {
        const char* text;
        const char* hand;
        double current;
        double add;
        const char* result;
    };
    const double nan = std::nan("");
    const Case cases[] = {
        {"", "AA", 0.0, 1.0, "AA"},
        {" AA ,KK\nQQ,", "88", 0.0, 0.5, "AA, KK, QQ, 88:0.5"},
        {"AA", "KK", 0.0, 0.999, "AA, KK"},
        {"AA", "KK", 0.0, 0.9985, "AA, KK:0.999"},
        {"AA", "KK", 0.0, 0.1254, "AA, KK:0.125"},
        {"AA", "KK", 0.0, 0.3, "AA, KK:0.3"},
        {"AA", "KK", 0.0, 0.0, "AA, KK:0"},
        {"AA", "KK", 0.0, -1.0, "AA, KK:0"},
        {"AA", "KK", 0.0, 5.0, "AA, KK"},
        {"AA", "KK", 0.0, nan, "AA, KK"},
        {"AA:0", "AA", 0.0, 1.0, "AA:0, AA"},
        {"AA, KK, QQ", "KK", 1.0, 1.0, "AA, QQ"},
        {"AA, KK:0.5, QQ", "KK", 0.5, 1.0, "AA, QQ"},
        {"KQs, A5s-A2s:0.5", "A3s", 0.5, 1.0, "KQs"},
        {"QQ+, AKs, AK", "AKs", 1.0, 1.0, "QQ+"},
        {"qq+, aks", "AKs", 1.0, 1.0, "qq+"},
        {"AKo, hello", "AKo", 1.0, 1.0, "hello"},
        {"AK", "QQ", 1.0, 1.0, "AK"},
        {"50%", "AA", 0.5, 1.0, ""},
        {"0%", "AA", 0.0, 0.5, "AA:0.5"},
    };
    for (const Case& expected : cases) {
        EXPECT_EQ(
            toggled(expected.text, expected.hand, expected.current, expected.add).toStdString(),
            expected.result)
            << expected.text << " and " << expected.hand << ' ' << expected.add;
    }
}

TEST_F(RangeText, ShowsWhatTheSolverReads) {
    const char* const texts[] = {
        "88+,A8s+,A5s-A2s:0.5,AJo+,ATo:0.75,K9s+,KQo,KJo:0.75,KTo:0.25,Q9s+,QJo:0.5,J8s+,T8s+",
        "AA:0.25,99-22,AJs-A2s,AQo-A8o,K2s+,K9o+,Q2s+,J6s+,T6s+,96s+,95s:0.5,98o,QQ:0.25",
        "22+, A2s+, KQ, 76s:0.1667, 54s:0.9999, 77:0, AK:0.3",
    };
    for (const char* const text : texts) {
        EXPECT_EQ(differences(weights(text), kestrel::parse_range(text)), "") << text;
    }
}

// Strokes over the grid, at one weight after another: the grid and the solver read alike whatever
// is left in the text, and the painted hand is in the state that was wanted.
TEST_F(RangeText, PaintsWhatTheSolverReads) {
    const QString begins[] = {"", "JJ+, A5s-A2s:0.5, KQ, T8s+", "40%"};
    const double strokes[] = {1.0, 0.5, 0.125, 0.0, 0.333333, 0.9999};
    std::mt19937 random(7);
    for (const QString& begin : begins) {
        QString text = begin;
        for (int i = 0; i < 300; ++i) {
            const QString hand = QString::fromStdString(
                kestrel_app::hand_label(random() % kestrel_app::label_count));
            const double before = weights(text).value(hand).toDouble();
            const double stroke = strokes[random() % std::size(strokes)];
            text = toggled(text, hand, before, stroke);
            const Weights grid = weights(text);
            const double after = grid.value(hand).toDouble();
            EXPECT_EQ(after > 0.0, before <= 0.0 && stroke > 0.0) << hand.toStdString();
            ASSERT_EQ(differences(grid, kestrel::parse_range(text.toStdString())), "")
                << text.toStdString();
        }
    }
}

// Hands from the letters that mean something, the property names of a plain object among them.
TEST_F(RangeText, FailsOnNoText) {
    const std::string letters = "AKQJT2akso+-:,. %0159\n\t(__proto__)h\xC3\xA9";
    std::mt19937 random(11);
    std::vector<QString> texts = {"__proto__, constructor, toString:0.5", "hasOwnProperty+",
                                  QString("AA,").repeated(2000), QString(5000, '+')};
    for (int i = 0; i < 3000; ++i) {
        std::string text;
        for (std::size_t length = random() % 24; length > 0; --length) {
            text += letters[random() % letters.size()];
        }
        texts.push_back(QString::fromStdString(text));
    }
    for (const QString& text : texts) {
        for (const QVariant& weight : weights(text)) {
            ASSERT_GE(weight.toDouble(), 0.0) << text.toStdString();
        }
        toggled(text, "AKs", 0.0, 0.5);
        EXPECT_EQ(weights(toggled(text, "AKs", 1.0, 0.5)).value("AKs").toDouble(), 0.0)
            << text.toStdString();
        ASSERT_FALSE(HasFailure()) << text.toStdString();
    }
}

}  // namespace
}  // namespace tidewell
