#include "app/write_all.h"

#include <QByteArray>
#include <QSaveFile>

namespace tidewell {

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

}  // namespace tidewell
