#include "app/text_checks.h"

#include <exception>
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

QString checkSizes(const QString& text, bool addAllIn, bool allowRelative) {
    return messageOf([&] {
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
