#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
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

/// The text with # for each whole number and for each decimal.
std::string without_figures(std::string_view text) {
    std::string result;
    bool decimals = false;
    for (const char c : text) {
        const bool digit = c >= '0' && c <= '9';
        if (!digit || decimals || !result.ends_with('#')) result += digit ? '#' : c;
        decimals = c == '.' || (digit && decimals);
    }
    return result;
}

constexpr std::string_view block = R"(
[KESTREL_PROFILE] DiscountedCfr::run summary
  iterations_completed=#  max_iterations=#  threads=#  exploitability_interval=#
  total_run_ms=#.###  max_thread_ms=#.###
  solve_iteration: calls=#  total_ms=#.###  max_thread_ms=#.###
  exploitability:  calls=#  total_ms=#.###  max_thread_ms=#.###  (mes_ev_ms=#.###, current_ev_ms=#.###)
  terminal_eval:   calls=#  total_ms=#.###  max_thread_ms=#.###
    fold:          calls=#  total_ms=#.###  max_thread_ms=#.###
    showdown_u:    calls=#  total_ms=#.###  max_thread_ms=#.###
    showdown_r:    calls=#  total_ms=#.###  max_thread_ms=#.###
    incomplete:    calls=#  total_ms=#.###  max_thread_ms=#.###
  kernels (flat arrays):
    regret_matching:     calls=#  total_ms=#.###  max_thread_ms=#.###
    update_regrets:      calls=#  total_ms=#.###  max_thread_ms=#.###
    fma_actions:         calls=#  total_ms=#.###  max_thread_ms=#.###
    strategy_sum_update: calls=#  total_ms=#.###  max_thread_ms=#.###
    sum_rows_into:       calls=#  total_ms=#.###  max_thread_ms=#.###
  chance_aggregate_reuse: calls=#  total_ms=#.###  max_thread_ms=#.###

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
    const std::size_t end_of_first = text.find("chance_aggregate_reuse");
    EXPECT_NE(without_figures(text).find(std::string(block).append(block)), std::string::npos);
    EXPECT_NE(text.find("iterations_completed=3  max_iterations=3  threads=1"), std::string::npos);
    for (const char* slot : {"solve_iteration:", "exploitability:", "terminal_eval:", "fold:",
                             "incomplete:", "regret_matching:", "update_regrets:"}) {
        const auto calls = [&](std::size_t from) {
            const std::size_t at = text.find("calls=", text.find(slot, from));
            return text.substr(at, text.find(' ', at) - at);
        };
        EXPECT_EQ(calls(0), calls(end_of_first)) << slot;
        EXPECT_NE(calls(0), "calls=0") << slot;
    }
    for (const char* off : {"", "0"}) {
        const std::string silent = output_of_runs(off);
        EXPECT_EQ(silent.find("KESTREL_PROFILE]"), std::string::npos);
        EXPECT_NE(silent.find("[  PASSED  ] 1 test."), std::string::npos) << silent;
    }
}

}  // namespace
}  // namespace kestrel
