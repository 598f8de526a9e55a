#include <gtest/gtest.h>

#include <QBuffer>
#include <QDate>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSize>
#include <QUrl>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "app/files/flat_json.h"
#include "app/files/json_reader.h"
#include "app/files/json_value.h"

namespace tidewell {
namespace {

using nlohmann::json;
using Real = std::numeric_limits<double>;

JsonDocument read(QByteArray text) {
    QBuffer device(&text);
    EXPECT_TRUE(device.open(QIODevice::ReadOnly));
    return readJson(device, {}, [](qint64) {});
}

QVariant nested(std::size_t depth) {
    QVariant value;
    for (std::size_t i = 0; i < depth; ++i) {
        value = i % 2 == 0 ? QVariant(QVariantList{value}) : QVariant(QVariantMap{{"a", value}});
    }
    return value;
}

// Qt's own writer says what is right.
TEST(Json, HoldsVariantsAsTheLibraryWould) {
    QString controls;
    for (int code = 0; code <= 0x80; ++code) {
        controls += QChar(code);
    }
    const auto values = QVariantList()
                        << controls << "♠♥ 😀 \u2028\uffff" << 1.5F << -0.0 << 5e-324 << Real::max()
                        << Real::infinity() << 9007199254740993LL << 9007199254740993.0
                        << std::numeric_limits<qlonglong>::min() << ~qulonglong{0} << true
                        << QVariant() << QUrl("file:///a b") << QDate(2024, 2, 29) << QSize(1, 2)
                        << QStringList{"a", "b"} << nested(1023) << QVariantMap{{"\"\n", 1}}
                        << QVariantHash{{"b", 1}, {"a", QVariant(QVariantList())}}
                        << QJsonObject{{"a", QJsonArray{1, QJsonValue()}}};
    for (const QVariant& value : values) {
        const QVariant outer = QVariantMap{{"a", value}, {"b", value}};
        const QByteArray bytes = QByteArray::fromStdString(jsonOf(outer).dump());
        const QJsonDocument expected = QJsonDocument::fromVariant(outer);
        EXPECT_EQ(QJsonDocument::fromJson(bytes), expected) << bytes.left(200).toStdString();
        EXPECT_EQ(QJsonDocument::fromVariant(variantOf(read(bytes).object)), expected);
    }
    EXPECT_EQ(jsonOf(QString(QChar(0xD800))), "?");
    EXPECT_EQ(jsonOf(100.0).dump(), "100");
    EXPECT_NO_THROW(jsonOf(nested(deepestJson)));
    EXPECT_THROW(jsonOf(nested(deepestJson + 1)), std::length_error);
}

TEST(Json, IsReadInItsKinds) {
    const JsonDocument document = read(
        "\xEF\xBB\xBF"
        R"({"a": 1, "whole": [0, -12],
        "real": [1.0, 1e2, 9223372036854775808], "none": null, "a": {"c": 3}})");
    EXPECT_TRUE(document.valid);
    const QVariantMap map = variantOf(document.object).toMap();
    EXPECT_EQ(map["a"].toMap(), (QVariantMap{{"c", 3LL}}));
    EXPECT_EQ(map["none"], QVariant::fromValue(nullptr));
    EXPECT_EQ(map["real"].toList(), (QVariantList{1.0, 100.0, 9223372036854775808.0}));
    EXPECT_EQ(map["whole"].toList(), (QVariantList{0LL, -12LL}));
    EXPECT_EQ(map["whole"].toList()[0].typeId(), QMetaType::LongLong);
    EXPECT_EQ(map["real"].toList()[0].typeId(), QMetaType::Double);

    const QByteArray open(deepestJson, '[');
    const QByteArray close(deepestJson, ']');
    const std::pair<QByteArray, bool> cases[] = {{"[]", true},
                                                 {open + close, true},
                                                 {'[' + open + close + ']', false},
                                                 {QByteArray("{\"a\":").repeated(1000000), false},
                                                 {"1", false},
                                                 {"[1]x", false},
                                                 {"[1e999]", false},
                                                 {QByteArray("[1]\0", 4), false},
                                                 {QByteArray("[1]\0]", 5), false}};
    for (const auto& [text, valid] : cases) {
        EXPECT_EQ(read(text).valid, valid) << text.left(20).toStdString();
    }
}

TEST(Json, FlatObjectsNeedNoDocument) {
    const std::string odd = "\"\\\n\x01ä";
    std::string text;
    appendJsonObject(text, kestrel_app::SeatCombo{odd, "2c", 0.1});
    EXPECT_EQ(json::parse(text), json({{"c1", odd}, {"c2", "2c"}, {"weight", 0.1}}));
    appendJson(text = "", Real::infinity());
    EXPECT_EQ(text, "null");
}

}  // namespace
}  // namespace tidewell
