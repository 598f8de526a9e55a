#include "cli/report_json.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "cli/input_error.h"

namespace tidewell_cli {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

Json node_json(const NodeReport& node) {
    Json actions = Json::array();
    for (const ActionReport& action : node.actions) {
        actions.push_back({{"name", action.name},
                           {"type", action.type},
                           {"frequency", action.frequency},
                           {"child", action.child}});
    }
    Json combos = Json::array();
    for (const ComboReport& combo : node.combos) {
        combos.push_back({{"combo", kestrel::card_to_string(combo.pocket.low) +
                                        kestrel::card_to_string(combo.pocket.high)},
                          {"weight", combo.weight},
                          {"probs", combo.probs}});
    }
    return {{"index", node.index},
            {"player", node.player},
            {"pot", node.pot / 100.0},
            {"actions", std::move(actions)},
            {"combos", std::move(combos)}};
}

}  // namespace

std::string json_text(const SolveReport& report) {
    Json trace = Json::array();
    for (const TracePoint& point : report.trace) {
        trace.push_back(
            {{"iteration", point.iteration}, {"exploitability", point.exploitability / 100.0}});
    }
    const PhaseSeconds& seconds = report.seconds;
    const Json result = {
        {"board", report.config.board},
        {"starting_pot", report.config.starting_pot / 100.0},
        {"effective_stack", report.config.effective_stack / 100.0},
        {"iterations", report.iterations},
        {"exploitability", report.exploitability / 100.0},
        {"exploitability_pct", report.exploitability_percent()},
        {"ev_oop", report.ev[0] / 100.0},
        {"ev_ip", report.ev[1] / 100.0},
        {"nodes", report.estimate.node_count},
        {"decision_nodes", report.estimate.decision_node_count},
        {"hands_oop", report.estimate.oop_hand_count},
        {"hands_ip", report.estimate.ip_hand_count},
        {"estimate_bytes", report.estimate.total_bytes},
        {"peak_rss_bytes", report.peak_resident_bytes},
        {"seconds",
         {{"card_context", seconds.card_context},
          {"tree", seconds.tree},
          {"prepare", seconds.prepare},
          {"solve", seconds.solve},
          {"total", seconds.total}}},
        {"iteration_ms", report.iteration_ms},
        {"trace", std::move(trace)},
        {"node", node_json(report.node)},
    };
    return result.dump(2) + "\n";
}

void check_writable(const std::string& path) {
    if (path == "-") {
        return;
    }
    std::error_code ignored;
    const fs::path file(path);
    const bool exists = fs::exists(file, ignored);
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    if (fs::is_directory(file, ignored) || access((exists ? file : folder).c_str(), W_OK) != 0) {
        throw InputError("cannot write " + path);
    }
}

void write_json(const SolveReport& report, const std::string& path) {
    const std::string text = json_text(report);
    if (path == "-") {
        std::cout << text << std::flush;
        return;
    }
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text << std::flush;
    if (!file) {
        throw std::runtime_error("cannot write " + path);
    }
}

}  // namespace tidewell_cli
