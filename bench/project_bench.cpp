// Saving and loading the project of a spot with a million nodes: time, size of the file, and the
// memory that it takes beside the records of the tree. And what a walk over a thousand nodes of the
// quick-solve spot leaves behind, in memory and in the project.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QFileInfo>
#include <QTemporaryDir>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "app/files/project_file.h"
#include "app/results/node_answers.h"
#include "bench/large_project.h"
#include "session/config_map.h"
#include "session/presets.h"
#include "session/solve_session.h"

namespace {

constexpr double megabyte = 1e6;

/// The resident memory of the process, and how far it has gone beyond since the start.
class PeakMemory {
  public:
    PeakMemory() {
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << 5;  // the high-water mark begins anew
        start_ = status("VmRSS:");
    }

    double grownMegabytes() const { return (status("VmHWM:") - start_) / megabyte; }

    /// Without what was needed only on the way.
    double keptMegabytes() const {
        malloc_trim(0);
        return (status("VmRSS:") - start_) / megabyte;
    }

  private:
    static double status(const std::string& key) {
        std::ifstream file("/proc/self/status");
        double kibibytes = 0;
        for (std::string word; file >> word;) {
            if (word == key) {
                file >> kibibytes;
            }
        }
        return kibibytes * 1024;
    }

    double start_ = 0;  // bytes
};

void tell(benchmark::State& state, const QString& path, double peakMegabytes) {
    const auto nodes = static_cast<double>(bench::large_project().results.tree.nodeCount());
    const auto bytes = static_cast<double>(QFileInfo(path).size());
    state.counters["nodes"] = nodes;
    state.counters["bytes_per_node"] = bytes / nodes;
    state.counters["peak_MB"] = peakMegabytes;
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
}

void BM_SaveProject(benchmark::State& state) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("million.tidewellproj");
    const tidewell::ProjectData& data = bench::large_project();
    const PeakMemory memory;
    for (auto _ : state) {
        if (!tidewell::writeProject(path, data, nullptr).isEmpty()) {
            state.SkipWithError("not written");
            return;
        }
    }
    tell(state, path, memory.grownMegabytes());
}
BENCHMARK(BM_SaveProject)->Unit(benchmark::kMillisecond)->Iterations(1);

/// The peak holds the records that were read.
void BM_LoadProject(benchmark::State& state) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("million.tidewellproj");
    tidewell::writeProject(path, bench::large_project(), nullptr);
    const PeakMemory memory;
    for (auto _ : state) {
        const tidewell::ReadProject read = tidewell::readProject(path, nullptr);
        if (read.data.results.tree.nodeCount() != bench::large_project().results.tree.nodeCount()) {
            state.SkipWithError("not read");
            return;
        }
    }
    tell(state, path, memory.grownMegabytes());
}
BENCHMARK(BM_LoadProject)->Unit(benchmark::kMillisecond)->Iterations(1);

/// Asks all that the results page asks of a node that it shows.
void BM_WalkOverThousandNodes(benchmark::State& state) {
    constexpr int visits = 1000;
    kestrel_app::SolveConfig config =
        kestrel_app::config_from_map(kestrel_app::quick_solve_preset());
    config.max_iterations = 3;
    kestrel_app::SolveResult result;
    kestrel_app::SolveSession session;
    session.start(config, [&](const kestrel_app::SolveProgress& report) {
        if (report.result) {
            result = *report.result;
        }
    });
    while (session.isRunning()) {
        std::this_thread::yield();
    }
    std::vector<int> decisions;
    for (std::size_t node = 0; node < result.nodes->size(); ++node) {
        if (result.nodes->node(node).node_type == "decision") {
            decisions.push_back(static_cast<int>(node));
        }
    }
    session.finished()->parents();
    tidewell::ProjectData data;
    data.hasResults = true;
    data.results.tree = {result.nodes, 0.0};
    const QTemporaryDir folder;
    const QString bare = folder.filePath("bare");
    tidewell::writeProject(bare, data, nullptr);
    for (auto _ : state) {
        const PeakMemory memory;
        tidewell::NodeAnswers answers(session);
        for (int i = 0; i < visits; ++i) {
            const int node = decisions[decisions.size() * static_cast<std::size_t>(i) / visits];
            benchmark::DoNotOptimize(answers.actionStats(node));
            benchmark::DoNotOptimize(answers.handStrategyReach169(node, ""));
        }
        state.counters["memory_MB"] = memory.keptMegabytes();
        data.records = answers.records();
        const QString walked = folder.filePath("walked");
        tidewell::writeProject(walked, data, nullptr);
        state.counters["file_MB"] =
            static_cast<double>(QFileInfo(walked).size() - QFileInfo(bare).size()) / megabyte;
    }
}
BENCHMARK(BM_WalkOverThousandNodes)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
