#pragma once

#include <QDate>
#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <functional>
#include <optional>

namespace tidewell {

/// Counts per day of the local calendar, kept in the application's settings store: solves, and
/// hands of the trainer. Days are named "yyyy-MM-dd".
///
/// A stored value of the wrong kind reads as absent, and so does a number that cannot have been
/// counted: a negative count, a sum that is not finite. Recording then writes a good value over it.
/// Other windows count in the same store; none of their counts is lost.
class Statistics {
  public:
    static constexpr int daysOfYear = 364;
    static constexpr int daysOfSixMonths = 182;

    explicit Statistics(std::function<QDate()> today = QDate::currentDate);

    /// Counts one finished solve for today. Negative numbers of iterations and milliseconds count
    /// as 0, and so does an exploitability that is not finite. In percent of the starting pot it is
    /// counted where there is one.
    void recordSolve(qint64 iterations, double exploitabilityChips, qint64 runtimeMs,
                     double potChips = 0);

    /// Cells of a calendar, one week after the other from Monday to Sunday, ending with the present
    /// week. `dayCount` of them are days, maps of
    ///   isPadding (false), date, isFuture, solves (int), avgIterations, avgExploitability (chips),
    ///   avgExploitabilityPercent (of the starting pot, -1 for not known), runtimeMsSum (64-bit),
    ///   avgRuntimeSec,
    /// and cells of only isPadding (true) fill the first week. Empty for a `dayCount` below 1.
    QVariantList solveActivityGrid(int dayCount) const;

    int solvesToday() const;

    /// The day of the first solve, "" without one. Once there is one it is not looked up again.
    QString firstSolveDateIso();

    /// Maps of date, solves (int), runtimeMsSum (64-bit), one for each day from the first solve
    /// through today.
    QVariantList solveHistoryDaily();

    /// Counts one hand of the trainer, in total and for today. `evLoss` in chips; a loss makes the
    /// hand a mistake, and one that is not finite or not above 0 counts as none.
    void recordPlayVsSolutionHand(bool isMistake, double evLoss);

    /// Map of totalHands, totalMistakes (int), totalAccuracyPct (0 to 100), totalAvgEvLoss (chips)
    /// and the same four of today under "today...". All 0 without hands.
    QVariantMap playVsSolutionStats() const;

    void clearPlayVsSolutionStats();

  private:
    std::function<QDate()> today_;
    std::optional<QString> firstSolveDate_;  ///< nothing before the first look-up
};

}  // namespace tidewell
