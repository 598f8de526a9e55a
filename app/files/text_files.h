#pragma once

#include <QString>
#include <QUrl>
#include <QVariantMap>

namespace tidewell {

/// Writes a text as UTF-8 to a local file, whole or not at all: a failure leaves the former file.
/// The answer has "ok" (bool) and "error" (string, translated, "" when ok).
QVariantMap saveTextFile(const QUrl& fileUrl, const QString& text);

/// Reads a local UTF-8 text file of at most 2 MiB, with line ends as "\n". The answer has "ok"
/// (bool), "error" (string, "" when ok) and "text" (string, "" unless ok).
QVariantMap readTextFile(const QUrl& fileUrl);

/// A UTF-8 text out of the program's resources, by "qrc:/name", ":/name" or "/name". Anything else
/// and what cannot be read gives "" and a warning in the log.
QString readTextResource(const QString& path);

}  // namespace tidewell
