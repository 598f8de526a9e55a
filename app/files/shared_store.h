#pragma once

#include <QSettings>
#include <functional>

namespace tidewell {

/// Changes the application's settings store, which several windows share, so that no window undoes
/// what another has done: behind a lock that all of them respect, `change` is given the store as
/// it stands on the disk now, and what it writes is on the disk before the lock goes. A process
/// that dies meanwhile leaves the store as it was before or after its change, and a lock that the
/// next one takes over. Where no lock is to be had (in a folder that cannot be written, or from a
/// process that hangs) the change is made without one.
void changeStore(const std::function<void(QSettings&)>& change);

}  // namespace tidewell
