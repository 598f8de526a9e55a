#include "app/files/json_value.h"

#include <QJsonValue>
#include <QVariantList>
#include <QVariantMap>
#include <cmath>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>

namespace tidewell {
namespace {

using nlohmann::json;

std::string utf8(const QString& text) {
    return text.toUtf8().toStdString();
}

/// Whole ones without a fraction, as far as a double tells every whole number from its neighbours.
json numberOf(double number) {
    constexpr double mostExact = 9007199254740992.0;  // 2^53
    const bool whole = std::abs(number) < mostExact && std::trunc(number) == number;
    return whole ? json(static_cast<qlonglong>(number)) : json(number);
}

json objectOf(const QVariantMap& map, std::size_t levels) {
    json object = json::object();
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        object[utf8(entry.key())] = jsonOf(entry.value(), levels);
    }
    return object;
}

json arrayOf(const QVariantList& list, std::size_t levels) {
    json array = json::array();
    for (const QVariant& element : list) {
        array.push_back(jsonOf(element, levels));
    }
    return array;
}

}  // namespace

json jsonOf(const QVariant& variant, std::size_t levels) {
    const bool nested = variant.canConvert<QVariantMap>() || variant.canConvert<QVariantList>();
    switch (variant.typeId()) {
        case QMetaType::QString:
            return utf8(variant.toString());
        case QMetaType::Bool:
            return variant.toBool();
        case QMetaType::Int:
        case QMetaType::LongLong:
            return variant.toLongLong();
        case QMetaType::Float:
        case QMetaType::Double:
        case QMetaType::UInt:
        case QMetaType::ULongLong:
            return numberOf(variant.toDouble());
        default:
            break;
    }
    if (nested && levels == 0) {
        throw std::length_error("nested too deeply");
    }
    if (variant.canConvert<QVariantMap>()) {
        return objectOf(variant.toMap(), levels - 1);
    }
    if (variant.canConvert<QVariantList>()) {
        return arrayOf(variant.toList(), levels - 1);
    }
    const QJsonValue other = QJsonValue::fromVariant(variant);
    return other.isString() ? json(utf8(other.toString())) : json();
}

QVariant variantOf(const json& value) {
    switch (value.type()) {
        case json::value_t::object: {
            QVariantMap map;
            for (const auto& [key, member] : value.items()) {
                map.insert(QString::fromStdString(key), variantOf(member));
            }
            return map;
        }
        case json::value_t::array: {
            QVariantList list;
            for (const json& element : value) {
                list.append(variantOf(element));
            }
            return list;
        }
        case json::value_t::string:
            return QString::fromStdString(value.get_ref<const std::string&>());
        case json::value_t::boolean:
            return value.get<bool>();
        case json::value_t::number_integer:
            return static_cast<qlonglong>(value.get<std::int64_t>());
        case json::value_t::number_unsigned:
            return std::in_range<qlonglong>(value.get<std::uint64_t>())
                       ? QVariant(static_cast<qlonglong>(value.get<std::int64_t>()))
                       : QVariant(value.get<double>());
        case json::value_t::number_float:
            return value.get<double>();
        default:
            return QVariant::fromValue(nullptr);
    }
}

}  // namespace tidewell
