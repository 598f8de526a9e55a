#include "app/play/dealing.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>

namespace tidewell {
namespace {

using kestrel::Card;
using kestrel::CardMask;

std::optional<Card> cardOf(const std::string& text) {
    try {
        return kestrel::parse_card(text);
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

}  // namespace

std::optional<std::size_t> Chance::pick(std::span<const double> weights) {
    const auto counts = [](double weight) { return std::isfinite(weight) && weight > 0; };
    double total = 0;
    for (const double weight : weights) {
        total += counts(weight) ? weight : 0;
    }
    std::optional<std::size_t> picked;
    double left = std::uniform_real_distribution<double>()(generator_) * total;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        if (!counts(weights[i])) {
            continue;
        }
        picked = i;  // the last one, if rounding leaves a remainder
        left -= weights[i];
        if (left <= 0) {
            break;
        }
    }
    return picked;
}

CardMask maskOf(const std::optional<Hole>& hole) {
    return hole ? kestrel::card_bit((*hole)[0]) | kestrel::card_bit((*hole)[1]) : 0;
}

CardMask cardsOf(const QString& board) {
    const std::string text = board.toStdString();
    CardMask cards = 0;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        if (const auto card = cardOf(text.substr(i, 2))) {
            cards |= kestrel::card_bit(*card);
        }
    }
    return cards;
}

ShownSuits::ShownSuits(const QString& images) : image_{0, 1, 2, 3}, source_{0, 1, 2, 3} {
    QString sorted = images;
    std::ranges::sort(sorted);
    if (sorted != QStringLiteral("cdhs")) {
        return;
    }
    for (std::size_t suit = 0; suit < image_.size(); ++suit) {
        image_[suit] = kestrel::parse_suit(images[static_cast<qsizetype>(suit)].toLatin1());
        source_[static_cast<std::size_t>(image_[suit])] = static_cast<int>(suit);
    }
}

Card ShownSuits::shown(Card kept) const {
    const auto suit = static_cast<std::size_t>(kestrel::suit_of(kept));
    return static_cast<Card>(kestrel::rank_of(kept) * kestrel::suit_count + image_[suit]);
}

Card ShownSuits::kept(Card shown) const {
    const auto suit = static_cast<std::size_t>(kestrel::suit_of(shown));
    return static_cast<Card>(kestrel::rank_of(shown) * kestrel::suit_count + source_[suit]);
}

std::optional<Hole> dealHand(const std::vector<kestrel_app::SeatCombo>& range, CardMask used,
                             const ShownSuits& suits, Chance& chance) {
    std::vector<Hole> hands;
    std::vector<double> weights;
    for (const kestrel_app::SeatCombo& combo : range) {
        const auto first = cardOf(combo.c1);
        const auto second = cardOf(combo.c2);
        if (first && second && first != second) {
            const Hole hole = suits.shown(Hole{*first, *second});
            hands.push_back(hole);
            weights.push_back((maskOf(hole) & used) == 0 ? combo.weight : 0);
        }
    }
    const auto picked = chance.pick(weights);
    return picked ? std::optional(hands[*picked]) : std::nullopt;
}

}  // namespace tidewell
