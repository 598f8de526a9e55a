#include "app/hand_ranges.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "app/board_cards.h"
#include "engine/poker/cards.h"
#include "session/hand_labels.h"
#include "session/range_edit.h"

namespace tidewell {
namespace {

using kestrel::Range;
using kestrel_app::EditedRange;

/// Within [0, 1], with so many steps from one to the other. A weight that is painted has three
/// digits after the point.
float rounded(double weight, double steps = 1000) {
    const double within = weight > 0 ? std::min(weight, 1.0) : 0.0;
    return static_cast<float>(std::round(within * steps) / steps);
}

EditedRange rangeOf(const QString& text) {
    return kestrel_app::read_edited_range(text.toStdString());
}

QString textOf(const EditedRange& range) {
    return QString::fromStdString(kestrel_app::edited_text(range));
}

std::vector<kestrel::Pocket> pocketsOf(const QString& hand) {
    const std::size_t label = kestrel_app::label_index(hand.toStdString());
    return label < kestrel_app::label_count ? kestrel_app::pockets_of_label(label)
                                            : std::vector<kestrel::Pocket>();
}

float& weightOf(Range& range, const kestrel::Pocket& pocket) {
    return range[kestrel::pocket_index(pocket.low, pocket.high)];
}

/// The text after a change of a hand's combos, as it was where that changes nothing.
template <class Change>
QString changed(const QString& text, const Change& change) {
    EditedRange range = rangeOf(text);
    const Range before = range.weights;
    change(range.weights);
    return range.weights == before ? text : textOf(range);
}

}  // namespace

QVariantMap HandRanges::read(const QString& text, const QString& board) {
    const Range range = rangeOf(text).weights;
    const kestrel::CardMask dead = boardCards(board);
    double combos = 0;
    double blocked = 0;
    for (std::size_t number = 0; number < range.size(); ++number) {
        const double weight = range[number];
        combos += weight;
        const bool meets = (kestrel::pocket_mask(kestrel::pocket_from_index(number)) & dead) != 0;
        blocked += meets ? weight : 0;
    }
    QVariantMap weights;
    QVariantMap parts;
    const auto sums = kestrel_app::combos_by_label(range);
    for (std::size_t label = 0; label < sums.size(); ++label) {
        if (sums[label].combos == 0) {
            continue;
        }
        const QString hand = QString::fromStdString(kestrel_app::hand_label(label));
        const auto pockets = kestrel_app::pockets_of_label(label);
        const auto weightIn = [&](const kestrel::Pocket& pocket) {
            return range[kestrel::pocket_index(pocket.low, pocket.high)];
        };
        const float first = weightIn(pockets.front());
        const bool same = std::ranges::all_of(
            pockets, [&](const auto& pocket) { return weightIn(pocket) == first; });
        weights[hand] = same ? double{first} : sums[label].weight / double(pockets.size());
        if (!same) {
            parts[hand] = sums[label].combos;
        }
    }
    return {{"weights", weights}, {"parts", parts}, {"combos", combos}, {"blocked", blocked}};
}

QVariantMap HandRanges::weightsOf(const QString& text) {
    return read(text, {})["weights"].toMap();
}

QVariantList HandRanges::combosOf(const QString& text, const QString& board, const QString& hand) {
    Range range = rangeOf(text).weights;
    const kestrel::CardMask dead = boardCards(board);
    QVariantList combos;
    for (const kestrel::Pocket& pocket : pocketsOf(hand)) {
        const std::string cards =
            kestrel::card_to_string(pocket.high) + kestrel::card_to_string(pocket.low);
        combos.push_back(QVariantMap{{"cards", QString::fromStdString(cards)},
                                     {"weight", weightOf(range, pocket)},
                                     {"blocked", (kestrel::pocket_mask(pocket) & dead) != 0}});
    }
    // Spades first, as suits are listed elsewhere.
    std::ranges::reverse(combos);
    return combos;
}

QString HandRanges::painted(const QString& text, const QString& hand, double weight) {
    return changed(text, [&](Range& range) {
        for (const kestrel::Pocket& pocket : pocketsOf(hand)) {
            weightOf(range, pocket) = rounded(weight);
        }
    });
}

QString HandRanges::shifted(const QString& text, const QString& hand, double difference) {
    return changed(text, [&](Range& range) {
        const auto pockets = pocketsOf(hand);
        const bool none = std::ranges::all_of(
            pockets, [&](const auto& pocket) { return weightOf(range, pocket) == 0; });
        for (const kestrel::Pocket& pocket : pockets) {
            float& weight = weightOf(range, pocket);
            if (none || weight > 0) {
                weight = rounded(weight + difference);
            }
        }
    });
}

QString HandRanges::withCombo(const QString& text, const QString& cards, double weight) {
    return changed(text, [&](Range& range) {
        try {
            const std::string combo = cards.toStdString();
            kestrel::set_weight(
                range, kestrel::parse_card(combo.substr(0, 2)),
                kestrel::parse_card(combo.substr(std::min<std::size_t>(2, combo.size()))),
                rounded(weight));
        } catch (const std::logic_error&) {
            // No combo.
        }
    });
}

QString HandRanges::inverted(const QString& text) {
    return changed(text, [](Range& range) {
        for (float& weight : range) {
            weight = rounded(1.0 - double{weight}, 1e6);
        }
    });
}

QString HandRanges::written(const QVariantMap& weights, const QString& board) {
    Range range{};
    for (std::size_t label = 0; label < kestrel_app::label_count; ++label) {
        const auto pockets = kestrel_app::pockets_of_label(label);
        const auto all = weights.find(QString::fromStdString(kestrel_app::hand_label(label)));
        std::vector<kestrel::Pocket> blocked;
        std::vector<float> open;
        for (const kestrel::Pocket& pocket : pockets) {
            if ((kestrel::pocket_mask(pocket) & boardCards(board)) != 0) {
                blocked.push_back(pocket);
                continue;
            }
            const std::string low = kestrel::card_to_string(pocket.low);
            const std::string high = kestrel::card_to_string(pocket.high);
            auto own = weights.find(QString::fromStdString(high + low));
            own = own == weights.end() ? weights.find(QString::fromStdString(low + high)) : own;
            own = own == weights.end() ? all : own;
            open.push_back(own == weights.end() ? 0 : rounded(own->toDouble()));
            weightOf(range, pocket) = open.back();
        }
        if (!open.empty() && std::ranges::count(open, open.front()) == std::ssize(open)) {
            for (const kestrel::Pocket& pocket : blocked) {
                weightOf(range, pocket) = open.front();
            }
        }
    }
    return textOf({range, {}});
}

int HandRanges::sizeOf(const QString& hand) {
    return static_cast<int>(pocketsOf(hand).size());
}

}  // namespace tidewell
