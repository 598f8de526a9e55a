// How long the event loop stands still: at the end of a solve of the quick-solve spot, from the
// last iteration on; while a project is saved and loaded, one of a million nodes, one of few nodes
// with large answers, and one whose root nobody has asked about; and where an old solve is given
// up.

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <functional>
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

QVariantMap quickSolve(int iterations) {
    QVariantMap cfg = tidewell::variantMapOf(kestrel_app::quick_solve_preset());
    cfg["max_iterations"] = iterations;
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
        controller.startSolveWithConfig(quickSolve(3));
        QObject::connect(&controller, &AppController::runningChanged, &loop, &QEventLoop::quit);
        loop.exec();
        QTimer::singleShot(100, &loop, &QEventLoop::quit);
        loop.exec();
        longest = std::max(longest, pauses.longestMilliseconds());
    }
    state.counters["longest_pause_ms"] = longest;
}
BENCHMARK(BM_EndOfSolve)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

/// Starts a solve and handles events until it has ended.
void solve(AppController& controller, const QVariantMap& cfg) {
    QEventLoop loop;
    QObject::connect(&controller, &AppController::runningChanged, &loop, [&] {
        if (!controller.running()) {
            loop.quit();
        }
    });
    controller.startSolveWithConfig(cfg);
    loop.exec();
}

void handleEvents(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Loads a project and saves it again.
void measureLoadAndSave(benchmark::State& state, const tidewell::ProjectData& data) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("measured.tidewellproj");
    tidewell::writeProject(path, data, nullptr);
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

void BM_EventsDuringLoadAndSave(benchmark::State& state) {
    measureLoadAndSave(state, bench::large_project());
}
BENCHMARK(BM_EventsDuringLoadAndSave)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

/// Few nodes, each with the answer about a thousand hands.
void BM_SmallTreeWithLargeAnswers(benchmark::State& state) {
    constexpr int nodes = 40;
    constexpr int hands = 1000;
    kestrel_app::NodeRecord record;
    record.combos = std::make_shared<const std::vector<kestrel_app::HandCombo>>(
        hands, kestrel_app::HandCombo{.c1 = "Ah",
                                      .c2 = "Kh",
                                      .weight = 0.5,
                                      .ev = 1 / 7.0,
                                      .action_evs = {1 / 3.0, 1 / 9.0, 0.25},
                                      .action_probs = {0.25, 0.1, 0.65},
                                      .buckets = {"top pair", "flush draw"}});
    tidewell::ProjectData data;
    data.hasResults = true;
    data.results.iterations = 1;
    for (int node = 0; node < nodes; ++node) {
        data.records.insert({node, record});
    }
    measureLoadAndSave(state, data);
}
BENCHMARK(BM_SmallTreeWithLargeAnswers)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->UseRealTime();

/// No page has looked at the root yet, so that the save asks for its answers.
void BM_SaveAsksAboutTheRoot(benchmark::State& state) {
    const QTemporaryDir folder;
    AppController controller;
    double longest = 0;
    for (auto _ : state) {
        state.PauseTiming();
        solve(controller, quickSolve(1));
        state.ResumeTiming();
        PauseMeter saving(true);
        if (!controller.saveProject(QUrl::fromLocalFile(folder.filePath("a.tidewellproj")), {})) {
            state.SkipWithError("not saved");
            return;
        }
        longest = std::max(longest, saving.longestMilliseconds());
    }
    state.counters["longest_pause_ms"] = longest;
}
BENCHMARK(BM_SaveAsksAboutTheRoot)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

/// A solve of the quick-solve spot makes room: for the next solve, for nothing, for a project.
void BM_OldSolveIsGivenUp(benchmark::State& state) {
    const QTemporaryDir folder;
    const QUrl empty = QUrl::fromLocalFile(folder.filePath("empty.tidewellproj"));
    tidewell::writeProject(empty.toLocalFile(), {}, nullptr);
    QVariantMap small = quickSolve(1);
    small["board"] = "AdJd8s2c3h";
    small["starting_street"] = "river";
    AppController controller;
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"longest_pause_start_ms", [&] { solve(controller, small); }},
        {"longest_pause_clear_ms", [&] { controller.clearResults(); }},
        {"longest_pause_load_ms", [&] { controller.loadProject(empty); }}};
    for (auto _ : state) {
        for (const auto& [counter, giveUp] : ways) {
            solve(controller, quickSolve(1));
            PauseMeter pauses(true);
            giveUp();
            handleEvents(500);
            state.counters[counter] =
                std::max<double>(state.counters[counter], pauses.longestMilliseconds());
        }
    }
}
BENCHMARK(BM_OldSolveIsGivenUp)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

}  // namespace
