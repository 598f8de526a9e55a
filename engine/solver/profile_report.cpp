#include "engine/solver/profile_report.h"

#include <cstdint>
#include <cstdio>

#include "engine/solver/discounted_cfr.h"
#include "engine/solver/profile.h"

namespace kestrel {
namespace {

double in_milliseconds(std::uint64_t nanoseconds) {
    return static_cast<double>(nanoseconds) / 1e6;
}

}  // namespace

void print_profile(const DiscountedCfr& solver, std::size_t threads) {
    const SolverProfile::Summary summary = SolverProfile::aggregate();
    const auto slot = [&summary](ProfileSlot which) -> const SolverProfile::Slot& {
        return summary[static_cast<std::size_t>(which)];
    };
    std::printf("\n[KESTREL_PROFILE] DiscountedCfr::run summary\n");
    std::printf(
        "  iterations_completed=%u  max_iterations=%u  threads=%zu  exploitability_interval=%u\n",
        solver.iterations_completed, solver.options.max_iterations, threads,
        solver.options.exploitability_interval);
    const SolverProfile::Slot& run = slot(ProfileSlot::total_run);
    std::printf("  total_run_ms=%.3f  max_thread_ms=%.3f\n", in_milliseconds(run.nanoseconds),
                in_milliseconds(run.max_nanoseconds));
    const auto line = [&slot](const char* label, ProfileSlot which, const char* end = "\n") {
        const SolverProfile::Slot& s = slot(which);
        std::printf("%s calls=%llu  total_ms=%.3f  max_thread_ms=%.3f%s", label,
                    static_cast<unsigned long long>(s.calls), in_milliseconds(s.nanoseconds),
                    in_milliseconds(s.max_nanoseconds), end);
    };
    line("  solve_iteration:", ProfileSlot::solve_iteration);
    line("  exploitability: ", ProfileSlot::exploitability, "");
    std::printf("  (mes_ev_ms=%.3f, current_ev_ms=%.3f)\n",
                in_milliseconds(slot(ProfileSlot::mes_ev).nanoseconds),
                in_milliseconds(slot(ProfileSlot::current_ev).nanoseconds));
    line("  terminal_eval:  ", ProfileSlot::terminal_eval);
    line("    fold:         ", ProfileSlot::fold);
    line("    showdown_u:   ", ProfileSlot::showdown_u);
    line("    showdown_r:   ", ProfileSlot::showdown_r);
    line("    incomplete:   ", ProfileSlot::incomplete);
    std::printf("  kernels (flat arrays):\n");
    line("    regret_matching:    ", ProfileSlot::regret_matching);
    line("    update_regrets:     ", ProfileSlot::update_regrets);
    line("    fma_actions:        ", ProfileSlot::fma_actions);
    line("    strategy_sum_update:", ProfileSlot::strategy_sum_update);
    line("    sum_rows_into:      ", ProfileSlot::sum_rows_into);
    line("  chance_aggregate_reuse:", ProfileSlot::chance_aggregate_reuse);
    std::printf("\n");
    std::fflush(stdout);
}

}  // namespace kestrel
