#include <gtest/gtest.h>

#include <QBuffer>
#include <QDate>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSize>
#include <QUrl>
#include <limits>

#include "app/files/json_reader.h"
#include "app/files/json_writer.h"

namespace tidewell {
namespace {

struct Written {
    QByteArray bytes;
    bool whole = false;
};

Written write(const QVariant& variant) {
    Written written;
    JsonWriter json([&](std::string_view bytes) {
        written.bytes.append(bytes.data(), static_cast<qsizetype>(bytes.size()));
    });
    json.value(variant);
    written.whole = json.finish();
    return written;
}

JsonDocument read(QByteArray text, const QHash<QStringList, JsonStream>& streams = {}) {
    QBuffer device(&text);
    EXPECT_TRUE(device.open(QIODevice::ReadOnly));
    return readJson(device, streams, [](qint64) {});
}

QVariant nested(std::size_t depth) {
    QVariant value;
    for (std::size_t i = 0; i < depth; ++i) {
        value = i % 2 == 0 ? QVariant(QVariantList{value}) : QVariant(QVariantMap{{"a", value}});
    }
    return value;
}

// Qt's own writer says what is right.
TEST(Json, IsWrittenAsTheLibraryWould) {
    QString controls;
    for (int code = 0; code <= 0x80; ++code) {
        controls += QChar(code);
    }
    using Real = std::numeric_limits<double>;
    const auto values = QVariantList()
                        << "" << controls << "♠♥ 😀 \u2028\uffff" << QString(300000, u'ä') << 1.5F
                        << -0.0 << 0.1 << 5e-324 << Real::max() << Real::infinity()
                        << Real::quiet_NaN() << 9007199254740993LL << 9007199254740993.0
                        << std::numeric_limits<qlonglong>::min() << ~qulonglong{0} << true
                        << QVariant() << QUrl("file:///a b") << QDate(2024, 2, 29)
                        << QStringList{"a", "b"} << QSize(1, 2) << nested(1023)
                        << QVariantHash{{"b", 1}, {"a", QVariant(QVariantList())}}
                        << QVariantMap{{"\"\n", QVariantMap()}}
                        << QJsonObject{{"a", QJsonArray{1, QJsonValue()}}};
    for (const QVariant& value : values) {
        const QVariant outer = QVariantMap{{"a", value}, {"b", value}};
        const Written written = write(outer);
        EXPECT_TRUE(written.whole);
        const QJsonDocument expected = QJsonDocument::fromVariant(outer);
        EXPECT_EQ(QJsonDocument::fromJson(written.bytes), expected)
            << written.bytes.left(200).toStdString();
        EXPECT_EQ(QJsonDocument::fromVariant(read(written.bytes).object), expected);
    }
    const QVariant indented = QVariantMap{{"a", QVariantList{1, QVariantMap{{"b", "c"}}}}};
    EXPECT_EQ(write(indented).bytes, QJsonDocument::fromVariant(indented).toJson());
    EXPECT_EQ(write(QString(QChar(0xD800))).bytes, "\"?\"\n");
}

TEST(Json, IsReadInItsKinds) {
    const JsonDocument document = read(
        "\xEF\xBB\xBF"
        R"({"a": 1, "whole": [0, -12],
        "real": [1.0, 1e2, 9223372036854775808], "none": null, "a": {"c": 3}})");
    EXPECT_TRUE(document.valid);
    const QVariantMap expected = {{"a", QVariantMap{{"c", 3LL}}},
                                  {"none", QVariant::fromValue(nullptr)},
                                  {"real", QVariantList{1.0, 100.0, 9223372036854775808.0}},
                                  {"whole", QVariantList{0LL, -12LL}}};
    EXPECT_EQ(document.object, expected);
    EXPECT_EQ(document.object["whole"].toList()[0].typeId(), QMetaType::LongLong);
    EXPECT_EQ(document.object["real"].toList()[0].typeId(), QMetaType::Double);

    EXPECT_TRUE(read("[]").valid);
    for (const QByteArray& text : {QByteArray("1"), QByteArray("[1]x"), QByteArray("[1e999]"),
                                   QByteArray("[1]\0", 4), QByteArray("[1]\0]", 5)}) {
        EXPECT_FALSE(read(text).valid) << text.toStdString();
    }
}

TEST(Json, HasALimitOfDepth) {
    EXPECT_TRUE(write(nested(deepestJson)).whole);
    const Written written = write(QVariantMap{{"a", nested(deepestJson)}, {"b", 7}});
    EXPECT_FALSE(written.whole);
    EXPECT_EQ(read(written.bytes).object["b"], 7) << "what is not too deep is written";
    const QByteArray open(deepestJson, '[');
    const QByteArray close(deepestJson, ']');
    EXPECT_TRUE(read(open + close).valid);
    EXPECT_FALSE(read('[' + open + close + ']').valid);
    EXPECT_FALSE(read(QByteArray("{\"a\":").repeated(1000000)).valid);
}

TEST(Json, HandsOverTheElementsOfStreamedLists) {
    QVariantList seen;
    const JsonStream stream{[&] { seen.append("begin"); },
                            [&](const QVariant& element) { seen.append(element); }};
    const JsonDocument document = read(
        R"({"list": [0], "a": {"list": [1, [2], {"b": 3}], "other": [4], "list": []},
            "b": [{"list": [5]}], "a/list": [6]})",
        {{{"a", "list"}, stream}});
    EXPECT_EQ(seen, (QVariantList{"begin", 1, QVariantList{2}, QVariantMap{{"b", 3}}, "begin"}));
    EXPECT_EQ(document.object["a"].toMap()["other"], QVariantList{4});
    EXPECT_EQ(document.object["list"], QVariantList{0});
}

}  // namespace
}  // namespace tidewell
