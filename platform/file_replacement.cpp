#include "platform/file_replacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <random>
#include <system_error>

namespace tidewell_platform {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(int error) {
    throw std::system_error(error, std::generic_category());
}

void require(int result) {
    if (result != 0) {
        fail(errno);
    }
}

/// What a path leads to, which need not exist yet.
fs::path behind_links(fs::path path) {
    constexpr int most_links = 40;  // as many as the kernel follows
    for (int i = 0; i < most_links; ++i) {
        std::error_code ignored;
        if (!fs::is_symlink(path, ignored)) {
            return path;
        }
        path = path.parent_path() / fs::read_symlink(path, ignored);
    }
    fail(ELOOP);
}

fs::path folder_of(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

/// Nothing where there is no file.
std::optional<struct stat> status_of(const fs::path& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
        return status;
    }
    if (errno != ENOENT) {
        fail(errno);
    }
    return std::nullopt;
}

/// A new file in a folder. The name is short, however long that of its neighbour is.
int create_in(const fs::path& folder, fs::path& path) {
    std::random_device random;
    constexpr int most_attempts = 100;
    for (int i = 0; i < most_attempts; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, ".tidewell-%08x", static_cast<unsigned>(random()));
        path = folder / name;
        const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0) {
            return descriptor;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    path.clear();
    fail(errno);
}

/// Owner and rights as those of another file, as far as this user and the file system give them.
void take_after(int descriptor, const struct stat& other) {
    mode_t rights = other.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
    struct stat own {};
    const bool same =
        fstat(descriptor, &own) == 0 && own.st_uid == other.st_uid && own.st_gid == other.st_gid;
    if (!same && fchown(descriptor, other.st_uid, other.st_gid) != 0 &&
        fchown(descriptor, own.st_uid, other.st_gid) != 0) {
        rights &= ~static_cast<mode_t>(S_IRWXG);  // they were another group's
    }
    fchmod(descriptor, rights);
}

std::optional<FilePlace> place_of(const struct stat& status) {
    if (!S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return FilePlace{status.st_dev, status.st_ino, {}};
}

}  // namespace

FileReplacement::FileReplacement(const std::string& path) : target_(behind_links(path)) {
    const std::optional<struct stat> former = status_of(target_);
    if (former) {
        if (!S_ISREG(former->st_mode)) {
            fail(S_ISDIR(former->st_mode) ? EISDIR : EINVAL);
        }
        require(access(target_.c_str(), W_OK));
    }
    descriptor_ = create_in(folder_of(target_), growing_);
    if (former) {
        take_after(descriptor_, *former);
    }
}

FileReplacement::~FileReplacement() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
    if (!growing_.empty()) {
        unlink(growing_.c_str());
    }
}

void FileReplacement::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            fail(errno);
        }
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

void FileReplacement::commit() {
    // Before the name is moved: a machine that fails now must not keep a name without content.
    require(fsync(descriptor_));
    const int descriptor = descriptor_;
    descriptor_ = -1;
    require(close(descriptor));
    require(rename(growing_.c_str(), target_.c_str()));
    growing_.clear();
    // The move itself stands either way; on the disk now if the folder can be told so.
    if (const int folder = open(folder_of(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        folder >= 0) {
        fsync(folder);
        close(folder);
    }
}

bool is_stream(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

bool may_write(const std::string& path) {
    return access(path.c_str(), W_OK) == 0;
}

std::optional<FilePlace> place_of(const std::string& path) {
    try {
        const fs::path file = behind_links(path);
        if (const auto status = status_of(file)) {
            return place_of(*status);
        }
        const auto folder = status_of(folder_of(file));
        if (!folder) {
            return std::nullopt;
        }
        return FilePlace{folder->st_dev, folder->st_ino, file.filename().string()};
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

std::optional<FilePlace> place_of(StandardStream stream) {
    struct stat status {};
    return fstat(static_cast<int>(stream), &status) == 0 ? place_of(status) : std::nullopt;
}

}  // namespace tidewell_platform
