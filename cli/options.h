#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cli/locks.h"

namespace tidewell_cli {

/// The command line. Absent values leave what the spot says.
struct Options {
    std::string spot_path;  ///< empty for the quick-solve spot, "-" for standard input
    std::optional<std::size_t> threads;
    std::optional<std::uint32_t> iterations;
    std::optional<double> target_percent;  ///< of the starting pot
    std::string json_path;                 ///< empty for none, "-" for standard output
    std::string save_path;                 ///< of a project; empty for none
    std::string node_line;
    std::optional<std::size_t> list_depth;
    std::vector<Lock> locks;
    std::string why;  ///< a hand; empty for none
    bool stats = false;
    bool combos = false;
    bool buckets = false;
    bool distributions = false;
    bool exact_all_in = false;
    bool signature = false;
    bool version = false;
    bool help = false;

    /// Whether tables of tab-separated values are asked for.
    bool tables() const { return combos || buckets || distributions; }
};

inline constexpr std::size_t max_threads = 1024;

/// Reads the arguments behind the program's name; "--name value" and "--name=value" both count.
/// Throws InputError.
Options parse_options(std::span<const char* const> arguments);

/// The text of --help.
extern const char* const help_text;

}  // namespace tidewell_cli
