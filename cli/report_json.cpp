#include "cli/report_json.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "cli/output_file.h"
#include "engine/poker/cards.h"

namespace tidewell_cli {
namespace {

using Json = nlohmann::ordered_json;

Json actions_json(const SolveReport& report) {
    Json actions = Json::array();
    for (std::size_t a = 0; a < report.node.actions.size(); ++a) {
        const ActionReport& action = report.node.actions[a];
        Json entry = {{"name", action.name},
                      {"type", action.type},
                      {"frequency", action.frequency},
                      {"child", action.child}};
        if (report.stats) {
            entry["combos"] = report.stats->combos[a];
            entry["equity"] = report.stats->equity[a];  // NaN becomes null
            entry["ev"] = report.stats->ev[a] / 100.0;
        }
        if (report.here) {
            entry["here"] = {{"combos", report.here->combos[a]},
                             {"frequency", report.here->frequencies[a]},
                             {"equity", report.here->equity[a]},
                             {"ev", report.here->ev[a] / 100.0}};
        }
        actions.push_back(std::move(entry));
    }
    return actions;
}

/// The combos by rising cards.
Json combos_json(const NodeReport& node) {
    std::vector<const kestrel_app::HandCombo*> sorted;
    for (const kestrel_app::HandCombo& combo : node.combos) {
        sorted.push_back(&combo);
    }
    std::ranges::sort(sorted, {}, [](const kestrel_app::HandCombo* combo) {
        return kestrel::pocket_index(kestrel::parse_card(combo->c1),
                                     kestrel::parse_card(combo->c2));
    });
    Json combos = Json::array();
    for (const kestrel_app::HandCombo* combo : sorted) {
        combos.push_back({{"combo", combo->c1 + combo->c2},
                          {"weight", combo->weight},
                          {"probs", combo->action_probs}});
    }
    return combos;
}

Json parts_json(const std::vector<kestrel_app::FollowUp>& parts) {
    Json list = Json::array();
    for (const kestrel_app::FollowUp& part : parts) {
        list.push_back({{"name", part.name},
                        {"type", part.type},
                        {"probability", part.probability},
                        {"ev", part.ev / 100.0},  // NaN becomes null
                        {"follows", word_of(part.follows)},
                        {"parts", parts_json(part.parts)}});
    }
    return list;
}

Json why_json(const SolveReport& report) {
    Json actions = Json::array();
    for (std::size_t a = 0; a < report.why->breakdowns.size(); ++a) {
        const kestrel_app::ActionBreakdown& action = report.why->breakdowns[a];
        actions.push_back({{"name", report.node.actions[a].name},
                           {"type", report.node.actions[a].type},
                           {"ev", action.ev / 100.0},
                           {"follows", word_of(action.follows)},
                           {"parts", parts_json(action.parts)}});
    }
    return {{"hand", report.why->hand}, {"actions", std::move(actions)}};
}

Json node_json(const SolveReport& report) {
    Json node = {{"index", report.node.index},
                 {"player", report.node.player},
                 {"pot", report.node.pot / 100.0},
                 {"actions", actions_json(report)},
                 {"combos", combos_json(report.node)}};
    if (report.why) {
        node["why"] = why_json(report);
    }
    return node;
}

Json trace_json(const SolveReport& report) {
    Json trace = Json::array();
    for (const TracePoint& point : report.trace) {
        trace.push_back(
            {{"iteration", point.iteration}, {"exploitability", point.exploitability / 100.0}});
    }
    return trace;
}

/// How far a solve came and what it found, as in the top level of a result.
void add_figures(Json& object, const kestrel_app::SolveResult& result) {
    object["iterations"] = result.iterations;
    object["exploitability"] = static_cast<double>(result.exploitability) / 100.0;
    object["exploitability_pct"] = exploitability_percent(result);
    object["ev_oop"] = static_cast<double>(result.ev_oop) / 100.0;
    object["ev_ip"] = static_cast<double>(result.ev_ip) / 100.0;
}

void add_locks(Json& object, const SolveReport& report) {
    if (!report.before_locks) {
        return;
    }
    Json locks = Json::array();
    for (const Lock& lock : report.locks) {
        locks.push_back({{"line", lock.line}, {"hand", lock.hand}, {"probs", lock.probs}});
    }
    object["locks"] = std::move(locks);
    add_figures(object["before_locks"], *report.before_locks);
}

}  // namespace

std::string json_text(const SolveReport& report) {
    const PhaseSeconds& seconds = report.seconds;
    Json result = {{"board", report.config.board},
                   {"starting_pot", report.config.starting_pot / 100.0},
                   {"effective_stack", report.config.effective_stack / 100.0}};
    add_figures(result, report.result);
    result["nodes"] = report.estimate.node_count;
    result["decision_nodes"] = report.estimate.decision_node_count;
    result["hands_oop"] = report.estimate.oop_hand_count;
    result["hands_ip"] = report.estimate.ip_hand_count;
    result["estimate_bytes"] = report.estimate.total_bytes;
    result["peak_rss_bytes"] = report.peak_resident_bytes;
    result["seconds"] = {{"card_context", seconds.card_context},
                         {"tree", seconds.tree},
                         {"prepare", seconds.prepare},
                         {"solve", seconds.solve},
                         {"total", seconds.total}};
    result["iteration_ms"] = report.iteration_ms;
    result["trace"] = trace_json(report);
    add_locks(result, report);
    result["node"] = node_json(report);
    return result.dump(2) + "\n";
}

void write_json(const SolveReport& report, const std::string& path) {
    const std::string text = json_text(report);
    if (path == "-") {
        std::cout << text << std::flush;
    } else if (is_replaced(path)) {
        replace_file(path, [&](const Write& write) { write(text); });
    } else if (std::ofstream stream(path, std::ios::binary); !(stream << text << std::flush)) {
        throw WriteFailed("cannot write " + path);
    }
}

}  // namespace tidewell_cli
