#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <memory>
#include <regex>
#include <string>
#include <string_view>

#include "tests/engine/support.h"

namespace kestrel {
namespace {

// The switch is read once per process, so the runs to profile are made in one of their own.
constexpr const char* child_variable = "TIDEWELL_TEST_PROFILED_RUN";

/// What a process with this setting writes: a batched and a plain run of one spot.
std::string output_of_runs(const char* setting) {
    const ScopedVariable child(child_variable, "1");
    const ScopedVariable profile("KESTREL_PROFILE", setting);
    std::string command = std::filesystem::read_symlink("/proc/self/exe").string();
    command.insert(0, 1, '\'').append("' --gtest_filter=Profile.* 2>&1");
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string text;
    for (int c = 0; pipe && (c = std::fgetc(pipe.get())) != EOF;)
        text += static_cast<char>(c);
    return text;
}

constexpr std::string_view block = R"(
[KESTREL_PROFILE] DiscountedCfr::run summary
  iterations_completed=3  max_iterations=3  threads=1  exploitability_interval=0
  total_run_ms=T  max_thread_ms=T
  solve_iteration: calls=N  total_ms=T  max_thread_ms=T
  exploitability:  calls=N  total_ms=T  max_thread_ms=T  (mes_ev_ms=T, current_ev_ms=T)
  terminal_eval:   calls=N  total_ms=T  max_thread_ms=T
    fold:          calls=N  total_ms=T  max_thread_ms=T
    showdown_u:    calls=N  total_ms=T  max_thread_ms=T
    showdown_r:    calls=N  total_ms=T  max_thread_ms=T
    incomplete:    calls=N  total_ms=T  max_thread_ms=T
  kernels (flat arrays):
    regret_matching:     calls=N  total_ms=T  max_thread_ms=T
    update_regrets:      calls=N  total_ms=T  max_thread_ms=T
    fma_actions:         calls=N  total_ms=T  max_thread_ms=T
    strategy_sum_update: calls=N  total_ms=T  max_thread_ms=T
    sum_rows_into:       calls=N  total_ms=T  max_thread_ms=T
  chance_aggregate_reuse: calls=N  total_ms=T  max_thread_ms=T

)";

TEST(Profile, PrintsTheTimersOfARun) {
    if (std::getenv(child_variable) != nullptr) {
        Spot spot{.board = "Td9d6h6c", .oop = "TT,87s", .ip = "99,AJs"};
        spot.turn = spot.river = both("50%,a", "a");
        CfrOptions options = iterations(3);
        const Solved batched(spot, options);
        options.plain_walk = true;
        const Solved plain(spot, options);
        return;
    }
    const std::string text = output_of_runs("1");
    std::string figureless = std::regex_replace(text, std::regex(R"(\d+\.\d{3})"), "T");
    figureless = std::regex_replace(figureless, std::regex(R"(calls=\d+)"), "calls=N");
    EXPECT_NE(figureless.find(std::string(block).append(block)), std::string::npos) << text;
    for (const char* slot : {"solve_iteration", "exploitability", "terminal_eval", "fold",
                             "incomplete", "regret_matching", "update_regrets"}) {
        const std::regex line(std::string(slot).append(R"(: +calls=(\d+))"));
        const std::sregex_iterator batched(text.begin(), text.end(), line);
        ASSERT_EQ(std::distance(batched, {}), 2) << slot;
        EXPECT_EQ(batched->str(1), std::next(batched)->str(1)) << slot;
        EXPECT_NE(batched->str(1), "0") << slot;
    }
    for (const char* off : {"", "0"}) {
        const std::string silent = output_of_runs(off);
        EXPECT_EQ(silent.find("KESTREL_PROFILE]"), std::string::npos);
        EXPECT_NE(silent.find("[  PASSED  ] 1 test."), std::string::npos) << silent;
    }
}

}  // namespace
}  // namespace kestrel
