#pragma once

#include <QHash>
#include <QIODevice>
#include <QStringList>
#include <functional>
#include <nlohmann/json.hpp>

namespace tidewell {

/// Takes the elements of a list inside a document one by one, which are not kept otherwise; of a
/// list that stands there twice those of both.
using JsonStream = std::function<void(const nlohmann::json&)>;

struct JsonDocument {
    bool valid = false;  ///< the text is JSON, with an object or a list outside
    nlohmann::json object =
        nlohmann::json::object();  ///< without streamed lists; empty for a list outside
    qint64 end = 0;  ///< bytes that were read; in a text that is not valid, up to what is not
};

/// Reads a JSON document piece by piece from an open device. Of a key that stands twice in an
/// object the last one counts. Text that is nested more than `deepestJson` deep is not valid.
///
/// `streams`: by path of keys from the outer object. `onBytes`: called now and then with the bytes
/// read so far.
JsonDocument readJson(QIODevice& device, const QHash<QStringList, JsonStream>& streams,
                      const std::function<void(qint64)>& onBytes);

}  // namespace tidewell
