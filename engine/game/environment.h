#pragma once

#include <cstddef>

namespace kestrel {

/// A whole number from an environment variable, as strtol reads it in base 10: a leading number
/// counts. `fallback` when the variable is not set, for no number, one out of range, or one below
/// `smallest`. Read anew at each call.
std::size_t number_from_environment(const char* name, long smallest, std::size_t fallback);

/// The hardware's threads, at least 1.
std::size_t hardware_threads();

}  // namespace kestrel
