#include "platform/log_file.h"

#include <fcntl.h>
#include <limits.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

// Everything here restricts itself to what POSIX calls async-signal-safe.

namespace tidewell_platform {
namespace {

int open_own_file(const char* path, struct stat& found) {
    constexpr mode_t owner_only = 0600;
    const int file =
        open(path, O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
             owner_only);
    if (file < 0) {
        return -1;
    }
    const bool own = fstat(file, &found) == 0 && S_ISREG(found.st_mode) &&
                     found.st_uid == geteuid() && found.st_nlink == 1;
    const bool shared = (found.st_mode & (S_IRWXG | S_IRWXO)) != 0;
    if (!own || (shared && fchmod(file, owner_only) != 0)) {
        close(file);
        return -1;
    }
    return file;
}

bool put_aside(const char* path) {
    constexpr std::string_view ending = ".old";
    const std::string_view name = path;
    std::array<char, PATH_MAX> aside{};
    if (name.size() + ending.size() >= aside.size()) {
        return false;
    }
    std::ranges::copy(ending, std::ranges::copy(name, aside.begin()).out);
    return rename(path, aside.data()) == 0;
}

}  // namespace

int open_log(const char* path) noexcept {
    struct stat found {};
    const int file = open_own_file(path, found);
    if (file < 0 || found.st_size < full_log) {
        return file;
    }
    if (put_aside(path)) {
        close(file);
        return open_own_file(path, found);
    }
    if (ftruncate(file, 0) != 0) {
        close(file);
        return -1;
    }
    return file;
}

}  // namespace tidewell_platform
