#include "cli/solve_task.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "cli/project_spot.h"
#include "cli/spot_file.h"
#include "session/presets.h"

namespace tidewell_cli {
namespace {

using kestrel_app::ConfigMap;

SolveTask task_as_given(const std::string& path, std::vector<std::string>& warnings) {
    if (path.empty()) {
        return {kestrel_app::quick_solve_preset(), {}};
    }
    if (path == "-" || !is_project(path)) {
        return {read_spot_file(path, warnings), {}};
    }
    ProjectSpot project = read_project_spot(path, warnings);
    // Threads are those of the machine that it was saved on.
    if (const auto threads = project.settings.find("thread_count");
        threads != project.settings.end()) {
        threads->second =
            std::min(kestrel_app::to_double(threads->second), static_cast<double>(all_threads()));
    }
    return {std::move(project.settings), std::move(project.locks)};
}

}  // namespace

std::size_t all_threads() {
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, max_threads);
}

SolveTask read_task(const Options& options, std::vector<std::string>& warnings) {
    SolveTask task = task_as_given(options.spot_path, warnings);
    ConfigMap& settings = task.settings;
    settings.try_emplace("thread_count", static_cast<double>(all_threads()));
    if (options.threads) {
        settings["thread_count"] = static_cast<double>(*options.threads);
    }
    if (options.iterations) {
        settings["max_iterations"] = static_cast<double>(*options.iterations);
    }
    if (options.exact_all_in) {
        settings["exact_all_in"] = true;
    }
    if (options.target_percent) {
        const double pot = kestrel_app::config_from_map(settings).starting_pot / 100.0;
        settings["target_exploitability"] = pot * *options.target_percent / 100.0;
    }
    return task;
}

kestrel_app::SolveConfig config_of(const SolveTask& task) {
    kestrel_app::SolveConfig config = kestrel_app::config_from_map(task.settings);
    config.node_locks = task.locks;
    return config;
}

}  // namespace tidewell_cli
