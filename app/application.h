#pragma once

#include <QUrl>

class QQmlApplicationEngine;

namespace tidewell {

/// The whole program but for main: start-up, event loop and the orderly end. Returns the exit code,
/// -1 when the document gives no object. Both arguments are those of main and must outlive the
/// call; other documents than the program's own are for tests.
int runApplication(int& argc, char** argv,
                   const QUrl& document = QUrl(QStringLiteral("qrc:/Tidewell/Main.qml")));

/// Logs the warnings of the engine, and ends the event loop with -1 when it fails to create a
/// document's object.
void reportFailures(QQmlApplicationEngine& engine);

}  // namespace tidewell
