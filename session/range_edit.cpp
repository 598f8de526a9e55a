#include "session/range_edit.h"

#include <algorithm>
#include <exception>
#include <new>

#include "engine/poker/range_writer.h"
#include "engine/poker/text.h"
#include "session/hand_labels.h"
#include "session/solve_config.h"

namespace kestrel_app {
namespace {

using kestrel::Range;

template <class Read>
bool is_read(const Read& read) {
    try {
        read();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return false;
    }
    return true;
}

/// "50%" where that is read as the weight; empty where no percentage is.
std::string percent_text(float weight) {
    const std::string text = kestrel::shortest_text(weight * 100.0F) + "%";
    Range read{};
    const bool same = is_percent_range(text) &&
                      is_read([&] { read = parse_range_or_percent(text); }) &&
                      read.front() == weight;
    return same ? text : "";
}

}  // namespace

EditedRange read_edited_range(std::string_view text) {
    EditedRange range;
    if (is_percent_range(kestrel::trimmed(text))) {
        if (!is_read([&] { range.weights = parse_range_or_percent(text); })) {
            range.refused.emplace_back(kestrel::trimmed(text));
        }
        return range;
    }
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::string_view piece = kestrel::trimmed(text.substr(begin, end - begin));
        const std::string item = kestrel::without_white_space(piece);
        begin = end + 1;
        if (!item.empty() && !is_read([&] { kestrel::apply_range_item(range.weights, item); })) {
            range.refused.emplace_back(piece);
        }
    }
    return range;
}

std::string edited_text(const EditedRange& range) {
    const float first = range.weights.front();
    const bool uniform = std::ranges::all_of(range.weights, [&](float w) { return w == first; });
    std::string text;
    if (uniform && first > 0 && range.refused.empty()) {
        text = percent_text(first);
    }
    if (text.empty()) {
        text = kestrel::write_range(range.weights);
    }
    for (const std::string& piece : range.refused) {
        text += (text.empty() ? "" : ", ") + piece;
    }
    return text;
}

std::vector<ComboSum> combos_by_label(const Range& range) {
    std::vector<ComboSum> sums(label_count);
    for (std::size_t number = 0; number < range.size(); ++number) {
        if (range[number] > 0) {
            ComboSum& sum = sums[label_index(kestrel::pocket_from_index(number))];
            ++sum.combos;
            sum.weight += range[number];
        }
    }
    return sums;
}

std::vector<kestrel::Pocket> pockets_of_label(std::size_t label) {
    std::vector<kestrel::Pocket> pockets;
    for (const auto number : kestrel::expand_pattern(kestrel::parse_pattern(hand_label(label)))) {
        pockets.push_back(kestrel::pocket_from_index(number));
    }
    return pockets;
}

}  // namespace kestrel_app
