#include "app/solver_texts.h"

#include <QCoreApplication>
#include <algorithm>
#include <iterator>
#include <string_view>

namespace tidewell {
namespace {

constexpr int longestPiece = 32;  // characters; more would hide the reason in a tooltip

struct Wording {
    std::string_view message;  // or how it begins
    const char* words;
};

// Behind each message of the grammars, what it means to whoever typed the text.
constexpr Wording wordings[] = {
    {"Weight string is empty",
     QT_TRANSLATE_NOOP("SolverTexts", "no weight stands behind the colon")},
    {"invalid stof argument", QT_TRANSLATE_NOOP("SolverTexts", "the weight is no number")},
    {"stof argument out of range", QT_TRANSLATE_NOOP("SolverTexts", "the weight is no number")},
    {"Weight string contains invalid characters",
     QT_TRANSLATE_NOOP("SolverTexts", "the weight is no number")},
    {"Weight must be within [0, 1]",
     QT_TRANSLATE_NOOP("SolverTexts", "a weight lies between 0 and 1, a percentage up to 100")},
    {"Invalid percent range",
     QT_TRANSLATE_NOOP("SolverTexts", "not a percentage of all hands such as 50%")},
    {"Missing range expression",
     QT_TRANSLATE_NOOP("SolverTexts", "no hand stands before the colon")},
    {"Empty combo", QT_TRANSLATE_NOOP("SolverTexts", "a hand is missing beside the dash")},
    {"Invalid combo pattern length",
     QT_TRANSLATE_NOOP("SolverTexts", "not a hand such as AA, AKs or AhKh")},
    {"Exact combo must contain four characters",
     QT_TRANSLATE_NOOP("SolverTexts", "not a hand such as AA, AKs or AhKh")},
    {"Invalid rank character",
     QT_TRANSLATE_NOOP("SolverTexts", "not a hand: ranks are A, K, Q, J, T and 9 to 2")},
    {"Invalid suit character",
     QT_TRANSLATE_NOOP("SolverTexts", "not a hand: suits are s, h, d and c")},
    {"Invalid suitedness suffix",
     QT_TRANSLATE_NOOP("SolverTexts", "only s or o may stand behind two ranks")},
    {"First rank must be >= second rank",
     QT_TRANSLATE_NOOP("SolverTexts", "the higher rank comes first")},
    {"Pair cannot", QT_TRANSLATE_NOOP("SolverTexts", "a pair is neither suited nor offsuit")},
    {"Duplicate cards are not allowed",
     QT_TRANSLATE_NOOP("SolverTexts", "the same card stands there twice")},
    {"Expected trailing '+'", QT_TRANSLATE_NOOP("SolverTexts", "no hand stands before the plus")},
    {"Suitedness mismatch in range",
     QT_TRANSLATE_NOOP("SolverTexts", "one end is suited or offsuit and the other is not")},
    {"Unsupported range expression",
     QT_TRANSLATE_NOOP("SolverTexts", "no run leads from one of these hands to the other")},

    {"Relative raise (x) is not allowed in this context",
     QT_TRANSLATE_NOOP("SolverTexts", "a multiple of the bet is a size for raises only")},
    {"Relative raise must exceed 1.0x",
     QT_TRANSLATE_NOOP("SolverTexts", "a raise is more than 1x the bet")},
    {"Raise cap is only valid for raises",
     QT_TRANSLATE_NOOP("SolverTexts", "a cap is for raises only")},
    {"Raise cap must", QT_TRANSLATE_NOOP("SolverTexts", "a cap is written as in 500c3r")},
    {"Geometric streets must be positive",
     QT_TRANSLATE_NOOP("SolverTexts", "the number of streets is at least 1")},
    {"Integer value is out of range", QT_TRANSLATE_NOOP("SolverTexts", "the number is too large")},
    {"Failed to parse", QT_TRANSLATE_NOOP("SolverTexts", "not a size such as 33, 75%, 2e or a")},
    {"A size is more than 0", QT_TRANSLATE_NOOP("SolverTexts", "a size is more than 0")},
    {"Sizing:", QT_TRANSLATE_NOOP("SolverTexts", "not a size such as 33, 75%, 2e or a")},

    {"Flop cards must be unique", QT_TRANSLATE_NOOP("SolverTexts", "The board has a card twice")},
    {"Turn conflicts with flop", QT_TRANSLATE_NOOP("SolverTexts", "The board has a card twice")},
    {"River conflicts with existing cards",
     QT_TRANSLATE_NOOP("SolverTexts", "The board has a card twice")},
    {"Starting street does not match the board",
     QT_TRANSLATE_NOOP("SolverTexts", "The street does not match the board")},
    {"Pot and stack are too large",
     QT_TRANSLATE_NOOP("SolverTexts", "Pot and stack are too large")},
    {"The ranges can never meet",
     QT_TRANSLATE_NOOP("SolverTexts",
                       "The ranges can never meet: each hand of one holds a card of every hand of "
                       "the other")},
    {"The weights are too small",
     QT_TRANSLATE_NOOP("SolverTexts", "The weights of the ranges are too small")},
};

// What the session refuses a start with. The controller translates it at run time, where the tools
// for translators do not find it.
[[maybe_unused]] constexpr const char* refusals[] = {
    QT_TRANSLATE_NOOP("AppController", "Not ready: enter a valid board first"),
    QT_TRANSLATE_NOOP("AppController", "Not ready: select at least one hand in both ranges"),
    QT_TRANSLATE_NOOP("AppController", "Not ready: fill out both OOP and IP sizing"),
};

}  // namespace

QString reasonInWords(const QString& message) {
    const std::string text = message.toStdString();
    const auto* known = std::ranges::find_if(
        wordings, [&](const Wording& wording) { return text.starts_with(wording.message); });
    return known == std::end(wordings) ? message
                                       : QCoreApplication::translate("SolverTexts", known->words);
}

QString reasonInWords(const QString& piece, const QString& message) {
    const QString whole = piece.trimmed();
    const QString shown =
        whole.size() > longestPiece ? whole.left(longestPiece - 1) + QChar(0x2026) : whole;
    //: A piece of what was typed, and what is wrong with it
    return QCoreApplication::translate("SolverTexts", "“%1”: %2")
        .arg(shown, reasonInWords(message));
}

}  // namespace tidewell
