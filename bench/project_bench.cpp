// Saving and loading the project of a spot with a million nodes: time, size of the file, and the
// memory that it takes beside the records of the tree.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QFileInfo>
#include <QTemporaryDir>
#include <fstream>
#include <string>

#include "app/files/project_file.h"
#include "bench/large_project.h"

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

}  // namespace
