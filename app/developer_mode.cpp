#include "app/developer_mode.h"

#include <QByteArray>
#include <QDebug>
#include <QString>

#include "app/environment.h"

namespace tidewell {

bool developerModeRequested() {
    const char* const names[] = {"KESTREL_DEV_MODE", "BRIGHTLEA_DEV_MODE",
                                 "NATIVE_SOLVER_DEV_MODE"};
    QString line = QStringLiteral("[devtools] compiled_in=1");
    bool decided = false;
    bool mode = false;
    for (const char* const name : names) {
        const QByteArray value = qgetenv(name);
        line += ' ' + QString(name) + '=' + QString::fromLocal8Bit(value);
        if (!decided && !value.isEmpty()) {
            decided = true;
            mode = envFlagEnabled(name);
        }
    }
    qInfo().noquote() << line + " developerMode=" + (mode ? "true" : "false");
    return mode;
}

}  // namespace tidewell
