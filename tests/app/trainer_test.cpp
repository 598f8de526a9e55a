#include "app/play/trainer.h"

#include <gtest/gtest.h>

#include <QSet>
#include <QSettings>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "tests/app/controller_support.h"

namespace tidewell {
namespace {

using enum PlayEvent;

TEST(PlayState, WhatMayFollowWhat) {
    const std::vector<PlayEvent> events = {Deal, Ask,      Act,        Judge,
                                           End,  Redirect, BeginDrill, EndDrill};
    // How it is reached, and where each event leads from there; a dash where it has no place.
    const std::pair<std::vector<PlayEvent>, std::string> cases[] = {
        {{}, /*                           */ "S - - - - - - -"},
        {{Deal}, /*                       */ "- W - - C S D -"},
        {{Deal, Ask}, /*                  */ "- - J - - S D -"},
        {{Deal, Ask, Act}, /*             */ "- - - S C S D -"},
        {{Deal, End}, /*                  */ "S - - - - - D -"},
        {{Deal, BeginDrill}, /*           */ "- - j - - - - S"},
        {{Deal, BeginDrill, Act}, /*      */ "- - - V - - - S"},
        {{Deal, BeginDrill, Act, Judge}, "- D - - - - - S"}};
    const std::string letters = "NSWJCDjV";  // in the order of the stages
    for (const auto& [path, row] : cases) {
        PlayState state;
        for (const PlayEvent event : path)
            ASSERT_TRUE(state.take(event));
        for (std::size_t e = 0; e < events.size(); ++e) {
            PlayState next = state;
            const char expected = row[2 * e];
            EXPECT_EQ(next.take(events[e]), expected != '-') << row << " event " << e;
            const auto to = expected == '-' ? state.now() : PlayStage(letters.find(expected));
            EXPECT_EQ(next.now(), to) << row << " event " << e;
        }
        EXPECT_EQ(state.take(Leave), !path.empty());
        EXPECT_EQ(state.now(), PlayStage::NoRole);
    }
}

TEST(Judgement, ToleratesWhatASolveLeavesOpen) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const std::tuple<std::vector<double>, std::size_t, int, bool> cases[] = {
        {{100, 99.5}, 1, 0, false},   {{100, 98}, 1, 0, true},  {{0, -0.000001}, 1, 0, false},
        {{0, -0.000002}, 1, 0, true}, {{3, 5, 5}, 2, 1, false}, {{nan, 2, 3}, 1, 2, true},
        {{nan, 2}, 0, -1, false},     {{1}, 1, -1, false}};
    for (const auto& [evs, chosen, best, mistake] : cases) {
        const auto judgement = judge(evs, chosen);
        EXPECT_EQ(judgement ? static_cast<int>(judgement->bestIndex) : -1, best);
        EXPECT_EQ(judgement && isMistake(*judgement, {}), mistake) << evs[0] << " " << chosen;
    }
}

TEST(Dealing, SuitsTradeNames) {
    const ShownSuits suits("sdhc");  // clubs are shown as spades
    for (const auto& [kept, shown] : {std::pair("Kc", "Ks"), {"2s", "2c"}, {"Ad", "Ad"}}) {
        EXPECT_EQ(suits.shown(kestrel::parse_card(kept)), kestrel::parse_card(shown));
        EXPECT_EQ(suits.kept(kestrel::parse_card(shown)), kestrel::parse_card(kept));
    }
    EXPECT_EQ(ShownSuits("ccdh").shown(kestrel::parse_card("2s")), kestrel::parse_card("2s"));
}

/// A trainer on a solved turn, stepped by hand.
class Table : public ::testing::Test {
  protected:
    void SetUp() override {
        QSettings().remove("trainer");
        solve(controller_, config());
        trainer_.setSource(controller_.playSource());
        trainer_.setProperty("solvedBoard", config()["board"]);
        trainer_.setProperty("stepDelayMs", 1000000);
        trainer_.seed(7);
    }

    static QVariantMap config() {
        QVariantMap cfg = riverConfig(150);
        cfg.insert({{"board", "Td9c6h2s"},
                    {"starting_street", "turn"},
                    {"oop_range", "TT,87s,KQs:0.5,A9s,J8s:0.25"},
                    {"ip_range", "99,AJs,A6s,54s:0.5,KTs"}});
        return cfg;
    }

    QString actor() { return controller_.nodeMeta(trainer_.node())["player"].toString(); }
    QString handOf(const QString& seat) {
        return seat == "IP" ? trainer_.ipCard1() + trainer_.ipCard2()
                            : trainer_.oopCard1() + trainer_.oopCard2();
    }
    QVariantMap newest() { return trainer_.log()->get(0); }

    std::vector<double> listOf(const QVariantList& values) {
        std::vector<double> list;
        for (const QVariant& value : values)
            list.push_back(value.toDouble());
        return list;
    }
    /// By a walk of the solver of its own.
    std::vector<double> evs() {
        const QString hand = handOf(actor());
        return listOf(
            controller_.nodePocketActionEvs(trainer_.node(), actor(), hand.left(2), hand.mid(2)));
    }
    static std::size_t best(const std::vector<double>& evs) {
        return static_cast<std::size_t>(std::ranges::max_element(evs) - evs.begin());
    }

    /// How often the seat to act takes its first action: with its hand, or its range on average.
    double firstShare(bool ownHand) {
        const int node = trainer_.node();
        if (!ownHand) return controller_.nodeActions(node)[0].toMap()["frequency"].toDouble();
        for (const QVariant& combo : controller_.nodeHandCombos(node)) {
            const QVariantMap map = combo.toMap();
            if (map["c1"].toString() + map["c2"].toString() == handOf(actor()))
                return map["actionProbs"].toList()[0].toDouble();
        }
        ADD_FAILURE() << "no such hand";
        return 0;
    }

    /// Plays a hand to its end; `choose` takes the values of the actions. Every judgement is
    /// compared with one from these values, and every opponent's action is counted.
    template <class Choose>
    void playHand(const Choose& choose, bool ownHand = false) {
        while (!trainer_.complete()) {
            if (!trainer_.awaitsUser()) {
                const QString seat = actor();
                const double share = seat.isEmpty() ? 0 : firstShare(ownHand);
                const int node = trainer_.node();
                trainer_.tick();
                if (!seat.isEmpty() && !trainer_.awaitsUser()) {
                    const QString first =
                        controller_.nodeActions(node)[0].toMap()["name"].toString();
                    surprise_ += (trainer_.lastAction() == first ? 1 : 0) - share;
                    variance_ += share * (1 - share);
                }
                continue;
            }
            controller_.nodeHandCombos(trainer_.node());  // known, so that it is judged at once
            const std::vector<double> values = evs();
            const std::size_t chosen = choose(values);
            const double loss = values[best(values)] - values[chosen];
            const double size = std::max(std::abs(values[best(values)]), std::abs(values[chosen]));
            const bool mistake = loss > std::max(1e-6, 0.01 * std::max(size, 1e-9));
            const QString seat = actor();
            trainer_.act(static_cast<int>(chosen));
            ASSERT_EQ(trainer_.complete(), mistake);
            if (mistake) {
                ASSERT_EQ(newest()["endedReason"], "suboptimal");
                ASSERT_EQ(newest()["mistakeActor"], seat);
                ASSERT_NEAR(newest()["evLoss"].toDouble(), loss, 1e-9);
                ASSERT_EQ(newest()["correctActionIndex"].toInt(), static_cast<int>(best(values)));
            }
        }
        QSet<QString> cards;
        const QString all = trainer_.board() + handOf("OOP") + handOf("IP");
        for (int i = 0; i < all.size(); i += 2)
            cards.insert(all.mid(i, 2));
        ASSERT_EQ(2 * cards.size(), all.size()) << all.toStdString();
    }

    AppController controller_;
    Trainer trainer_;
    double surprise_ = 0;  // of the opponent's first actions, and what it may be
    double variance_ = 0;
};

TEST_F(Table, JudgesAndDealsAsTheSolutionSays) {
    std::mt19937 random(3);
    const auto anything = [&](const std::vector<double>& values) {
        return random() % values.size();
    };
    std::map<QString, int> dealt;
    int hands = 0;
    for (const auto& [role, ownHand] : {std::pair("OOP", false), {"IP", true}, {"BOTH", false}}) {
        trainer_.setOpponentPlaysOwnHand(ownHand);
        trainer_.start(role);
        surprise_ = variance_ = 0;
        for (int i = 0; i < 500; ++i, ++hands) {
            playHand(anything, ownHand);
            if (HasFatalFailure()) return;
            ++dealt[handOf("OOP")];
            trainer_.nextHand();
        }
        EXPECT_EQ(trainer_.hands(), 500);
        EXPECT_LT(std::abs(surprise_), 4 * std::sqrt(variance_) + 1e-9) << role;
    }
    EXPECT_EQ(trainer_.log()->count(), 1500);
    EXPECT_FALSE(Trainer().opponentPlaysOwnHand()) << "kept in the settings";

    double total = 0;
    double square = 0;
    const QVariantList range = controller_.nodeSeatHandCombos(0, "OOP");
    for (const QVariant& combo : range)
        total += combo.toMap()["weight"].toDouble();
    for (const QVariant& combo : range) {
        const QVariantMap map = combo.toMap();
        const double expected = hands * map["weight"].toDouble() / total;
        square +=
            std::pow(dealt[map["c1"].toString() + map["c2"].toString()] - expected, 2) / expected;
    }
    // Chi-square with so many degrees of freedom; 4 standard deviations.
    const double freedom = static_cast<double>(range.size() - 1);
    EXPECT_LT(square, freedom + 4 * std::sqrt(2 * freedom));
}

TEST_F(Table, WhoeverTakesTheBestActionMakesNoMistake) {
    trainer_.start("BOTH");
    for (int i = 0; i < 100; ++i) {
        playHand([](const std::vector<double>& values) { return best(values); });
        ASSERT_EQ(newest()["endedReason"], "terminal");
        trainer_.nextHand();
    }
    EXPECT_EQ(trainer_.mistakes(), 0);
    EXPECT_EQ(trainer_.evLost(), 0.0);
    QStringList dealt[2];
    for (QStringList& hands : dealt) {
        trainer_.seed(11);
        for (int i = 0; i < 5; ++i) {
            trainer_.start("OOP");
            hands.append(handOf("OOP") + handOf("IP"));
        }
    }
    EXPECT_EQ(dealt[0], dealt[1]) << "a seed repeats a session";
}

TEST_F(Table, WorksOutBesideTheEventLoopWhatAnActionIsWorth) {
    trainer_.start("OOP");
    trainer_.tick();
    ASSERT_TRUE(trainer_.awaitsUser());
    trainer_.act(0);
    EXPECT_EQ(trainer_.chosenAction(), 0) << "shown before it is judged";
    trainer_.act(1);
    EXPECT_EQ(trainer_.chosenAction(), 0) << "one choice is enough";
    EXPECT_TRUE(waitUntil([&] { return trainer_.complete() || trainer_.node() > 0; }));

    // A result that goes takes the question with it.
    trainer_.start("OOP");
    trainer_.reset();
    solve(controller_, config());
    trainer_.walkTo(0);
    trainer_.start("OOP");
    trainer_.tick();
    trainer_.act(0);
    controller_.clearResults();
    trainer_.reset();
    EXPECT_FALSE(trainer_.started());
    trainer_.start("OOP");
    EXPECT_FALSE(trainer_.started()) << "nothing to play";
}

TEST_F(Table, DrillsOneDecision) {
    trainer_.start("IP");
    while (!trainer_.awaitsUser())
        trainer_.tick();
    const int node = trainer_.node();
    trainer_.startDrill();
    controller_.nodeHandCombos(node);
    for (int i = 0; i < 4; ++i) {
        ASSERT_TRUE(waitUntil([&] { return trainer_.awaitsUser(); }));
        EXPECT_EQ(trainer_.drillNode(), node);
        const std::vector<double> values = evs();
        const bool right = i % 2 == 0;
        const auto worst =
            static_cast<std::size_t>(std::ranges::min_element(values) - values.begin());
        trainer_.act(static_cast<int>(right ? best(values) : worst));
        const double loss = right ? 0 : values[best(values)] - values[worst];
        EXPECT_EQ(trainer_.verdict()["wrong"].toBool(),
                  loss > 0.01 * std::abs(values[best(values)]));
        EXPECT_NEAR(trainer_.verdict()["evLoss"].toDouble(), loss, 1e-9);
        trainer_.act(0);
        EXPECT_FALSE(trainer_.awaitsUser()) << "not before the next hand";
    }
    EXPECT_EQ(trainer_.log()->count(), 0);
    trainer_.stopDrill();
    EXPECT_TRUE(!trainer_.drilling() && trainer_.verdict().isEmpty() && trainer_.line().isEmpty());
    trainer_.tick();
    EXPECT_TRUE(trainer_.awaitsUser());
}

TEST(HandLog, FollowsOrStaysAndIsWritten) {
    HandLog log;
    const auto add = [&](const char* board, double loss) {
        log.add({{"board", board}, {"evLoss", loss}, {"role", "OOP"}});
    };
    add("first", 0.5);
    add("second", std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(log.selectedIndex(), 0);
    log.select(1);
    log.select(7);
    add("third", 0.25);
    EXPECT_EQ(log.selected()["board"], "first");
    EXPECT_EQ(log.selectedIndex(), 2);
    log.select(0);
    add("fourth", 0);
    EXPECT_EQ(log.selected()["board"], "fourth");
    const QStringList lines = log.toText().split('\n');
    ASSERT_EQ(lines.size(), 6);
    EXPECT_TRUE(lines[0].startsWith("time\trole\tboard\t"));
    EXPECT_EQ(lines[4].split('\t')[10] + lines[3].split('\t')[10], "0.5") << "none is empty";
}

}  // namespace
}  // namespace tidewell
