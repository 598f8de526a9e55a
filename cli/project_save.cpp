#include "cli/project_save.h"

#include "app/config_map.h"
#include "app/files/project_file.h"
#include "app/results/node_answers.h"
#include "app/results/node_lock_store.h"
#include "cli/format.h"
#include "cli/output_file.h"
#include "cli/project_state.h"

namespace tidewell_cli {

std::vector<std::string> save_warnings(const kestrel_app::ConfigMap& settings) {
    const auto given = settings.find("rake_cap");
    const double cap = given == settings.end() ? 0.0 : kestrel_app::to_double(given->second);
    const double shown = page_rake_cap(cap);
    if (shown == cap) {
        return {};
    }
    return {"the desktop program's pages take whole chips: they will show a rake cap of " +
            decimal(shown, 0) + ", not " + decimal(cap, 2)};
}

void save_project(const std::string& path, const SolvedProject& project) {
    kestrel_app::ConfigMap settings = settings_for_pages(project.settings);
    tidewell::ProjectData data;
    data.project = page_state(settings);
    settings["apply_node_locks"] = !project.locks.empty();
    data.lastUiCfg = tidewell::variantMapOf(settings);
    data.hasResults = true;
    data.results = tidewell::resultsOf(project.run.result);
    tidewell::NodeAnswers answers(*project.run.session);
    answers.keep(0);
    answers.keep(static_cast<int>(project.node));
    data.records = answers.records();
    tidewell::NodeLockStore locks;
    for (const kestrel_app::NodeLockEntry& lock : project.locks) {
        locks.add(lock);
    }
    data.nodeLocks = locks.all();

    replace_file(path, [&](const Write& write) {
        if (!tidewell::writeProjectText(write, data, nullptr)) {
            throw WriteFailed("cannot write " + path + ": its settings are nested too deeply");
        }
    });
}

}  // namespace tidewell_cli
