#pragma once

#include <atomic>
#include <functional>

namespace tidewell {

/// Runs `work` on a thread of its own and returns when it has ended; what it throws is thrown on.
/// Meanwhile events are handled on this thread, the user's input put off, so that windows go on
/// painting. `onProgress` is called ten times a second with what `work` has left in its argument, 0
/// to 1; may be empty. Where no thread is to be had, `work` runs on this one.
void runBeside(const std::function<void(std::atomic<double>&)>& work,
               const std::function<void(double)>& onProgress);

}  // namespace tidewell
