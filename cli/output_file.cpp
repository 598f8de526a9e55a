#include "cli/output_file.h"

#include <unistd.h>

#include <filesystem>

#include "cli/input_error.h"

namespace tidewell_cli {
namespace {

namespace fs = std::filesystem;

fs::path folder_of(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

bool is_writable(const fs::path& path) {
    return access(path.c_str(), W_OK) == 0;
}

void require(bool writable, const std::string& path) {
    if (!writable) {
        throw InputError("cannot write " + path);
    }
}

}  // namespace

void check_writable(const std::string& path) {
    if (path == "-") {
        return;
    }
    std::error_code ignored;
    const fs::path file(path);
    require(!fs::is_directory(file, ignored) &&
                is_writable(fs::exists(file, ignored) ? file : folder_of(file)),
            path);
}

void check_replaceable(const std::string& path) {
    std::error_code ignored;
    const fs::path file = fs::weakly_canonical(path, ignored);
    require(
        is_writable(folder_of(file)) && (!fs::exists(file, ignored) ||
                                         (fs::is_regular_file(file, ignored) && is_writable(file))),
        path);
}

}  // namespace tidewell_cli
