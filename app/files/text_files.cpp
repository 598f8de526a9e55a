#include "app/files/text_files.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QSaveFile>
#include <algorithm>

#include "app/files/regular_file.h"
#include "app/files/write_all.h"

namespace tidewell {
namespace {

constexpr qint64 readLimit = 2 * 1024 * 1024;  // bytes

QVariantMap failedSave(const QString& error) {
    return {{"ok", false}, {"error", error}};
}

QVariantMap failedRead(const QString& error) {
    return {{"ok", false}, {"error", error}, {"text", QString()}};
}

}  // namespace

// The messages belong to the context of the controller, which hands them to the pages.
QVariantMap saveTextFile(const QUrl& fileUrl, const QString& text) {
    if (!fileUrl.isValid() || !fileUrl.isLocalFile()) {
        return failedSave(
            QCoreApplication::translate("AppController", "Invalid/non-local file URL"));
    }
    const QString path = fileUrl.toLocalFile();
    if (path.isEmpty()) {
        return failedSave(QCoreApplication::translate("AppController", "Empty file path"));
    }
    QSaveFile file(path);
    if (!openForAll(file)) {
        return failedSave(QCoreApplication::translate("AppController", "Failed to open file: %1")
                              .arg(file.errorString()));
    }
    writeAll(file, text.toUtf8());
    QString reason;
    if (!commitAll(file, reason)) {
        return failedSave(
            QCoreApplication::translate("AppController", "Failed to save file: %1").arg(reason));
    }
    return {{"ok", true}, {"error", QString()}};
}

QVariantMap readTextFile(const QUrl& fileUrl) {
    if (!fileUrl.isValid()) return failedRead("Invalid file URL.");
    if (!fileUrl.isLocalFile()) return failedRead("Only local files are supported.");
    const QString path = fileUrl.toLocalFile();
    if (path.trimmed().isEmpty()) return failedRead("Empty file path.");

    const QString notOpened = "Failed to open file: %1";
    QFile file;
    if (const OpenRefusal refusal = openRegularFile(file, path); !file.isOpen()) {
        if (refusal.missing) return failedRead("File does not exist.");
        return failedRead(notOpened.arg(
            refusal.text != nullptr ? QCoreApplication::translate("AppController", refusal.text)
                                    : refusal.systemError));
    }
    const QString tooLarge = "File is too large (%1 bytes).";
    if (file.size() > readLimit) return failedRead(tooLarge.arg(file.size()));

    // What grows meanwhile, or is made while it is read, tells less than it holds.
    QByteArray bytes = file.read(readLimit + 1);
    if (bytes.size() > readLimit) {
        return failedRead(tooLarge.arg(std::max<qint64>(file.size(), bytes.size())));
    }
    if (file.error() != QFileDevice::NoError) return failedRead(notOpened.arg(file.errorString()));
    bytes.removeIf([](char byte) { return byte == '\r'; });
    return {{"ok", true}, {"error", QString()}, {"text", QString::fromUtf8(bytes)}};
}

QString readTextResource(const QString& path) {
    QString resource = path.trimmed();
    if (resource.startsWith("qrc:/")) {
        resource.remove(0, 3);
    } else if (resource.startsWith('/')) {
        resource.prepend(':');
    }
    if (!resource.startsWith(":/")) {
        qWarning() << "readTextResource: not a Qt resource path:" << path;
        return {};
    }
    QFile file(resource);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning() << "readTextResource: failed to open:" << resource;
        return {};
    }
    return QString::fromUtf8(file.readAll());
}

}  // namespace tidewell
