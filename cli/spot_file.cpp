#include "cli/spot_file.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <variant>

#include "cli/format.h"
#include "cli/input_error.h"
#include "cli/options.h"
#include "cli/spot_checks.h"
#include "engine/poker/text.h"
#include "session/solve_config.h"
#include "session/text.h"

namespace tidewell_cli {
namespace {

using kestrel_app::ConfigKey;
using kestrel_app::ConfigKind;
using kestrel_app::ConfigMap;
using kestrel_app::ConfigValue;
using nlohmann::json;

constexpr std::size_t max_spot_bytes = std::size_t{16} << 20;

/// A spot needs one level. What is deeper is refused before recursion over it could fill the stack.
constexpr std::size_t max_depth = 16;

std::string place_in(std::string_view text, std::size_t position) {
    const std::string_view before = text.substr(0, position);
    const auto lines = std::ranges::count(before, '\n');
    const std::size_t column = before.size() - (before.rfind('\n') + 1);  // npos + 1 is 0
    return "line " + std::to_string(lines + 1) + ", column " + std::to_string(column + 1);
}

void check_depth(std::string_view text) {
    std::size_t depth = 0;
    bool in_string = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (character == '"') {
            in_string = !in_string;
        } else if (in_string) {
            i += character == '\\' ? 1 : 0;
        } else if (character == '[' || character == '{') {
            if (++depth > max_depth) {
                throw InputError(place_in(text, i) + ": lists and objects are nested too deeply");
            }
        } else if (character == ']' || character == '}') {
            depth -= depth > 0 ? 1 : 0;
        }
    }
}

json parse_json(std::string_view text, std::vector<std::string>& warnings) {
    check_depth(text);
    std::set<std::string> seen;
    const auto on_event = [&](int depth, json::parse_event_t event, json& parsed) {
        if (event == json::parse_event_t::key && depth == 1 &&
            !seen.insert(parsed.get<std::string>()).second) {
            warnings.push_back("key " + in_quotes(parsed.get<std::string>()) +
                               " stands there twice; the last one counts");
        }
        return true;
    };
    try {
        return json::parse(text, on_event);
    } catch (const json::parse_error& error) {
        // "[json.exception.parse_error.101] parse error at line 3, column 5: syntax error while
        // parsing value - invalid literal; last read: 'nul}'": the place says where that is, and
        // what was last read may be long.
        const std::string_view what = error.what();
        const std::size_t line = what.find("line ");
        throw InputError(line == std::string_view::npos
                             ? "the text is no JSON"
                             : std::string(what.substr(line, what.find("; last read: ") - line)));
    } catch (const json::out_of_range& error) {
        // A number beyond the range of double, quoted at the end.
        const std::string_view what = error.what();
        const std::size_t quote = std::min(what.find('\''), what.size() - 1);
        const std::string_view number = what.substr(quote + 1, what.rfind('\'') - quote - 1);
        throw InputError(place_in(text, text.find(number)) + ": the number " + shortened(number) +
                         " is too large");
    }
}

/// Not for lists and objects, which are written by recursion.
std::string scalar_text(const json& value) {
    return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

[[noreturn]] void refuse(const std::string& key, const std::string& wanted, const json& value) {
    throw InputError(key + " must be " + wanted + ", not " +
                     (value.is_array()    ? "a list"
                      : value.is_object() ? "an object"
                                          : shortened(scalar_text(value))));
}

std::optional<double> number_in(const json& value) {
    if (value.is_number()) {
        return value.get<double>();
    }
    if (!value.is_string()) {
        return std::nullopt;
    }
    return kestrel_app::parsed_number<double>(kestrel::trimmed(value.get<std::string>()));
}

std::optional<bool> flag_in(const json& value) {
    if (value.is_boolean()) {
        return value.get<bool>();
    }
    if (value.is_structured()) {
        return std::nullopt;
    }
    const std::string text = value.is_string() ? value.get<std::string>() : scalar_text(value);
    if (text == "true" || text == "1") {
        return true;
    }
    if (text == "false" || text == "0") {
        return false;
    }
    return std::nullopt;
}

/// What a number may be, both ends included.
struct Limits {
    double least;
    double most;
};

Limits limits_of(const ConfigKey& key) {
    using kestrel_app::max_chips;
    if (key.name == "starting_pot" || key.name == "effective_stack") {
        return {0.01, max_chips};
    }
    if (key.name == "max_iterations") {
        return {1, 4294967295.0};
    }
    if (key.name == "thread_count") {
        return {1, max_threads};
    }
    if (key.name == "rake_percent") {
        return {0, 100};
    }
    if (key.kind == ConfigKind::percent) {
        return {0, 1e9};
    }
    return {0, max_chips};
}

ConfigValue checked_value(const ConfigKey& key, const json& value) {
    switch (key.kind) {
        case ConfigKind::flag:
            if (const auto flag = flag_in(value)) {
                return *flag;
            }
            refuse(key.name, "true or false", value);
        case ConfigKind::chips:
        case ConfigKind::percent:
        case ConfigKind::whole: {
            const Limits limits = limits_of(key);
            const bool whole = key.kind == ConfigKind::whole;
            const auto number = number_in(value);
            if (number && *number >= limits.least && *number <= limits.most &&
                (!whole || *number == std::floor(*number))) {
                return *number;
            }
            refuse(key.name,
                   (whole ? "a whole number from " : "a number from ") + decimal(limits.least, 2) +
                       " to " + decimal(limits.most, 2),
                   value);
        }
        case ConfigKind::sizing:
            if (value.is_number()) {
                return kestrel_app::to_text(value.get<double>());
            }
            [[fallthrough]];
        case ConfigKind::board:
        case ConfigKind::range:
        case ConfigKind::street:
            break;
    }
    if (!value.is_string()) {
        refuse(key.name, "text", value);
    }
    return value.get<std::string>();
}

ConfigMap checked_map(const json& spot, SpotSource source, std::vector<std::string>& warnings) {
    if (!spot.is_object()) {
        throw InputError("a spot is one JSON object");
    }
    if (const auto format = spot.find("format");
        format != spot.end() && *format == "kestrel_project") {
        throw InputError("this is a project, which is read from a file that ends in .tidewellproj");
    }
    ConfigMap map;
    for (const auto& [name, value] : spot.items()) {
        const auto key = std::ranges::find(kestrel_app::config_keys(), name, &ConfigKey::name);
        if (key == kestrel_app::config_keys().end()) {
            warnings.push_back("unknown key " + in_quotes(name) + " is ignored");
        } else {
            map[name] = checked_value(*key, value);
        }
    }
    check_texts(map, source, warnings);
    try {
        kestrel_app::parse_spot(kestrel_app::config_from_map(map));
    } catch (const std::exception& error) {
        throw InputError(shortened(error.what(), longest_message));
    }
    return map;
}

/// Calls `read` with a list of its own for warnings, and names the file in what it throws and warns
/// of.
template <class Read>
ConfigMap named(const std::string& name, std::vector<std::string>& warnings, const Read& read) {
    std::vector<std::string> own;
    const auto name_warnings = [&] {
        for (const std::string& warning : own) {
            warnings.push_back(name + ": " + warning);
        }
    };
    try {
        ConfigMap map = read(own);
        name_warnings();
        return map;
    } catch (const InputError& error) {
        name_warnings();
        throw InputError(name + ": " + error.what());
    }
}

}  // namespace

ConfigMap parse_spot_text(std::string_view text, const std::string& name,
                          std::vector<std::string>& warnings) {
    return named(name, warnings, [&](std::vector<std::string>& own) {
        return checked_map(parse_json(text, own), SpotSource::spot, own);
    });
}

ConfigMap check_project_settings(const ConfigMap& settings, const std::string& name,
                                 std::vector<std::string>& warnings) {
    json spot = json::object();
    for (const auto& [key, value] : settings) {
        std::visit([&, &key = key](const auto& content) { spot[key] = content; }, value);
    }
    return named(name, warnings, [&](std::vector<std::string>& own) {
        return checked_map(spot, SpotSource::project, own);
    });
}

ConfigMap read_spot_file(const std::string& path, std::vector<std::string>& warnings) {
    const bool from_standard_input = path == "-";
    const std::string name = from_standard_input ? "standard input" : path;
    std::ifstream file;
    if (!from_standard_input) {
        if (std::error_code ignored; std::filesystem::is_directory(path, ignored)) {
            throw InputError(name + " is a folder, not a spot");
        }
        file.open(path, std::ios::binary);
        if (!file) {
            throw InputError("cannot open " + name);
        }
    }
    std::istream& in = from_standard_input ? std::cin : file;
    std::string text;
    for (char block[65536]; in.read(block, sizeof block), in.gcount() > 0;) {
        text.append(block, static_cast<std::size_t>(in.gcount()));
        if (text.size() > max_spot_bytes) {
            throw InputError(name + " is too large for a spot");
        }
    }
    if (in.bad()) {
        throw InputError("cannot read " + name);
    }
    return parse_spot_text(text, name, warnings);
}

}  // namespace tidewell_cli
