#include "platform/crash_handlers.h"

#include <cxxabi.h>
#include <limits.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <new>
#include <typeinfo>

#include "platform/log_file.h"

// Everything from `appendLineToFile` to the signal handler restricts itself to what POSIX calls
// async-signal-safe.

namespace tidewell_platform {
namespace {

using Path = std::array<char, PATH_MAX>;  // ends with a zero; set once, before any handler

Path crashLogPathAppDir{};
Path crashLogPathTemp{};

/// A text of bounded length; what does not fit is left out.
template <std::size_t Size>
class FixedText {
  public:
    FixedText& operator<<(std::string_view text) {
        const std::size_t count = std::min(text.size(), Size - length_);
        std::copy_n(text.data(), count, characters_.data() + length_);
        length_ += count;
        return *this;
    }

    /// Lower-case digits without padding; `base` from 2 to 16.
    FixedText& number(std::uintptr_t value, unsigned base) {
        std::array<char, 64> digits;
        std::size_t first = digits.size();
        do {
            digits[--first] = "0123456789abcdef"[value % base];
            value /= base;
        } while (value != 0);
        return *this << std::string_view(digits.data() + first, digits.size() - first);
    }

    std::string_view view() const { return {characters_.data(), length_}; }

  private:
    std::array<char, Size> characters_;
    std::size_t length_ = 0;
};

void writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// An allocation has failed that nobody was ready for. Where somebody is, the exception ends what
/// wanted the memory, and the process lives on: that is why no new handler stands in its way.
bool isOutOfMemory() {
    const std::type_info* const thrown = abi::__cxa_current_exception_type();
    return thrown != nullptr &&
           (*thrown == typeid(std::bad_alloc) || *thrown == typeid(std::bad_array_new_length));
}

[[noreturn]] void onTerminate() {
    appendCrashLine(isOutOfMemory() ? "FATAL: std::new_handler invoked (out of memory)"
                                    : "FATAL: std::terminate() called");
    std::abort();
}

/// Raised by the processor at an instruction of this process, not sent by anybody. Its signals
/// take the place of what other systems call structured exceptions.
bool isHardwareFault(int number, const siginfo_t& info) {
    const bool canBe =
        number == SIGSEGV || number == SIGBUS || number == SIGILL || number == SIGFPE;
    return canBe && info.si_code > 0;
}

void onSignal(int number, siginfo_t* info, void*) {
    const auto code = static_cast<std::uintptr_t>(number);
    if (isHardwareFault(number, *info)) {
        const auto address = reinterpret_cast<std::uintptr_t>(info->si_addr);
        // Noticed first and unhandled last at once: nothing can catch such a fault in between.
        for (const char* const event : {"Vectored", "Unhandled SEH"}) {
            FixedText<128> line;
            line << "FATAL: " << event << " exception code=0x";
            line.number(code, 16) << " addr=";
            line.number(address, 16);
            appendCrashLine(line.view());
        }
    }
    FixedText<128> line;
    line << "FATAL: C signal received sig=";
    line.number(code, 10);
    appendCrashLine(line.view());

    // Blocked while this handler runs, so it takes effect on return.
    struct sigaction byDefault {};
    byDefault.sa_handler = SIG_DFL;
    sigaction(number, &byDefault, nullptr);
    raise(number);
}

/// A stack that has overflowed has no room for a handler.
void provideSpareStack() {
    static std::array<char, std::size_t{64} << 10> spare;
    stack_t stack{};
    stack.ss_sp = spare.data();
    stack.ss_size = spare.size();
    sigaltstack(&stack, nullptr);
}

void store(Path& path, std::string_view text) {
    path.fill(0);
    if (text.size() < path.size()) {
        std::ranges::copy(text, path.begin());
    }
}

}  // namespace

void setCrashLogPaths(std::string_view appDir, std::string_view temp) {
    store(crashLogPathAppDir, appDir);
    store(crashLogPathTemp, temp);
}

void installCrashHandlers() {
    std::set_terminate(onTerminate);
    provideSpareStack();
    struct sigaction action {};
    action.sa_sigaction = onSignal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (const int number : {SIGABRT, SIGSEGV, SIGILL, SIGFPE, SIGBUS}) {
        sigaction(number, &action, nullptr);
    }
}

void appendLineToFile(std::string_view line, const char* path) noexcept {
    constexpr std::string_view end = "\r\n";
    constexpr std::size_t longest = 510;
    if (*path == 0) {
        return;
    }
    const int file = open_log(path);
    if (file < 0) {
        return;
    }
    FixedText<longest + end.size()> bytes;  // one write keeps lines of several threads whole
    bytes << line.substr(0, longest) << end;
    writeAll(file, bytes.view());
    close(file);
}

void appendCrashLine(std::string_view line) noexcept {
    appendLineToFile(line, crashLogPathAppDir.data());
    appendLineToFile(line, crashLogPathTemp.data());
}

}  // namespace tidewell_platform
