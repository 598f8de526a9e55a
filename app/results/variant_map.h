#pragma once

#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "app/results/told.h"

namespace tidewell {

inline QVariant variant(double number) {
    return number;
}

inline QVariant variant(int number) {
    return number;
}

inline QVariant variant(bool flag) {
    return flag;
}

inline QVariant variant(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

inline QVariant variant(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

template <class Element>
QVariant variant(const std::vector<Element>& elements) {
    QVariantList list;
    list.reserve(static_cast<qsizetype>(elements.size()));
    for (const Element& element : elements) {
        list.append(variant(element));
    }
    return list;
}

template <class Value>
QVariant variant(const std::map<std::string, Value>& members) {
    QVariantMap map;
    for (const auto& [key, value] : members) {
        map.insert(map.cend(), QString::fromStdString(key), variant(value));
    }
    return map;
}

/// What `tell` has to say of its arguments, as the pages read it.
template <class... Told>
QVariantMap variantMap(const Told&... told) {
    QVariantMap map;
    tell(told..., [&](const char* key, const auto& value) { map.insert(key, variant(value)); });
    return map;
}

}  // namespace tidewell
