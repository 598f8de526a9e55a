#include "cli/terminal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "engine/poker/text.h"

namespace tidewell_cli {
namespace {

std::string_view environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// Hue, saturation and lightness in [0, 1].
Colour from_hsl(double hue, double saturation, double lightness) {
    const double chroma = saturation * std::min(lightness, 1.0 - lightness);
    const auto channel = [&](double offset) {
        const double k = std::fmod(offset + hue * 12.0, 12.0);
        const double value = lightness - chroma * std::max(-1.0, std::min({k - 3.0, 9.0 - k, 1.0}));
        return static_cast<std::uint8_t>(std::lround(value * 255.0));
    };
    return {channel(0.0), channel(8.0), channel(4.0)};
}

/// The nearest entry of the 6 x 6 x 6 cube or the grey ramp of the 256-colour palette.
int palette_index(Colour colour) {
    constexpr std::array<int, 6> levels = {0, 95, 135, 175, 215, 255};
    const auto nearest = [&](int value) {
        return static_cast<int>(
            std::ranges::min_element(levels, {},
                                     [&](int level) { return std::abs(level - value); }) -
            levels.begin());
    };
    const auto distance = [&](int red, int green, int blue) {
        const int r = red - colour.red;
        const int g = green - colour.green;
        const int b = blue - colour.blue;
        return r * r + g * g + b * b;
    };
    const int red = nearest(colour.red);
    const int green = nearest(colour.green);
    const int blue = nearest(colour.blue);
    const int mean = (colour.red + colour.green + colour.blue) / 3;
    const int step = std::clamp((mean - 3) / 10, 0, 23);
    const int grey = 8 + 10 * step;
    const auto level = [&](int index) { return levels[static_cast<std::size_t>(index)]; };
    if (distance(grey, grey, grey) < distance(level(red), level(green), level(blue))) {
        return 232 + step;
    }
    return 16 + 36 * red + 6 * green + blue;
}

std::string colour_sequence(bool full, const char* layer, Colour colour) {
    if (!full) {
        return "\x1b[" + std::string(layer) + ";5;" + std::to_string(palette_index(colour)) + "m";
    }
    return "\x1b[" + std::string(layer) + ";2;" + std::to_string(colour.red) + ";" +
           std::to_string(colour.green) + ";" + std::to_string(colour.blue) + "m";
}

}  // namespace

Colour mixed(Colour a, Colour b, double share) {
    const auto channel = [&](int from, int to) {
        return static_cast<std::uint8_t>(std::lround(from + share * (to - from)));
    };
    return {channel(a.red, b.red), channel(a.green, b.green), channel(a.blue, b.blue)};
}

Colour action_colour(std::string_view type) {
    const std::size_t blank = type.find(' ');
    const std::string_view kind = type.substr(0, blank);
    if (blank != std::string_view::npos) {
        const double percent = kestrel::read_double(type.substr(blank)).value;
        const double t = std::clamp(percent / 200.0, 0.0, 1.0);
        if (kind == "bet") {
            return from_hsl(0.72 + 0.12 * t, 0.70, 0.62 + 0.10 * t);
        }
        if (kind == "raise") {
            return from_hsl(0.07 + 0.04 * t, 0.78, 0.60 + 0.12 * t);
        }
    }
    if (kind == "fold") {
        return {0xE0, 0x6C, 0x75};
    }
    if (kind == "check") {
        return palette::green;
    }
    if (kind == "call") {
        return palette::blue;
    }
    if (kind == "bet") {
        return {0xA3, 0x71, 0xF7};
    }
    if (kind == "raise") {
        return {0xF0, 0x88, 0x3E};
    }
    if (kind == "allin") {
        return {0xFF, 0x7B, 0x72};
    }
    return palette::muted;
}

std::string TerminalStyle::foreground(Colour colour) const {
    return colours ? colour_sequence(full_colours, "38", colour) : "";
}

std::string TerminalStyle::background(Colour colour) const {
    return colours ? colour_sequence(full_colours, "48", colour) : "";
}

TerminalStyle style_of(tidewell_platform::StandardStream stream) {
    TerminalStyle style;
    style.interactive = tidewell_platform::is_terminal(stream) && environment("TERM") != "dumb";
    if (!style.interactive) {
        return style;
    }
    style.colours = environment("NO_COLOR").empty();
    style.full_colours =
        environment("COLORTERM") == "truecolor" || environment("COLORTERM") == "24bit";
    std::string locale(environment("LC_ALL"));
    if (locale.empty()) {
        locale = environment("LC_CTYPE");
    }
    if (locale.empty()) {
        locale = environment("LANG");
    }
    locale = kestrel::lower_case(locale);
    style.unicode =
        locale.find("utf-8") != std::string::npos || locale.find("utf8") != std::string::npos;
    if (const std::size_t columns = tidewell_platform::terminal_columns(stream); columns > 0) {
        style.width = columns;
    }
    return style;
}

}  // namespace tidewell_cli
