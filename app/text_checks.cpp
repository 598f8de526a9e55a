#include "app/text_checks.h"

#include <QRegularExpression>
#include <exception>
#include <stdexcept>
#include <string>

#include "engine/poker/bet_size.h"
#include "session/solve_config.h"

namespace tidewell {
namespace {

template <class Parse>
QString messageOf(const Parse& parse) {
    try {
        parse();
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

/// The solver drops what it does not know in a text of sizes, blanks as well: "33 75" is 3375 to
/// it. A dash says that there are none.
void refuseStrayCharacters(const QString& text) {
    static const QRegularExpression sizes(
        QStringLiteral(
            R"(^\s*-?\s*$|^\s*[0-9%.acerx]*(\s*%)?\s*(,\s*[0-9%.acerx]+(\s*%)?\s*)*,?\s*$)"),
        QRegularExpression::CaseInsensitiveOption);
    if (!sizes.match(text).hasMatch()) {
        throw std::invalid_argument(
            "Sizing: write sizes such as 33, 75.5, 2e or a, with commas between them");
    }
}

QString checkSizes(const QString& text, bool addAllIn, bool allowRelative) {
    return messageOf([&] {
        refuseStrayCharacters(text);
        const std::string list = kestrel_app::normalize_sizing_text(text.toStdString(), addAllIn);
        kestrel::parse_size_list(list, allowRelative);
    });
}

}  // namespace

QString TextChecks::checkRange(const QString& text) {
    return messageOf([&] { kestrel_app::parse_range_or_percent(text.toStdString()); });
}

QString TextChecks::checkBetSizes(const QString& text, bool addAllIn) {
    return checkSizes(text, addAllIn, false);
}

QString TextChecks::checkRaiseSizes(const QString& text, bool addAllIn) {
    return checkSizes(text, addAllIn, true);
}

}  // namespace tidewell
