#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace kestrel {

/// What a solve's time is booked under. Slots nest: the time of a fold is terminal time, too, and
/// both are time of an iteration or of a measurement.
enum class ProfileSlot : std::uint8_t {
    total_run,
    solve_iteration,
    exploitability,
    mes_ev,
    current_ev,
    terminal_eval,
    fold,
    showdown_u,
    showdown_r,
    incomplete,
    regret_matching,
    update_regrets,
    fma_actions,
    strategy_sum_update,
    sum_rows_into,
    chance_aggregate_reuse,  ///< never recorded
};
inline constexpr std::size_t profile_slot_count = 16;

/// A record of where a solve spends its time, by thread and without locks on the hot path. On when
/// the environment variable KESTREL_PROFILE is set, not empty and does not start with "0"; read
/// once per process. Off, a timed call costs one test.
///
/// The batched walk does several calls' work at once. Terminals of a group count one call each and
/// share the group's time; the rows of a dealt card count one `sum_rows_into` for each line; the
/// fused pass over a node counts a call of each kernel that it stands for, and its time goes to
/// `update_regrets` at the traversed seat's nodes and to `regret_matching` at the other's.
class SolverProfile {
  public:
    /// A sum that one thread writes and any may read or clear.
    class Sum {
      public:
        void add(std::uint64_t amount) { set(value() + amount); }  // no locked addition is needed
        void set(std::uint64_t value) { value_.store(value, std::memory_order_relaxed); }
        std::uint64_t value() const { return value_.load(std::memory_order_relaxed); }

      private:
        std::atomic<std::uint64_t> value_{0};
    };

    /// Nanoseconds and calls by slot, of one thread, which alone adds to them.
    struct Local {
        std::array<Sum, profile_slot_count> nanoseconds;
        std::array<Sum, profile_slot_count> calls;
    };

    struct Slot {
        std::uint64_t nanoseconds = 0;      ///< sum over the threads
        std::uint64_t calls = 0;            ///< sum over the threads
        std::uint64_t max_nanoseconds = 0;  ///< of the thread with the most
    };
    using Summary = std::array<Slot, profile_slot_count>;

    /// Built with KESTREL_NO_PROFILE, never: what the timers cost is measured against that.
    static bool enabled() {
#ifdef KESTREL_NO_PROFILE
        return false;
#else
        const int state = switch_.load(std::memory_order_relaxed);
        return state >= 0 ? state != 0 : read_switch();
#endif
    }

    /// The calling thread's record. It outlives the thread, so that a worker's figures stay.
    static Local& local();

    /// Clears all records, and sums them up. What another thread records meanwhile, a question to
    /// an older solve for one, is counted in part.
    static void reset();
    static Summary aggregate();

    /// Counts calls without timing them.
    static void count(ProfileSlot slot, std::uint64_t calls = 1) {
        if (enabled()) {
            local().calls[static_cast<std::size_t>(slot)].add(calls);
        }
    }

  private:
    static bool read_switch();

    static std::atomic<int> switch_;  // -1: not read yet
};

/// Books the time of a scope, an exception's included, and `calls` calls at its start; nothing
/// for 0 calls.
class ProfileScope {
  public:
    explicit ProfileScope(ProfileSlot slot, std::uint64_t calls = 1) {
        if (calls != 0 && SolverProfile::enabled()) {
            SolverProfile::Local& local = SolverProfile::local();
            local.calls[static_cast<std::size_t>(slot)].add(calls);
            total_ = &local.nanoseconds[static_cast<std::size_t>(slot)];
            start_ = Clock::now();
        }
    }
    ~ProfileScope() {
        if (total_ != nullptr) {
            const std::chrono::nanoseconds elapsed = Clock::now() - start_;
            total_->add(static_cast<std::uint64_t>(elapsed.count()));
        }
    }
    ProfileScope(const ProfileScope&) = delete;
    ProfileScope& operator=(const ProfileScope&) = delete;

  private:
    using Clock = std::chrono::steady_clock;

    SolverProfile::Sum* total_ = nullptr;
    Clock::time_point start_{};
};

}  // namespace kestrel
