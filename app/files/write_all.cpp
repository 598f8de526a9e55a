#include "app/files/write_all.h"

#include <QByteArray>
#include <QSaveFile>
#include <QString>

namespace tidewell {

bool openForAll(QSaveFile& file) {
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
}

void writeAll(QSaveFile& file, const QByteArray& bytes) {
    qint64 written = 0;
    while (written < bytes.size()) {
        // After a short count the next attempt brings the reason to light.
        const qint64 count = file.write(bytes.constData() + written, bytes.size() - written);
        if (count == 0) file.cancelWriting();
        if (count <= 0) return;
        written += count;
    }
}

bool commitAll(QSaveFile& file, QString& reason) {
    // Closing forgets what went wrong before.
    const bool written = file.error() == QFileDevice::NoError;
    reason = file.errorString();
    const bool committed = file.commit();
    if (written) {
        reason = file.errorString();
    }
    return committed;
}

}  // namespace tidewell
