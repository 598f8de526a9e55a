#pragma once

#include <QVariant>
#include <cstddef>
#include <nlohmann/json_fwd.hpp>

namespace tidewell {

/// Levels of lists and objects that a document may have: as many as Qt's own reader takes.
inline constexpr std::size_t deepestJson = 1024;

/// Maps, lists, texts, numbers and flags at any depth up to `levels`, and whatever else Qt tells as
/// a text; null for the rest and for a number that JSON has not. Half a surrogate pair becomes a
/// question mark. Throws std::length_error for what is nested deeper.
nlohmann::json jsonOf(const QVariant& variant, std::size_t levels = deepestJson);

/// Whole numbers become qlonglong where they fit, others double, null a nullptr.
QVariant variantOf(const nlohmann::json& value);

}  // namespace tidewell
