#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <chrono>
#include <functional>

#include "app/update/installer_download.h"
#include "app/update/release_signature.h"

namespace tidewell {

/// Makes a downloaded installer executable. False if that fails.
bool makeExecutable(const QString& path);

/// Starts an installer that outlives this program. False if that fails.
bool startInstaller(const QString& path, const QStringList& arguments);

/// What an installer is to be told, so that it asks nothing and replaces the running program.
QStringList installerArguments();

/// Asks the program to end once the event loop runs again. Its windows may refuse: there may be
/// work to save first.
void quitSoon();

/// Opens an address in the user's browser.
bool openInBrowser(const QUrl& url);

/// What the update manager asks of the system, and how long it waits for what.
struct UpdateHost {
    std::chrono::milliseconds checkLimit{8000};   ///< for a whole check
    InstallerDownload::Limits download;           ///< of time without progress, of size
    std::chrono::milliseconds installPoll{250};   ///< between two looks at the download
    QByteArray releaseKey = builtInReleaseKey();  ///< empty if releases need no signature
    std::function<bool(const QString&, const QStringList&)> startInstaller =
        tidewell::startInstaller;
    std::function<void()> quit = quitSoon;
    std::function<bool(const QUrl&)> openAddress = openInBrowser;
};

}  // namespace tidewell
