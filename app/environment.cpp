#include "app/environment.h"

#include <QByteArray>

namespace tidewell {

bool envFlagEnabled(const char* name) {
    const QByteArray value = qgetenv(name).trimmed().toLower();
    return value == "1" || value == "true" || value == "yes" || value == "on";
}

}  // namespace tidewell
