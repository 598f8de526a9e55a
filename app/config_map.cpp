#include "app/config_map.h"

namespace tidewell {

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

}  // namespace tidewell
