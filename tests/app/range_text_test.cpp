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
#include <tuple>
#include <vector>

#include "engine/poker/range.h"
#include "session/hand_labels.h"

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

// The text of a range, "=", and what the grid shows of it.
TEST_F(RangeText, ShowsTheHandsOfATextAtTheirWeights) {
    const QString cases =
        R"( , ,=; AA=AA; AK=AKs AKo; aK, 7S6, t9S=T9s AKo AKs; JJ+=AA KK QQ JJ; AA+=AA;
        a8S+=AKs AQs AJs ATs A9s A8s; K9o+=KQo KJo KTo K9o; T9s+=T9s; 99-66=99 88 77 66;
        66-99=99 88 77 66; tt-jj=JJ TT; A2s-A5s=A5s A4s A3s A2s; KJo-K9o=KJo KTo K9o;
        T9s-65s=T9s; AKs-AQo=AKs; AKs:0.5 AQs:0.25	AJs=AKs:0.5 AQs:0.25 AJs;
        JJ+:0.5, QQ=AA:0.5 KK:0.5 QQ JJ:0.5; AKs:0.5, AK=AKs AKo; AK, AKs:0=AKo;
        AA:2, KK:-1, QQ:x, JJ:, TT:0.5:1, 99:.5=AA QQ JJ TT:0.5 99:0.5;
        AK-AQ, KAs, AAs, A, AhKh, hello, AK+, KAs+, XX-22, AXs-A2s, AA-KK-QQ=;
        -, +, :, :0.5, A-, -A, ++, --, AA:0.5%=AA:0.5; 50=; %=; -50%=; 50%%=; .5%=; 5.%=; 50% 60%=)";
    for (const QString& row : cases.split(';')) {
        QStringList hands = row.section('=', 1).split(' ', Qt::SkipEmptyParts);
        hands.sort();
        EXPECT_EQ(shown(weights(row.section('=', 0, 0))), hands) << row.toStdString();
    }
}

TEST_F(RangeText, SwitchesAHandInTheText) {
    // The text, the hand, its weight there, the one to add it at, and the text then.
    const std::tuple<QString, QString, double, double, QString> cases[] = {
        {" AA ,KK\nQQ,", "88", 0.0, 0.5, "AA, KK, QQ, 88:0.5"},
        {"AA", "KK", 0.0, 0.9985, "AA, KK:0.999"},
        {"AA", "KK", 0.0, -1.0, "AA, KK:0"},
        {"AA", "KK", 0.0, std::nan(""), "AA, KK"},
        {"AA:0", "AA", 0.0, 1.0, "AA:0, AA"},
        {"KQs, A5s-A2s:0.5", "A3s", 0.5, 1.0, "KQs"},
        {"AKo, hello", "AKo", 1.0, 1.0, "hello"},
        {"50%", "AA", 0.5, 1.0, ""}};
    for (const auto& [text, hand, current, add, result] : cases) {
        EXPECT_EQ(toggled(text, hand, current, add), result) << add;
    }
}

// Strokes over the grid, at one weight after another: the grid and the solver read alike whatever
// is left in the text, and the painted hand is in the state that was wanted.
TEST_F(RangeText, PaintsWhatTheSolverReads) {
    const QString begins[] = {
        "", " 12.5% ", "88+,A8s+,A5s-A2s:0.5,AJo+,ATo:0.75,K9s+,KQ,KJo:0.75,QJo:0.5,T8s+",
        "AA:0.25,99-22,AJs-A2s,AQo-A8o,K2s+,95s:0.5,QQ:0.25,76s:0.1667,77:0,54s:0.9999"};
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

}  // namespace
}  // namespace tidewell
