#include "cli/solve_report.h"

#include <utility>

namespace tidewell_cli {

NodeReport report_node(const SolveRun& run, const NodePath& path) {
    const kestrel::Game& game = *run.finished->game;
    const kestrel_app::SolveNodeMeta meta = run.result.nodes->node(path.node);
    NodeReport report;
    report.index = path.node;
    report.line = line_of(game, path);
    report.player = meta.player;
    report.pot = meta.pot;
    report.street = game.nodes[path.node].street;
    for (const kestrel_app::SolveActionInfo& action : run.result.nodes->actions(path.node)) {
        report.actions.push_back({std::string(action.name), std::string(action.action_type),
                                  static_cast<double>(action.frequency), action.child_index});
    }
    if (auto combos = kestrel_app::hand_combos(*run.finished, path.node)) {
        report.combos = std::move(*combos);
    }
    return report;
}

SolveReport report_solve(const BuiltSpot& spot, const SolveRun& run, const NodePath& path) {
    SolveReport report;
    report.config = spot.config;
    report.estimate = spot.estimate;
    report.result = run.result;
    report.iteration_ms = run.iteration_ms;
    report.trace = run.trace;
    report.seconds = spot.seconds;
    report.seconds.prepare = run.prepare_seconds;
    report.seconds.solve = run.solve_seconds;
    report.node = report_node(run, path);
    return report;
}

double exploitability_percent(const kestrel_app::SolveResult& result) {
    return 100.0 * static_cast<double>(result.exploitability) / result.starting_pot;
}

}  // namespace tidewell_cli
