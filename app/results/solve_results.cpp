#include "app/results/solve_results.h"

#include <QCoreApplication>
#include <QDebug>
#include <algorithm>
#include <new>

namespace tidewell {
namespace {

using kestrel_app::SolveResult;

constexpr double hundredthsPerChip = 100.0;

QVariantList rootActionsOf(const SolveResult& result) {
    const std::size_t names = result.root_action_names.size();
    const std::size_t types = result.root_action_types.size();
    const std::size_t frequencies = result.root_action_frequencies.size();
    const std::size_t count = std::min({names, types, frequencies});
    if (names != count || types != count || frequencies != count) {
        qWarning().noquote() << QStringLiteral(
                                    "Result root action arrays have mismatched sizes: "
                                    "names=%1 types=%2 freqs=%3 (using n=%4)")
                                    .arg(names)
                                    .arg(types)
                                    .arg(frequencies)
                                    .arg(count);
    }
    QVariantList actions;
    for (std::size_t a = 0; a < count; ++a) {
        actions.append(
            QVariantMap{{"name", QString::fromStdString(result.root_action_names[a])},
                        {"actionType", QString::fromStdString(result.root_action_types[a])},
                        {"frequency", static_cast<double>(result.root_action_frequencies[a])}});
    }
    return actions;
}

QString summaryOf(const SolveResult& result, const SolveResults& results) {
    return QCoreApplication::translate("AppController",
                                       "Board %1 | iters %2 | expl≈%3 | EV(oop)=%4 EV(ip)=%5")
        .arg(QString::fromStdString(result.board))
        .arg(result.iterations)
        .arg(results.exploitability, 0, 'f', 4)
        .arg(results.evOop, 0, 'f', 3)
        .arg(results.evIp, 0, 'f', 3);
}

/// What an exception tells, for a person.
QString reasonOf(const std::string& error) {
    return error == std::bad_alloc().what()
               ? QCoreApplication::translate("AppController", "Not enough memory")
               : QString::fromStdString(error);
}

}  // namespace

SolveResults resultsOf(const SolveResult& result) {
    if (!result.ok) {
        SolveResults none;
        none.summary = QCoreApplication::translate("AppController", "Solve failed: %1")
                           .arg(reasonOf(result.error));
        return none;
    }
    const auto chips = [](double hundredths) { return hundredths / hundredthsPerChip; };
    SolveResults results;
    results.startingPot = chips(result.starting_pot);
    results.iterations = static_cast<int>(result.iterations);
    results.exploitability = chips(static_cast<double>(result.exploitability));
    results.evOop = chips(static_cast<double>(result.ev_oop));
    results.evIp = chips(static_cast<double>(result.ev_ip));
    results.rootActions = rootActionsOf(result);
    results.tree = {result.nodes, chips(result.effective_stack)};
    results.summary = summaryOf(result, results);
    return results;
}

kestrel_app::SolveProgress reportOf(const std::exception& failure) {
    kestrel_app::SolveProgress report{.status = std::string("Error: ") + failure.what(),
                                      .result = SolveResult{}};
    report.result->error = failure.what();
    return report;
}

QString statusOf(const kestrel_app::SolveProgress& report) {
    const bool failed = report.result && !report.result->ok && report.status.starts_with("Error");
    return failed ? "Error: " + reasonOf(report.result->error)
                  : QString::fromStdString(report.status);
}

}  // namespace tidewell
