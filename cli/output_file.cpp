#include "cli/output_file.h"

#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "cli/input_error.h"
#include "platform/file_replacement.h"
#include "platform/standard_streams.h"

namespace tidewell_cli {
namespace {

using tidewell_platform::FilePlace;
using tidewell_platform::FileReplacement;
using tidewell_platform::place_of;
using tidewell_platform::StandardStream;

bool is_path(const std::string& output) {
    return !output.empty() && output != "-";
}

std::string cannot_write(const std::string& path, const std::system_error& error) {
    return "cannot write " + path + ": " + error.code().message();
}

void check_replaceable(const std::string& path) {
    if (tidewell_platform::is_stream(path)) {
        throw InputError("cannot write " + path + ": it is a pipe or a device");
    }
    try {
        const FileReplacement trial(path);
    } catch (const std::system_error& error) {
        throw InputError(cannot_write(path, error));
    }
}

/// A file that has a part in a solve, as it is called to the user.
struct NamedPlace {
    std::string name;
    std::optional<FilePlace> place;
};

NamedPlace spot_place(const std::string& path) {
    return {"the spot", path == "-" ? place_of(StandardStream::input) : place_of(path)};
}

void check_apart(const Options& options) {
    std::vector<NamedPlace> places = {
        spot_place(options.spot_path),
        {"standard output", place_of(StandardStream::output)},
        {"standard error", place_of(StandardStream::error)},
    };
    const std::pair<const char*, const std::string&> outputs[] = {{"--json", options.json_path},
                                                                  {"--save", options.save_path}};
    for (const auto& [option, path] : outputs) {
        if (!is_path(path)) {
            continue;
        }
        const NamedPlace output = {option + (" " + path), place_of(path)};
        for (const NamedPlace& other : places) {
            if (output.place && output.place == other.place) {
                throw InputError(output.name + " is the same file as " + other.name);
            }
        }
        places.push_back(output);
    }
}

}  // namespace

void check_outputs(const Options& options) {
    check_apart(options);
    if (is_replaced(options.json_path)) {
        check_replaceable(options.json_path);
    } else if (is_path(options.json_path) && !tidewell_platform::may_write(options.json_path)) {
        throw InputError("cannot write " + options.json_path);
    }
    if (is_path(options.save_path)) {
        check_replaceable(options.save_path);
    }
}

bool is_replaced(const std::string& path) {
    return is_path(path) && !tidewell_platform::is_stream(path);
}

void replace_file(const std::string& path, const std::function<void(const Write&)>& content) {
    try {
        FileReplacement file(path);
        content([&](std::string_view bytes) { file.write(bytes); });
        file.commit();
    } catch (const std::system_error& error) {
        throw WriteFailed(cannot_write(path, error));
    }
}

}  // namespace tidewell_cli
