#include "app/text_checks.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <exception>
#include <string>

#include "app/board_cards.h"
#include "app/solver_texts.h"
#include "engine/poker/cards.h"
#include "engine/poker/range.h"
#include "engine/poker/text.h"
#include "session/solve_config.h"

namespace tidewell {
namespace {

using kestrel::Range;

template <class Parse>
QString messageOf(const Parse& parse) {
    try {
        parse();
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

std::string withoutSpace(const QString& text) {
    std::string bytes = text.toStdString();
    std::erase_if(bytes, kestrel::is_space);
    return bytes;
}

/// The first item of a list that is refused, with the reason.
QString itemMistake(const QString& text) {
    Range range{};
    for (const QString& piece : text.split(',')) {
        const std::string item = withoutSpace(piece);
        if (item.empty()) {
            continue;
        }
        const QString message = messageOf([&] { kestrel::apply_range_item(range, item); });
        if (!message.isEmpty()) {
            return reasonInWords(piece, message);
        }
    }
    return {};
}

/// Fills the range, or says why there is none.
QString parseRange(const QString& text, Range& range) {
    const std::string bytes = text.toStdString();
    const QString message = messageOf([&] { range = kestrel_app::parse_range_or_percent(bytes); });
    if (message.isEmpty()) {
        return message;
    }
    const bool isPercentage = kestrel_app::is_percent_range(kestrel::trimmed(bytes));
    return isPercentage ? reasonInWords(text, message) : itemMistake(text);
}

bool isDealt(float weight) {
    return weight > 0;
}

QString checkSizes(const QString& text, bool allowRelative) {
    const auto faults = kestrel_app::sizing_faults(text.toStdString(), allowRelative);
    if (faults.empty()) {
        return {};
    }
    const kestrel_app::SizingFault& first = faults.front();
    return reasonInWords(
        QString::fromStdString(first.piece),
        first.reason.empty() ? QStringLiteral("Sizing:") : QString::fromStdString(first.reason));
}

}  // namespace

QString TextChecks::checkRange(const QString& text, const QString& board) {
    Range range{};
    const QString mistake = parseRange(text, range);
    if (!mistake.isEmpty() || withoutSpace(text).find_first_not_of(',') == std::string::npos) {
        return mistake;
    }
    if (std::ranges::none_of(range, isDealt)) {
        return QCoreApplication::translate("SolverTexts", "no hand has a weight above 0");
    }
    const kestrel::CardMask dead = boardCards(board);
    for (std::size_t number = 0; number < range.size(); ++number) {
        const kestrel::CardMask hand = kestrel::pocket_mask(kestrel::pocket_from_index(number));
        if (isDealt(range[number]) && (hand & dead) == 0) {
            return {};
        }
    }
    return QCoreApplication::translate("SolverTexts", "every hand holds a card of the board");
}

QString TextChecks::checkBetSizes(const QString& text) {
    return checkSizes(text, false);
}

QString TextChecks::checkRaiseSizes(const QString& text) {
    return checkSizes(text, true);
}

QString TextChecks::inWords(const QString& message) {
    return reasonInWords(message);
}

}  // namespace tidewell
