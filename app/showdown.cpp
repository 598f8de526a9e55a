#include "app/showdown.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>

#include "engine/poker/cards.h"
#include "engine/poker/evaluator.h"

namespace tidewell {
namespace {

/// The cards that a text begins with. Throws std::invalid_argument when there are fewer.
template <std::size_t Count>
std::array<kestrel::Card, Count> firstCards(QString text) {
    text.removeIf([](QChar character) { return character.isSpace(); });
    std::array<kestrel::Card, Count> cards;
    for (std::size_t i = 0; i < Count; ++i) {
        const auto position = static_cast<qsizetype>(2 * i);
        cards[i] = kestrel::parse_card(text.mid(position, 2).toStdString());
    }
    return cards;
}

kestrel::Pocket pocketOf(const QString& text) {
    const auto [first, second] = firstCards<2>(text);
    return {std::min(first, second), std::max(first, second)};
}

QVariantMap result(const QString& winner, quint32 oopStrength, quint32 ipStrength) {
    return {{"winner", winner}, {"oopStrength", oopStrength}, {"ipStrength", ipStrength}};
}

}  // namespace

QVariantMap showdownWinner(const QString& boardText, const QString& oopText,
                           const QString& ipText) {
    try {
        const auto board = firstCards<5>(boardText);
        const kestrel::HandStrength oop = kestrel::evaluate_hand(pocketOf(oopText), board);
        const kestrel::HandStrength ip = kestrel::evaluate_hand(pocketOf(ipText), board);
        return result(oop > ip ? "OOP" : oop < ip ? "IP" : "TIE", oop, ip);
    } catch (const std::invalid_argument&) {
        return result("UNKNOWN", 0, 0);
    }
}

}  // namespace tidewell
