#pragma once

#include <string>

namespace tidewell_platform {

/// What a path leads to, symbolic links followed.
enum class FileKind { regular, missing, folder, pipe, socket, device, unknown };

/// A descriptor for reading, or why there is none.
struct OpenedFile {
    int descriptor = -1;  ///< of a regular file, for the caller to close; -1 otherwise
    FileKind kind = FileKind::unknown;
    int error = 0;  ///< the system's number where it refused; 0 for a descriptor and for a kind
                    ///< that is not opened
};

/// Opens what is a regular file and nothing else: pipes, sockets and devices may keep their reader
/// waiting or never end, and some take being opened for a command. Returns at once whatever stands
/// there, also when another process exchanges it meanwhile. The path is in the system's own bytes.
OpenedFile open_regular_file(const std::string& path);

}  // namespace tidewell_platform
