#pragma once

#include <QString>

class QFile;

namespace tidewell {

/// Why a path was not opened, in words for a person.
struct OpenRefusal {
    /// "This is a pipe, not a file": a source text for the context AppController. Null when the
    /// file was opened, and where the system alone knows the reason.
    const char* text = nullptr;
    QString systemError;   ///< "Permission denied"; empty unless the system refused
    bool missing = false;  ///< nothing stands there
};

/// Opens a regular file for reading, in bytes, whatever its folder and symbolic links; nothing else
/// is opened, so that neither a pipe nor a device keeps the caller waiting. On success `file` is
/// open. A name that is no UTF-8 cannot be told from its path any more, which is then the refusal.
OpenRefusal openRegularFile(QFile& file, const QString& path);

}  // namespace tidewell
