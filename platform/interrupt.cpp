#include "platform/interrupt.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>

namespace tidewell_platform {
namespace {

enum class Answer { end, remember_one, remember_all };

constexpr std::array signals = {SIGINT, SIGTERM, SIGHUP};
constexpr int signal_code = 128;  // what a shell adds to the number of a signal

std::atomic<Answer> answer = Answer::end;
std::atomic<int> remembered = 0;  // the exit code for the first signal that did not end the process
std::atomic<const char*> words = nullptr;
std::atomic<std::size_t> words_size = 0;
std::atomic<int> code = 0;  // 0: that of the signal
std::atomic<bool> on_terminal = false;
// For use in a signal handler.
static_assert(std::atomic<Answer>::is_always_lock_free && std::atomic<int>::is_always_lock_free &&
              std::atomic<const char*>::is_always_lock_free);

std::array<struct sigaction, signals.size()> previous;

void tell(const char* text, std::size_t size) {
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text, size);
}

void on_signal(int number) {
    const int saved_errno = errno;
    const bool first = remembered == 0;
    if (answer == Answer::end || (answer == Answer::remember_one && !first)) {
        if (on_terminal) {
            tell("\n", 1);  // what was typed, or what tells of a solve, stands in this one
        }
        tell(words, words_size);
        _exit(code != 0 ? code.load() : signal_code + number);
    }
    if (first) {
        remembered = signal_code + number;
    }
    errno = saved_errno;
}

}  // namespace

InterruptGuard::InterruptGuard(std::string_view last_words) {
    end_with(last_words, 0);
    answer = Answer::end;
    remembered = 0;
    on_terminal = isatty(STDERR_FILENO) == 1;
    struct sigaction action {};
    action.sa_handler = on_signal;
    sigemptyset(&action.sa_mask);
    for (const int number : signals) {
        sigaddset(&action.sa_mask, number);
    }
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < signals.size(); ++i) {
        sigaction(signals[i], nullptr, &previous[i]);
        if (previous[i].sa_handler != SIG_IGN) {
            sigaction(signals[i], &action, nullptr);
        }
    }
}

InterruptGuard::~InterruptGuard() {
    for (std::size_t i = 0; i < signals.size(); ++i) {
        sigaction(signals[i], &previous[i], nullptr);
    }
}

void InterruptGuard::defer() {
    answer = Answer::remember_one;
}

void InterruptGuard::hold() {
    answer = Answer::remember_all;
}

void InterruptGuard::stop_deferring() {
    answer = Answer::end;
}

void InterruptGuard::end_with(std::string_view last_words, int exit_code) {
    words = last_words.data();
    words_size = last_words.size();
    code = exit_code;
}

int InterruptGuard::exit_code() const {
    return remembered;
}

}  // namespace tidewell_platform
