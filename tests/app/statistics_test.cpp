#include "app/statistics.h"

#include <gtest/gtest.h>

#include <QSettings>
#include <QVariant>
#include <limits>
#include <tuple>

namespace {

using tidewell::Statistics;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// An empty store, and a calendar that the test turns.
class StatisticsTest : public testing::Test {
  protected:
    void SetUp() override { QSettings().clear(); }
    void TearDown() override { QSettings().clear(); }

    /// A fresh start of the program.
    Statistics start() {
        return Statistics([this] { return today_; });
    }

    static void store(const QString& key, const QVariant& value) {
        QSettings().setValue(key, value);
    }

    QDate today_ = QDate(2024, 5, 15);  // a Wednesday
};

QVariantMap cellOf(const QVariantList& grid, const QString& date) {
    for (const QVariant& cell : grid) {
        if (cell.toMap()["date"] == date) {
            return cell.toMap();
        }
    }
    return {};
}

TEST_F(StatisticsTest, GridIsWholeWeeksThatEndWithThePresentOne) {
    const QDate monday(2024, 2, 26);  // its week holds a leap day
    constexpr int days = Statistics::daysOfYear;
    for (int weekday = 0; weekday < 7; ++weekday) {
        today_ = monday.addDays(weekday);
        const QVariantList grid = start().solveActivityGrid(days);
        ASSERT_EQ(grid.size(), days);
        for (int i = 0; i < days; ++i) {
            const QVariantMap cell = grid[i].toMap();
            ASSERT_EQ(cell["date"], monday.addDays(7 + i - days).toString("yyyy-MM-dd"));
            ASSERT_EQ(cell["isFuture"], i > days - 7 + weekday) << weekday;
        }
    }
    const QVariantList filled = start().solveActivityGrid(10);
    ASSERT_EQ(filled.size(), 14);
    EXPECT_EQ(filled[3], QVariant(QVariantMap{{"isPadding", true}}));
}

TEST_F(StatisticsTest, SolvesAddUpByDay) {
    Statistics statistics = start();
    statistics.recordSolve(100, 0.25, 2000);
    statistics.recordSolve(300, 0.75, 4000, 150);
    EXPECT_EQ(statistics.solvesToday(), 2);
    today_ = today_.addDays(1);
    EXPECT_EQ(statistics.solvesToday(), 0);
    statistics.recordSolve(50, 0.5, 5000);
    statistics.recordSolve(-5, notANumber, -1);  // a solve, but none of its numbers count

    const std::tuple<QString, int, double, double, double> days[] = {
        {"2024-05-14", 0, 0, 0, 0},
        {"2024-05-15", 2, 200, 0.5, 3},
        {"2024-05-16", 2, 25, 0.25, 2.5}};
    const QVariantList grid = start().solveActivityGrid(Statistics::daysOfYear);
    for (const auto& [date, solves, iterations, exploitability, seconds] : days) {
        const QVariantMap cell = cellOf(grid, date);
        EXPECT_EQ(cell["solves"], solves);
        EXPECT_EQ(cell["avgIterations"], iterations);
        EXPECT_EQ(cell["avgExploitability"], exploitability);
        EXPECT_EQ(cell["avgRuntimeSec"], seconds);
        EXPECT_EQ(cell["avgExploitabilityPercent"], date == "2024-05-15" ? 0.5 : -1.0);
    }
}

TEST_F(StatisticsTest, HistoryBeginsWithTheFirstSolve) {
    Statistics first = start();
    EXPECT_EQ(first.firstSolveDateIso(), "");
    first.recordSolve(100, 0.5, 1000);
    EXPECT_EQ(first.firstSolveDateIso(), "2024-05-15");
    today_ = today_.addDays(2);
    Statistics second = start();
    second.recordSolve(100, 0.5, 500);
    second.recordSolve(100, 0.5, 700);
    const auto day = [](const char* date, int solves, int runtime) {
        return QVariantMap{{"date", date}, {"solves", solves}, {"runtimeMsSum", runtime}};
    };
    EXPECT_EQ(second.solveHistoryDaily(),
              QVariantList({day("2024-05-15", 1, 1000), day("2024-05-16", 0, 0),
                            day("2024-05-17", 2, 1200)}));
    today_ = QDate(2024, 5, 14);
    EXPECT_TRUE(start().solveHistoryDaily().isEmpty()) << "a first solve after today";
}

TEST_F(StatisticsTest, FirstSolveDateIsMendedFromTheDays) {
    store("solveActivity/2024-03-01/solves", 1);
    store("solveActivity/2024-02-29/solves", 2);
    store("solveActivity/2024-01-01/solves", 0);  // no solve
    store("solveActivity/2023-02-29/solves", 1);  // no day
    store("solveActivity/notes/solves", 1);
    const QVariant damaged[] = {QVariant(), "soon", "0001-01-01", "2024-02-30",
                                QStringList{"a", "b"}};
    for (const QVariant& value : damaged) {
        store("solveActivity/firstSolveDate", value);
        EXPECT_EQ(start().firstSolveDateIso(), "2024-02-29") << value.toString().toStdString();
        EXPECT_EQ(QSettings().value("solveActivity/firstSolveDate"), "2024-02-29");
    }
    store("solveActivity/firstSolveDate", " 2024-04-01 ");
    EXPECT_EQ(start().firstSolveDateIso(), "2024-04-01") << "a good date stands";
}

TEST_F(StatisticsTest, HandsCountAsMistakesByVerdictOrLoss) {
    // Told to be a mistake, its loss, whether it counts, and the loss that does.
    const std::tuple<bool, double, int, double> cases[] = {
        {true, 0, 1, 0},           {false, 0.5, 1, 0.5}, {true, notANumber, 1, 0},
        {false, notANumber, 0, 0}, {false, -0.5, 0, 0},  {false, infinity, 0, 0}};
    for (const auto& [isMistake, evLoss, mistakes, lossSum] : cases) {
        Statistics statistics = start();
        statistics.clearPlayVsSolutionStats();
        statistics.recordPlayVsSolutionHand(isMistake, evLoss);
        const QVariantMap stats = statistics.playVsSolutionStats();
        EXPECT_EQ(stats["totalMistakes"], mistakes) << evLoss;
        EXPECT_EQ(stats["todayAvgEvLoss"], lossSum) << evLoss;
    }
}

TEST_F(StatisticsTest, MidnightStartsTodayAnewAndClearingBoth) {
    Statistics statistics = start();
    for (int hand = 0; hand < 8; ++hand) {
        statistics.recordPlayVsSolutionHand(false, 0);
    }
    today_ = today_.addDays(1);
    statistics.recordPlayVsSolutionHand(false, 1.5);
    statistics.recordPlayVsSolutionHand(true, 0);
    const QVariantMap expected = {{"totalHands", 10},         {"totalMistakes", 2},
                                  {"totalAccuracyPct", 80.0}, {"totalAvgEvLoss", 0.15},
                                  {"todayHands", 2},          {"todayMistakes", 2},
                                  {"todayAccuracyPct", 0.0},  {"todayAvgEvLoss", 0.75}};
    EXPECT_EQ(statistics.playVsSolutionStats(), expected);

    statistics.recordSolve(100, 0.5, 1000);
    statistics.clearPlayVsSolutionStats();
    for (const QVariant& value : statistics.playVsSolutionStats()) {
        EXPECT_EQ(value, 0.0);
    }
    EXPECT_EQ(statistics.solvesToday(), 1) << "solves have no part in clearing";
}

TEST_F(StatisticsTest, DamagedNumbersReadAsNoneAndAreWrittenOver) {
    const QVariant damaged[] = {"many", "-3", -infinity, "1e999", QStringList{"1", "2"}};
    for (const QVariant& value : damaged) {
        SCOPED_TRACE(value.toString().toStdString());
        for (const char* const key :
             {"solveActivity/2024-05-15/solves", "solveActivity/2024-05-15/iterationsSum",
              "playVsSolution/total/hands", "playVsSolution/total/mistakes",
              "playVsSolution/total/evLossSum"}) {
            store(key, value);
        }
        Statistics statistics = start();
        EXPECT_EQ(statistics.solvesToday(), 0);
        statistics.recordSolve(10, 2, 3000);
        const QVariantList grid = statistics.solveActivityGrid(Statistics::daysOfSixMonths);
        EXPECT_EQ(cellOf(grid, "2024-05-15")["avgIterations"], 10.0);
        statistics.recordPlayVsSolutionHand(false, 0.5);
        EXPECT_EQ(statistics.playVsSolutionStats()["totalMistakes"], 1);
        EXPECT_EQ(statistics.playVsSolutionStats()["totalAvgEvLoss"], 0.5);
    }
}

}  // namespace
