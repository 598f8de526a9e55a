#include "platform/regular_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tidewell_platform {
namespace {

FileKind kind_of(mode_t mode) {
    switch (mode & S_IFMT) {
        case S_IFREG:
            return FileKind::regular;
        case S_IFDIR:
            return FileKind::folder;
        case S_IFIFO:
            return FileKind::pipe;
        case S_IFSOCK:
            return FileKind::socket;
        case S_IFCHR:
        case S_IFBLK:
            return FileKind::device;
        default:
            return FileKind::unknown;
    }
}

OpenedFile refused(int error) {
    const bool missing = error == ENOENT || error == ENOTDIR;
    return {-1, missing ? FileKind::missing : FileKind::unknown, error};
}

}  // namespace

OpenedFile open_regular_file(const std::string& path) {
    struct stat found {};
    if (path.find('\0') != std::string::npos) {
        return refused(ENOENT);  // the system would read no further than that
    }
    if (stat(path.c_str(), &found) != 0) {
        return refused(errno);
    }
    if (!S_ISREG(found.st_mode)) {
        return {-1, kind_of(found.st_mode), 0};
    }
    // It may be another by now, hence no waiting here, and a second look at what was opened.
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0) {
        return refused(errno);
    }
    if (fstat(file, &found) != 0 || !S_ISREG(found.st_mode)) {
        close(file);
        return {-1, kind_of(found.st_mode), 0};
    }
    return {file, FileKind::regular, 0};
}

}  // namespace tidewell_platform
