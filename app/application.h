#pragma once

#include <QUrl>

class QQmlApplicationEngine;

namespace tidewell {

/// How a program starts that is this one or, in tests, much like it.
struct Start {
    QUrl document = QUrl(QStringLiteral("qrc:/Tidewell/Main.qml"));
    bool opensFile = false;  ///< that the arguments name; otherwise they are somebody else's
};

/// The whole program but for main: start-up, event loop and the orderly end. Returns the exit code,
/// -1 when the document gives no object, 2 when the arguments make no sense. `argc` and `argv` are
/// those of main and must outlive the call.
int runApplication(int& argc, char** argv, const Start& start = {});

/// Logs the warnings of the engine, and ends the event loop with -1 when it fails to create a
/// document's object.
void reportFailures(QQmlApplicationEngine& engine);

}  // namespace tidewell
