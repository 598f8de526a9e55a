#include "app/files/regular_file.h"

#include <QCoreApplication>
#include <QFile>
#include <system_error>

#include "platform/regular_file.h"

namespace tidewell {
namespace {

using tidewell_platform::FileKind;

/// Null for what can be a file.
const char* otherThanFile(FileKind kind) {
    switch (kind) {
        case FileKind::folder:
            return QT_TRANSLATE_NOOP("AppController", "This is a folder, not a file");
        case FileKind::pipe:
            return QT_TRANSLATE_NOOP("AppController", "This is a pipe, not a file");
        case FileKind::socket:
            return QT_TRANSLATE_NOOP("AppController", "This is a socket, not a file");
        case FileKind::device:
            return QT_TRANSLATE_NOOP("AppController", "This is a device, not a file");
        case FileKind::regular:
        case FileKind::missing:
        case FileKind::unknown:
            break;
    }
    return nullptr;
}

}  // namespace

OpenRefusal openRegularFile(QFile& file, const QString& path) {
    const auto opened = tidewell_platform::open_regular_file(QFile::encodeName(path).toStdString());
    OpenRefusal refusal;
    if (opened.descriptor >= 0) {
        if (!file.open(opened.descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
            refusal.systemError = file.errorString();
        }
        return refusal;
    }
    refusal.text = otherThanFile(opened.kind);
    refusal.missing = opened.kind == FileKind::missing;
    if (opened.error != 0) {
        refusal.systemError = QString::fromStdString(std::generic_category().message(opened.error));
    }
    // Where bytes make no character, Qt puts this one; a file of just that name would be there.
    if (refusal.missing && path.contains(QChar::ReplacementCharacter)) {
        refusal.text = QT_TRANSLATE_NOOP(
            "AppController", "Its name or folder is no valid UTF-8. Rename it to open it");
        refusal.missing = false;
    }
    return refusal;
}

}  // namespace tidewell
