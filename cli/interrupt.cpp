#include "cli/interrupt.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <string_view>

#include "cli/program.h"

namespace tidewell_cli {
namespace {

std::atomic<bool> deferred = false;
std::atomic<bool> pending = false;
static_assert(std::atomic<bool>::is_always_lock_free);  // for use in a signal handler

struct sigaction previous;

void on_interrupt(int) {
    const int saved_errno = errno;
    if (!deferred || pending.exchange(true)) {
        constexpr std::string_view line = "\ntidewell-solve: interrupted\n";
        [[maybe_unused]] const auto written = write(STDERR_FILENO, line.data(), line.size());
        _exit(exit_interrupted);
    }
    errno = saved_errno;
}

}  // namespace

InterruptGuard::InterruptGuard() {
    deferred = false;
    pending = false;
    struct sigaction action {};
    action.sa_handler = on_interrupt;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, &previous);
}

InterruptGuard::~InterruptGuard() {
    sigaction(SIGINT, &previous, nullptr);
}

void InterruptGuard::defer() {
    deferred = true;
}

void InterruptGuard::stop_deferring() {
    deferred = false;
}

bool InterruptGuard::interrupted() const {
    return pending;
}

}  // namespace tidewell_cli
