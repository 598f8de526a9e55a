#include "app/statistics.h"

#include <QSettings>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "app/files/shared_store.h"

namespace tidewell {
namespace {

const QString solveActivity = QStringLiteral("solveActivity");
const QString firstSolveDateKey = QStringLiteral("solveActivity/firstSolveDate");
const QString playVsSolution = QStringLiteral("playVsSolution");

QString isoText(QDate date) {
    return date.toString(Qt::ISODate);
}

/// Null for text that is no date, and for days before 1970: no clock starts earlier, and a damaged
/// year must not stretch the history over centuries.
QDate parseDay(const QString& text) {
    const QDate date = QDate::fromString(text.trimmed(), Qt::ISODate);
    return date.isValid() && date.year() >= 1970 ? date : QDate();
}

qint64 readWhole(const QSettings& settings, const QString& key) {
    bool ok = false;
    const qint64 value = settings.value(key).toLongLong(&ok);
    return ok ? std::max<qint64>(value, 0) : 0;
}

int readCount(const QSettings& settings, const QString& key) {
    const qint64 limit = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(readWhole(settings, key), limit));
}

double readSum(const QSettings& settings, const QString& key) {
    const double value = settings.value(key).toDouble();
    return std::isfinite(value) ? value : 0;
}

int plusOne(int count) {
    return count < std::numeric_limits<int>::max() ? count + 1 : count;
}

/// Neither number is negative.
qint64 plus(qint64 sum, qint64 add) {
    const qint64 limit = std::numeric_limits<qint64>::max();
    return add > limit - sum ? limit : sum + add;
}

double plus(double sum, double add) {
    const double result = sum + add;
    return std::isfinite(result) ? result : sum;
}

/// What one day's group of solve activity holds.
struct SolveDay {
    int solves = 0;
    qint64 iterationsSum = 0;
    double exploitabilitySum = 0;
    qint64 runtimeMsSum = 0;
    // Younger than the others: older days have none.
    double exploitabilityPercentSum = 0;
    int percentSolves = 0;
};

QString solveDayGroup(QDate date) {
    return solveActivity + u'/' + isoText(date) + u'/';
}

SolveDay readSolveDay(const QSettings& settings, QDate date) {
    const QString group = solveDayGroup(date);
    return {readCount(settings, group + "solves"),
            readWhole(settings, group + "iterationsSum"),
            readSum(settings, group + "exploitabilitySum"),
            readWhole(settings, group + "runtimeMsSum"),
            readSum(settings, group + "exploitabilityPercentSum"),
            readCount(settings, group + "percentSolves")};
}

QVariantMap dayCell(const QSettings& settings, QDate date, QDate today) {
    const SolveDay day = readSolveDay(settings, date);
    const auto average = [&day](double sum) { return day.solves > 0 ? sum / day.solves : 0.0; };
    return {{"isPadding", false},
            {"date", isoText(date)},
            {"isFuture", date > today},
            {"solves", day.solves},
            {"avgIterations", average(static_cast<double>(day.iterationsSum))},
            {"avgExploitability", average(day.exploitabilitySum)},
            {"avgExploitabilityPercent",
             day.percentSolves > 0 ? day.exploitabilityPercentSum / day.percentSolves : -1.0},
            {"runtimeMsSum", day.runtimeMsSum},
            {"avgRuntimeSec", average(static_cast<double>(day.runtimeMsSum) / 1000)}};
}

QDate earliestSolveDay(QSettings& settings) {
    settings.beginGroup(solveActivity);
    QDate earliest;
    for (const QString& name : settings.childGroups()) {
        const QDate date = parseDay(name);
        const bool earlier = date.isValid() && (earliest.isNull() || date < earliest);
        if (earlier && readCount(settings, name + "/solves") > 0) {
            earliest = date;
        }
    }
    settings.endGroup();
    return earliest;
}

/// The stored date. If that is missing or damaged, the earliest day with a solve, which is then
/// stored. Null without any solve.
QDate findFirstSolveDay() {
    QSettings settings;
    const QDate stored = parseDay(settings.value(firstSolveDateKey).toString());
    if (stored.isValid()) {
        return stored;
    }
    const QDate found = earliestSolveDay(settings);
    if (found.isValid()) {
        changeStore([&](QSettings& store) { store.setValue(firstSolveDateKey, isoText(found)); });
    }
    return found;
}

/// What one group of the trainer holds, the total's or a day's.
struct TrainingHands {
    int hands = 0;
    int mistakes = 0;
    double evLossSum = 0;
};

QString trainingTotalGroup() {
    return playVsSolution + "/total/";
}

QString trainingDayGroup(QDate date) {
    return playVsSolution + u'/' + isoText(date) + u'/';
}

TrainingHands readTraining(const QSettings& settings, const QString& group) {
    return {readCount(settings, group + "hands"), readCount(settings, group + "mistakes"),
            std::max(readSum(settings, group + "evLossSum"), 0.0)};
}

void addHand(QSettings& settings, const QString& group, bool mistake, double evLoss) {
    const TrainingHands before = readTraining(settings, group);
    settings.setValue(group + "hands", plusOne(before.hands));
    settings.setValue(group + "mistakes", mistake ? plusOne(before.mistakes) : before.mistakes);
    settings.setValue(group + "evLossSum", plus(before.evLossSum, evLoss));
}

void insertTraining(QVariantMap& stats, const QString& prefix, const TrainingHands& training) {
    const int correct = std::max(training.hands - training.mistakes, 0);
    const auto perHand = [&training](double sum) {
        return training.hands > 0 ? sum / training.hands : 0.0;
    };
    stats[prefix + "Hands"] = training.hands;
    stats[prefix + "Mistakes"] = training.mistakes;
    stats[prefix + "AccuracyPct"] = perHand(correct) * 100;
    stats[prefix + "AvgEvLoss"] = perHand(training.evLossSum);
}

}  // namespace

Statistics::Statistics(std::function<QDate()> today) : today_(std::move(today)) {}

void Statistics::recordSolve(qint64 iterations, double exploitabilityChips, qint64 runtimeMs,
                             double potChips) {
    const QDate today = today_();
    const QString group = solveDayGroup(today);
    changeStore([&](QSettings& settings) {
        const SolveDay before = readSolveDay(settings, today);
        settings.setValue(group + "solves", plusOne(before.solves));
        settings.setValue(group + "iterationsSum",
                          plus(before.iterationsSum, std::max<qint64>(iterations, 0)));
        settings.setValue(group + "exploitabilitySum",
                          plus(before.exploitabilitySum, exploitabilityChips));
        settings.setValue(group + "runtimeMsSum",
                          plus(before.runtimeMsSum, std::max<qint64>(runtimeMs, 0)));
        if (potChips > 0) {
            settings.setValue(
                group + "exploitabilityPercentSum",
                plus(before.exploitabilityPercentSum, 100 * exploitabilityChips / potChips));
            settings.setValue(group + "percentSolves", plusOne(before.percentSolves));
        }
    });
    if (firstSolveDate_ == QString()) {
        firstSolveDate_.reset();  // there is one now
    }
}

QVariantList Statistics::solveActivityGrid(int dayCount) const {
    QVariantList cells;
    if (dayCount < 1) {
        return cells;
    }
    const QDate today = today_();
    const QDate end = today.addDays(Qt::Sunday - today.dayOfWeek());
    const QDate start = end.addDays(1 - dayCount);
    // The days end on a Sunday, so only the first week can need filling.
    const int leading = start.dayOfWeek() - Qt::Monday;
    cells.reserve(leading + dayCount);
    cells.insert(0, leading, QVariantMap{{"isPadding", true}});
    const QSettings settings;
    for (QDate date = start; date <= end; date = date.addDays(1)) {
        cells.append(dayCell(settings, date, today));
    }
    return cells;
}

int Statistics::solvesToday() const {
    return readSolveDay(QSettings(), today_()).solves;
}

QString Statistics::firstSolveDateIso() {
    if (!firstSolveDate_) {
        firstSolveDate_ = isoText(findFirstSolveDay());
    }
    return *firstSolveDate_;
}

QVariantList Statistics::solveHistoryDaily() {
    QVariantList history;
    const QDate first = parseDay(firstSolveDateIso());
    if (!first.isValid()) {
        return history;
    }
    const QDate today = today_();
    const QSettings settings;
    for (QDate date = first; date <= today; date = date.addDays(1)) {
        const QString group = solveDayGroup(date);
        history.append(QVariantMap{{"date", isoText(date)},
                                   {"solves", readCount(settings, group + "solves")},
                                   {"runtimeMsSum", readWhole(settings, group + "runtimeMsSum")}});
    }
    return history;
}

void Statistics::recordPlayVsSolutionHand(bool isMistake, double evLoss) {
    const double loss = std::isfinite(evLoss) && evLoss > 0 ? evLoss : 0;
    const bool mistake = isMistake || loss > 0;
    changeStore([&](QSettings& settings) {
        addHand(settings, trainingTotalGroup(), mistake, loss);
        addHand(settings, trainingDayGroup(today_()), mistake, loss);
    });
}

QVariantMap Statistics::playVsSolutionStats() const {
    const QSettings settings;
    QVariantMap stats;
    insertTraining(stats, "total", readTraining(settings, trainingTotalGroup()));
    insertTraining(stats, "today", readTraining(settings, trainingDayGroup(today_())));
    return stats;
}

void Statistics::clearPlayVsSolutionStats() {
    changeStore([](QSettings& settings) { settings.remove(playVsSolution); });
}

}  // namespace tidewell
