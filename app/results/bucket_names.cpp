#include "app/results/bucket_names.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>

#include "session/hand_classes.h"

namespace tidewell {
namespace {

// The names as the session gives them. Translators are shown what is marked here.
constexpr std::array<const char*, kestrel_app::bucket_count> names = {
    QT_TRANSLATE_NOOP("HandBuckets", "straight flush"), QT_TRANSLATE_NOOP("HandBuckets", "quads"),
    QT_TRANSLATE_NOOP("HandBuckets", "full house"), QT_TRANSLATE_NOOP("HandBuckets", "flush"),
    QT_TRANSLATE_NOOP("HandBuckets", "straight"), QT_TRANSLATE_NOOP("HandBuckets", "set"),
    QT_TRANSLATE_NOOP("HandBuckets", "trips"), QT_TRANSLATE_NOOP("HandBuckets", "two pair"),
    QT_TRANSLATE_NOOP("HandBuckets", "top pair"), QT_TRANSLATE_NOOP("HandBuckets", "overpair"),
    QT_TRANSLATE_NOOP("HandBuckets", "middle pair"),
    QT_TRANSLATE_NOOP("HandBuckets", "bottom pair"), QT_TRANSLATE_NOOP("HandBuckets", "dry pair"),
    QT_TRANSLATE_NOOP("HandBuckets", "flush draw"),
    //: A flush draw that has not become a flush by the river
    QT_TRANSLATE_NOOP("HandBuckets", "missed FD"),
    QT_TRANSLATE_NOOP("HandBuckets", "open ended straight draw"),
    //: An open ended straight draw that has not become a straight by the river
    QT_TRANSLATE_NOOP("HandBuckets", "missed OESD"), QT_TRANSLATE_NOOP("HandBuckets", "gutter"),
    QT_TRANSLATE_NOOP("HandBuckets", "missed gutter"),
    QT_TRANSLATE_NOOP("HandBuckets", "back door flush draw"),
    QT_TRANSLATE_NOOP("HandBuckets", "air")};

}  // namespace

QString bucketDisplayName(const QString& name) {
    const auto* const found =
        std::ranges::find(names, name, [](const char* known) { return QLatin1String(known); });
    return found == names.end() ? name : QCoreApplication::translate("HandBuckets", *found);
}

}  // namespace tidewell
