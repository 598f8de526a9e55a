#pragma once

#include <QtGlobal>

namespace tidewell {

/// Logical processors that this process may run on, at least 1.
int logicalProcessorCount();

/// The choice behind it: what the system reports, else (when that is below 1 or beyond 31 bits)
/// Qt's figure, else the standard library's. What is below 2 counts as 1.
int chooseProcessorCount(qint64 reported, int ideal, unsigned hardware);

/// Physical memory in bytes, all of it and what is available, each within the limits of a
/// container. 0 when unknown.
quint64 totalMemoryBytes();
quint64 availableMemoryBytes();

}  // namespace tidewell
