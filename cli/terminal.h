#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/standard_streams.h"

namespace tidewell_cli {

/// 24-bit colour.
struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const Colour&) const = default;
};

/// `share` of b in a, channel by channel.
Colour mixed(Colour a, Colour b, double share);

/// The colour of an action by its type word ("check", "bet 50%"), on a dark ground. Bets run from
/// purple to pink and raises from orange to amber as the size grows from 0 to 200 % of the pot.
Colour action_colour(std::string_view type);

/// What an output stream can show.
struct TerminalStyle {
    bool interactive = false;   ///< a terminal that can rewrite a line
    bool colours = false;       ///< a terminal, and NO_COLOR is not set
    bool full_colours = false;  ///< 24-bit rather than the palette of 256
    bool unicode = false;
    std::size_t width = 80;  ///< columns

    /// Escape sequences, empty without colours.
    std::string foreground(Colour colour) const;
    std::string background(Colour colour) const;
    std::string bold() const { return colours ? "\x1b[1m" : ""; }
    std::string reset() const { return colours ? "\x1b[0m" : ""; }
};

/// The style of a stream, from the terminal and the environment (TERM, COLORTERM, NO_COLOR, the
/// locale's character set).
TerminalStyle style_of(tidewell_platform::StandardStream stream);

namespace palette {
inline constexpr Colour ground{0x0D, 0x11, 0x17};
inline constexpr Colour surface{0x1C, 0x21, 0x28};
inline constexpr Colour muted{0x8B, 0x94, 0x9E};
inline constexpr Colour faint{0x56, 0x5E, 0x68};
inline constexpr Colour text{0xF0, 0xF6, 0xFC};
inline constexpr Colour green{0x3F, 0xB9, 0x50};
inline constexpr Colour blue{0x58, 0xA6, 0xFF};
inline constexpr Colour red{0xF8, 0x51, 0x49};
inline constexpr Colour amber{0xF0, 0xB4, 0x29};
}  // namespace palette

}  // namespace tidewell_cli
