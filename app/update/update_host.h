#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>
#include <chrono>
#include <functional>

namespace tidewell {

/// Makes a downloaded installer executable and starts it on its own. False if either fails.
bool startInstaller(const QString& path, const QStringList& arguments);

/// What an installer is to be told, so that it asks nothing and replaces the running program.
QStringList installerArguments();

/// Ends the program once the event loop runs again.
void quitSoon();

/// Opens an address in the user's browser.
bool openInBrowser(const QUrl& url);

/// What the update manager asks of the system, and how long it waits for what.
struct UpdateHost {
    std::chrono::milliseconds checkLimit{8000};      ///< for a whole check
    std::chrono::milliseconds downloadLimit{30000};  ///< for a whole download
    std::chrono::milliseconds installPoll{250};      ///< between two looks at the download
    std::function<bool(const QString&, const QStringList&)> startInstaller =
        tidewell::startInstaller;
    std::function<void()> quit = quitSoon;
    std::function<bool(const QUrl&)> openAddress = openInBrowser;
};

}  // namespace tidewell
