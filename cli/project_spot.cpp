#include "cli/project_spot.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "app/config_map.h"
#include "app/files/project_file.h"
#include "cli/input_error.h"
#include "cli/project_state.h"
#include "cli/spot_file.h"
#include "engine/poker/text.h"

namespace tidewell_cli {
namespace {

using kestrel_app::ConfigMap;
using kestrel_app::NodeLockEntry;

tidewell::ProjectData read_project(const std::string& path) {
    if (std::error_code error; !std::filesystem::exists(path, error)) {
        throw InputError("cannot open " + path + (error ? ": " + error.message() : ""));
    }
    // Qt takes names with a colon in front for something else.
    const std::string absolute = std::filesystem::absolute(path).string();
    tidewell::ReadProject read = tidewell::readProject(QString::fromStdString(absolute), nullptr);
    if (!read.error.isEmpty()) {
        const std::string place =
            read.invalidAt == 0 ? "" : " at byte " + std::to_string(read.invalidAt);
        const std::string damage = read.damage.isEmpty() ? "" : ": " + read.damage.toStdString();
        throw InputError(path + ": " + read.error.toStdString() + place + damage);
    }
    return std::move(read.data);
}

/// As they stand there, unusable ones included, which fit no tree.
std::vector<NodeLockEntry> lock_entries(const QVariantList& locks) {
    std::vector<NodeLockEntry> entries;
    for (const QVariant& element : locks) {
        const QVariantMap lock = element.toMap();
        NodeLockEntry entry;
        entry.node_index = static_cast<std::uint64_t>(lock.value("nodeIndex", -1).toInt());
        entry.hand = lock.value("hand").toString().toStdString();
        for (const QVariant& prob : lock.value("actionProbs").toList()) {
            entry.probs.push_back(prob.toFloat());
        }
        if (!lock.contains("actionProbs")) {
            entry.action_index = lock.value("actionIndex", -1).toInt();
            entry.action_prob = lock.value("actionProb", 1.0).toFloat();
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

/// Whether two sets of settings describe one spot, however long and on how much of a machine it is
/// solved. The pages round a rake cap.
bool same_spot(const ConfigMap& pages, const ConfigMap& solved) {
    const kestrel_app::SolveConfig a = kestrel_app::config_from_map(pages);
    kestrel_app::SolveConfig b = kestrel_app::config_from_map(solved);
    b.starting_street = a.starting_street;
    b.max_iterations = a.max_iterations;
    b.target_exploitability = a.target_exploitability;
    b.thread_count = a.thread_count;
    b.rake_cap = 100.0 * page_rake_cap(b.rake_cap / 100.0);
    return a == b;
}

}  // namespace

bool is_project(const std::string& path) {
    if (kestrel::lower_case(path).ends_with(".tidewellproj")) {
        return true;
    }
    std::array<char, 256> head{};
    if (std::error_code ignored; std::filesystem::is_regular_file(path, ignored)) {
        std::ifstream(path, std::ios::binary).read(head.data(), head.size());
    }
    const std::string_view text(head.data(), head.size());
    return text.find("\"format\"") != text.npos && text.find("\"kestrel_project\"") != text.npos;
}

ProjectSpot read_project_spot(const std::string& path, std::vector<std::string>& warnings) {
    const tidewell::ProjectData data = read_project(path);
    const ConfigMap pages = settings_of_pages(data.project);
    const ConfigMap solved = tidewell::configMapOf(data.lastUiCfg);
    if (pages.empty() && solved.empty()) {
        throw InputError(path + ": the project holds no spot");
    }
    const auto warn = [&](const std::string& text) { warnings.push_back(path + ": " + text); };
    ProjectSpot spot;
    spot.settings = check_project_settings(solved.empty() ? pages : solved, path, warnings);
    spot.settings.erase("apply_node_locks");
    if (!solved.empty()) {
        if (!pages.empty() && !same_spot(pages, solved)) {
            warn("its pages show another spot than its last solve, which is the one solved");
        }
        if (data.lastUiCfg.value("apply_node_locks").toBool()) {
            spot.locks = lock_entries(data.nodeLocks);
        }
    }
    if (spot.locks.empty() && !data.nodeLocks.isEmpty()) {
        warn("its node locks (" + std::to_string(data.nodeLocks.size()) +
             ") are ignored, as its last solve was made without them");
    }
    return spot;
}

}  // namespace tidewell_cli
