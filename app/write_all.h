#pragma once

class QByteArray;
class QSaveFile;

namespace tidewell {

/// Writes all the bytes, or leaves the file with an error that makes its commit fail. Plain `write`
/// may stop half way on a full disk and report nothing but a smaller count.
void writeAll(QSaveFile& file, const QByteArray& bytes);

}  // namespace tidewell
