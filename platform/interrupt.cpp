#include "platform/interrupt.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <string_view>

namespace tidewell_platform {
namespace {

std::atomic<bool> deferred = false;
std::atomic<bool> pending = false;
static_assert(std::atomic<bool>::is_always_lock_free);  // for use in a signal handler

struct sigaction previous;
std::string_view told_at_end;
int code_at_end = 0;

void on_interrupt(int) {
    const int saved_errno = errno;
    if (!deferred || pending.exchange(true)) {
        [[maybe_unused]] const auto written =
            write(STDERR_FILENO, told_at_end.data(), told_at_end.size());
        _exit(code_at_end);
    }
    errno = saved_errno;
}

}  // namespace

InterruptGuard::InterruptGuard(std::string_view last_words, int exit_code) {
    told_at_end = last_words;
    code_at_end = exit_code;
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

}  // namespace tidewell_platform
