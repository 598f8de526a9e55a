#pragma once

#include <QHash>
#include <QIODevice>
#include <QString>
#include <QVariant>
#include <functional>

namespace tidewell {

/// A list inside a document whose elements are handed over one by one rather than kept.
struct JsonStream {
    std::function<void()> begin;  ///< a list begins; one that stands there twice begins anew
    std::function<void(const QVariant&)> element;
};

struct JsonDocument {
    bool valid = false;  ///< the text is JSON, with an object or a list outside
    QVariantMap object;  ///< without streamed lists; empty for a list outside
};

/// Reads a JSON document piece by piece from an open device. Whole numbers become qlonglong where
/// they fit, others double. Of a key that stands twice in an object the last one counts. Text that
/// is nested more than 1024 deep is not valid.
///
/// `streams`: by path from the outer object, "results/treeNodeMeta". `onBytes`: called now and then
/// with the bytes read so far; may be empty.
JsonDocument readJson(QIODevice& device, const QHash<QString, JsonStream>& streams,
                      const std::function<void(qint64)>& onBytes);

}  // namespace tidewell
