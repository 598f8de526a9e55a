#pragma once

class QByteArray;
class QSaveFile;
class QString;

namespace tidewell {

/// Opens a file that is to be replaced as a whole. It gets no buffer: that would be written on
/// closing, and what fails there goes unnoticed.
bool openForAll(QSaveFile& file);

/// Writes all the bytes, or leaves the file with an error that makes its commit fail. Plain `write`
/// may stop half way on a full disk and report nothing but a smaller count.
void writeAll(QSaveFile& file, const QByteArray& bytes);

/// Puts the file in its place. When that or a write has failed, the former one stays, and `reason`
/// tells why.
bool commitAll(QSaveFile& file, QString& reason);

}  // namespace tidewell
