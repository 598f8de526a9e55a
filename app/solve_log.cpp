#include "app/solve_log.h"

#include <QDebug>
#include <QString>
#include <utility>

namespace tidewell {

void logStart(const QVariantMap& cfg) {
    const auto value = [&](const char* key) { return cfg.value(key).toString(); };
    const auto length = [&](const char* key) { return QString::number(value(key).size()); };
    const std::pair<const char*, QString> parts[] = {
        {"board=", value("board")},
        {"oop_range.len=", length("oop_range")},
        {"ip_range.len=", length("ip_range")},
        {"pot=", value("starting_pot")},
        {"stack=", value("effective_stack")},
        {"rake%=", value("rake_percent")},
        {"rake_cap=", value("rake_cap")},
        {"iters=", value("max_iterations")},
        {"target_expl=", value("target_exploitability")},
        {"oop_flop_bets=", value("oop_flop_bet_sizes")},
        {"oop_flop_raises=", value("oop_flop_raise_sizes")},
        {"ip_flop_bets=", value("ip_flop_bet_sizes")},
        {"ip_flop_raises=", value("ip_flop_raise_sizes")},
        {"oop_jam_thr_en=", value("oop_add_all_in_jam_threshold_enabled")},
        {"oop_jam_thr_pct=", value("oop_add_all_in_jam_threshold_pct")},
        {"ip_jam_thr_en=", value("ip_add_all_in_jam_threshold_enabled")},
        {"ip_jam_thr_pct=", value("ip_add_all_in_jam_threshold_pct")}};
    QString line = QStringLiteral("UI startSolveWithConfig:");
    for (const auto& [name, text] : parts) {
        line += ' ' + QString(name) + text;
    }
    qInfo().noquote() << line;
}

void logProgress(const kestrel_app::SolveProgress& report) {
    qInfo().noquote() << "UI solve progress: p=" + QString::number(report.fraction) +
                             " status=" + QString::fromStdString(report.status) +
                             " has_result=" + (report.result ? "true" : "false");
}

void logResult(const SolveResults& results) {
    qInfo().noquote() << "UI about to emit resultsChanged: root_actions=" +
                             QString::number(results.rootActions.size()) +
                             " summary.len=" + QString::number(results.summary.size());
}

}  // namespace tidewell
