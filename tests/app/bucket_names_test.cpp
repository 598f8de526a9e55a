#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTranslator>

#include "app/results/bucket_names.h"
#include "session/hand_classes.h"

namespace tidewell {
namespace {

struct Marking : QTranslator {
    QString translate(const char* context, const char* text, const char*, int) const override {
        return qstrcmp(context, "HandBuckets") == 0 ? '<' + QString(text) + '>' : QString();
    }
};

TEST(BucketNames, TranslatesWhatTheSessionKnows) {
    Marking marking;
    QCoreApplication::installTranslator(&marking);
    for (std::size_t i = 0; i < kestrel_app::bucket_count; ++i) {
        const std::string name(tag_name(static_cast<kestrel_app::HandTag>(i)));
        EXPECT_EQ(bucketDisplayName(QString::fromStdString(name)).toStdString(), '<' + name + '>');
    }
    EXPECT_EQ(bucketDisplayName("of another time"), "of another time");
}

}  // namespace
}  // namespace tidewell
