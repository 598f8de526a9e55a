#include "app/config_map.h"

#include <string>
#include <variant>

namespace tidewell {
namespace {

QVariant variant(const std::string& text) {
    return QString::fromStdString(text);
}

template <class Value>
QVariant variant(const Value& value) {
    return value;
}

}  // namespace

kestrel_app::ConfigMap configMapOf(const QVariantMap& map) {
    kestrel_app::ConfigMap result;
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        kestrel_app::ConfigValue& value = result[entry.key().toStdString()];
        switch (entry.value().typeId()) {
            case QMetaType::Bool:
                value = entry.value().toBool();
                break;
            case QMetaType::Int:
            case QMetaType::UInt:
            case QMetaType::LongLong:
            case QMetaType::ULongLong:
            case QMetaType::Float:
            case QMetaType::Double:
                value = entry.value().toDouble();
                break;
            default:
                value = entry.value().toString().toStdString();
        }
    }
    return result;
}

QVariantMap variantMapOf(const kestrel_app::ConfigMap& map) {
    QVariantMap result;
    for (const auto& [key, value] : map) {
        result.insert(QString::fromStdString(key),
                      std::visit([](const auto& content) { return variant(content); }, value));
    }
    return result;
}

}  // namespace tidewell
