#include "cli/solve_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <new>
#include <string>

#include "session/config_map.h"
#include "session/memory_info.h"
#include "session/presets.h"

namespace tidewell_cli {
namespace {

kestrel_app::SolveConfig quick_config() {
    return kestrel_app::config_from_map(kestrel_app::quick_solve_preset());
}

const IterationCallback ignored = [](std::uint32_t, double, bool) {};

TEST(SolveRun, FailuresLeaveAsExceptions) {
    InterruptGuard interrupt;
    auto config = quick_config();
    config.board = "AdJd";
    try {
        run_solve(config, interrupt, ignored);
        ADD_FAILURE() << "solved without a flop";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), testing::StartsWith("Board must include at least a flop"));
    }

    // Room for the tree, but not for the states.
    constexpr std::uint64_t most_bytes = std::uint64_t{400} << 20;
    const kestrel_app::AllocationLimit limit(most_bytes);
    EXPECT_THROW(run_solve(quick_config(), interrupt, ignored), std::bad_alloc);
}

TEST(SolveRun, CtrlCEndsItBehindTheIteration) {
    InterruptGuard interrupt;
    auto config = quick_config();
    config.board = "AdJd8s5c2h";
    config.starting_street = "river";
    config.target_exploitability = 0;
    const IterationCallback on_iteration = [](std::uint32_t iteration, double, bool) {
        if (iteration == 3) {
            raise(SIGINT);
        }
    };
    try {
        run_solve(config, interrupt, on_iteration);
        ADD_FAILURE() << "solved to the end";
    } catch (const Interrupted& error) {
        EXPECT_STREQ(error.what(), "interrupted after 3 iterations");
    }
}

}  // namespace
}  // namespace tidewell_cli
