#pragma once

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace tidewell_tests {

/// A folder that goes with all that is in it.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "tidewell-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        path_ = name;
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

/// As long as it lives, all that this process and those that it starts keep for their user, from
/// settings to caches, lies in a folder that goes with it. To be made before anything asks for one.
class TemporaryHome {
  public:
    TemporaryHome() {
        for (const char* const name : {"HOME", "TMPDIR", "XDG_CACHE_HOME", "XDG_CONFIG_HOME",
                                       "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "XDG_STATE_HOME"}) {
            setenv(name, folder_.path().c_str(), 1);
        }
    }

  private:
    TemporaryFolder folder_;
};

}  // namespace tidewell_tests
