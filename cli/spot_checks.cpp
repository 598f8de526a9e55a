#include "cli/spot_checks.h"

#include <algorithm>
#include <exception>
#include <string_view>

#include "cli/format.h"
#include "cli/input_error.h"
#include "engine/poker/bet_size.h"
#include "engine/poker/cards.h"
#include "engine/poker/range.h"
#include "engine/poker/text.h"
#include "session/solve_config.h"

namespace tidewell_cli {
namespace {

using kestrel_app::ConfigKey;
using kestrel_app::ConfigKind;
using kestrel_app::ConfigMap;

std::string text_of(const ConfigMap& map, const char* key) {
    const auto found = map.find(key);
    if (found == map.end()) {
        throw InputError(std::string(key) + " is missing");
    }
    return kestrel_app::to_text(found->second);
}

kestrel::CardMask check_board(const std::string& text) {
    const std::string board = kestrel_app::normalize_board_text(text);
    if (board.size() != kestrel::without_white_space(text).size() ||
        (board.size() != 6 && board.size() != 8 && board.size() != 10)) {
        throw InputError("board must be three to five cards such as AdJd8s, not " +
                         in_quotes(text));
    }
    kestrel::CardMask cards = 0;
    for (std::size_t i = 0; i < board.size(); i += 2) {
        const std::string_view card = std::string_view(board).substr(i, 2);
        const kestrel::CardMask bit = kestrel::card_bit(kestrel::parse_card(card));
        if ((cards & bit) != 0) {
            throw InputError("board has " + std::string(card) + " twice");
        }
        cards |= bit;
    }
    return cards;
}

/// The item of a range that the parser stopped at, and a colon; nothing where it was the whole.
std::string faulty_item(const std::string& text) {
    const std::string items = kestrel::without_white_space(text);
    kestrel::Range scratch{};
    for (std::size_t begin = 0; begin < items.size();) {
        const std::size_t end = std::min(items.find(',', begin), items.size());
        const std::string_view item = std::string_view(items).substr(begin, end - begin);
        begin = end + 1;
        try {
            if (!item.empty()) {
                kestrel::apply_range_item(scratch, item);
            }
        } catch (const std::exception&) {
            return in_quotes(item) + ": ";
        }
    }
    return "";
}

void check_range(const std::string& key, const std::string& text, kestrel::CardMask board) {
    kestrel::Range range{};
    try {
        range = kestrel_app::parse_range_or_percent(text);
    } catch (const std::exception& error) {
        const bool percent = kestrel_app::is_percent_range(kestrel::trimmed(text));
        throw InputError(key + ": " + (percent ? "" : faulty_item(text)) +
                         shortened(error.what(), longest_message));
    }
    bool any = false;
    for (std::size_t i = 0; i < range.size(); ++i) {
        any = any || range[i] > 0;
        if (range[i] > 0 && (pocket_mask(kestrel::pocket_from_index(i)) & board) == 0) {
            return;
        }
    }
    throw InputError(key + (any ? " holds no hand that the board leaves" : " holds no hand"));
}

/// What the desktop program reads a piece as that is no size. Throws std::exception when it refuses
/// it as well.
std::string read_as(const std::string& piece, bool allow_relative) {
    const std::string list = kestrel_app::normalize_sizing_text(piece, false);
    kestrel::parse_size_list(list, allow_relative);
    return list.empty() ? "none" : in_quotes(list);
}

void check_sizes(const std::string& key, const std::string& text, SpotSource source,
                 std::vector<std::string>& warnings) {
    const bool raises = key.ends_with("_raise_sizes");
    for (const kestrel_app::SizingFault& fault : kestrel_app::sizing_faults(text, raises)) {
        const std::string head = key + ": " + in_quotes(fault.piece);
        if (!fault.reason.empty()) {
            throw InputError(head + ": " + shortened(fault.reason, longest_message));
        }
        const std::string none = head + " is no size";
        const std::string advice =
            "; write sizes such as 33, 75.5, 2e or a, with commas between them";
        if (source == SpotSource::spot) {
            throw InputError(none + advice);
        }
        try {
            warnings.push_back(none + "; it is read as " + read_as(fault.piece, raises) +
                               ", as in the desktop program");
        } catch (const std::exception&) {
            throw InputError(none + advice);
        }
    }
}

void check_street(ConfigMap& map, const std::string& board) {
    const auto street = map.find("starting_street");
    if (street == map.end()) {
        const std::size_t cards = kestrel_app::normalize_board_text(board).size() / 2;
        map["starting_street"] = cards == 3 ? "flop" : cards == 4 ? "turn" : "river";
    } else if (const std::string name = kestrel_app::to_text(street->second);
               name != "flop" && name != "turn" && name != "river") {
        throw InputError("starting_street must be flop, turn or river, not " + in_quotes(name));
    }
}

}  // namespace

void check_texts(ConfigMap& map, SpotSource source, std::vector<std::string>& warnings) {
    const std::string board = text_of(map, "board");
    const kestrel::CardMask cards = check_board(board);
    check_range("oop_range", text_of(map, "oop_range"), cards);
    check_range("ip_range", text_of(map, "ip_range"), cards);
    for (const ConfigKey& key : kestrel_app::config_keys()) {
        if (const auto sizes = map.find(key.name);
            key.kind == ConfigKind::sizing && sizes != map.end()) {
            check_sizes(key.name, kestrel_app::to_text(sizes->second), source, warnings);
        }
    }
    check_street(map, board);
}

}  // namespace tidewell_cli
