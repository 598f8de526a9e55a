#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/standard_streams.h"

namespace tidewell_platform {

/// The new content of a file. It grows in a file of its own beside the other and takes its place as
/// a whole when it is finished, with the same owner and rights; until then, and when anything
/// fails, the former file stands as it was. A path that is a symbolic link stands for what it leads
/// to. Paths are in the system's own bytes, and may be as long as the system takes them.
///
/// All functions throw std::system_error.
class FileReplacement {
  public:
    /// Fails where the file could not be replaced, and leaves no trace when nothing follows: a way
    /// to find out beforehand.
    explicit FileReplacement(const std::string& path);

    /// Gives up what has not been committed.
    ~FileReplacement();

    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    void write(std::string_view bytes);

    /// Has the content on the disk and in its place. Nothing may follow.
    void commit();

  private:
    std::filesystem::path target_;
    std::filesystem::path growing_;  // beside the target; empty when it is gone
    int descriptor_ = -1;
};

/// Whether a path leads to a pipe, a socket or a device: what is written to as it stands.
bool is_stream(const std::string& path);

/// Whether this user may write to what stands there.
bool may_write(const std::string& path);

/// Where a file stands or would stand: equal for all paths and links that lead to one file.
struct FilePlace {
    std::uint64_t device = 0;
    std::uint64_t number = 0;  ///< of the file, or of the folder of one that does not exist
    std::string name;          ///< of one that does not exist

    bool operator==(const FilePlace&) const = default;
};

/// Nothing for what is no regular file, and for what cannot be looked at.
std::optional<FilePlace> place_of(const std::string& path);
std::optional<FilePlace> place_of(StandardStream stream);

}  // namespace tidewell_platform
