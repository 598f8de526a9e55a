#pragma once

#include <chrono>

namespace tidewell_cli {

using Clock = std::chrono::steady_clock;

inline double seconds_between(Clock::time_point start, Clock::time_point end) {
    return std::chrono::duration<double>(end - start).count();
}

inline double seconds_since(Clock::time_point start) {
    return seconds_between(start, Clock::now());
}

struct PhaseSeconds {
    double card_context = 0;
    double tree = 0;
    double prepare = 0;  ///< the solver's states
    double solve = 0;    ///< iterations and measurements
    double total = 0;    ///< since the program began
};

}  // namespace tidewell_cli
