// How long the event loop stands still: at the end of a solve of the quick-solve spot, from the
// last iteration on, and while a project of a million nodes is saved and loaded.

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <thread>

#include "app/app_controller.h"
#include "app/config_map.h"
#include "bench/large_project.h"
#include "session/presets.h"

namespace {

/// The longest time between two turns of the event loop while it counts.
class PauseMeter {
  public:
    explicit PauseMeter(bool counts) : counts_(counts) {
        QObject::connect(&ticks_, &QTimer::timeout, &ticks_, [this] { turn(); });
        ticks_.start(0);
        sinceTurn_.start();
    }

    void count() { counts_ = true; }

    double longestMilliseconds() {
        turn();
        return longest_;
    }

  private:
    void turn() {
        if (counts_) {
            longest_ = std::max(longest_, static_cast<double>(sinceTurn_.nsecsElapsed()) / 1e6);
        }
        sinceTurn_.start();
    }

    bool counts_;
    QTimer ticks_;
    QElapsedTimer sinceTurn_;
    double longest_ = 0;
};

QVariantMap quickSolve() {
    QVariantMap cfg = tidewell::variantMapOf(kestrel_app::quick_solve_preset());
    cfg["max_iterations"] = 3;
    cfg["thread_count"] = std::max(1U, std::thread::hardware_concurrency());
    return cfg;
}

void BM_EndOfSolve(benchmark::State& state) {
    double longest = 0;
    for (auto _ : state) {
        AppController controller;
        PauseMeter pauses(false);
        QObject::connect(&controller, &AppController::statusTextChanged, &controller, [&] {
            if (controller.statusText().startsWith("Final")) {
                pauses.count();
            }
        });
        QEventLoop loop;
        controller.startSolveWithConfig(quickSolve());
        QObject::connect(&controller, &AppController::runningChanged, &loop, &QEventLoop::quit);
        loop.exec();
        QTimer::singleShot(100, &loop, &QEventLoop::quit);
        loop.exec();
        longest = std::max(longest, pauses.longestMilliseconds());
    }
    state.counters["longest_pause_ms"] = longest;
}
BENCHMARK(BM_EndOfSolve)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

void BM_EventsDuringLoadAndSave(benchmark::State& state) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("million.tidewellproj");
    tidewell::writeProject(path, bench::large_project(), nullptr);
    const QUrl url = QUrl::fromLocalFile(path);
    for (auto _ : state) {
        AppController controller;
        PauseMeter loading(true);
        if (!controller.loadProject(url)["ok"].toBool()) {
            state.SkipWithError("not loaded");
            return;
        }
        state.counters["longest_pause_loading_ms"] = loading.longestMilliseconds();
        PauseMeter saving(true);
        if (!controller.saveProject(url, {})) {
            state.SkipWithError("not saved");
            return;
        }
        state.counters["longest_pause_saving_ms"] = saving.longestMilliseconds();
    }
}
BENCHMARK(BM_EventsDuringLoadAndSave)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

}  // namespace
