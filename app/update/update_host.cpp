#include "app/update/update_host.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QProcess>
#include <QTimer>

namespace tidewell {

bool makeExecutable(const QString& path) {
    return QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

bool startInstaller(const QString& path, const QStringList& arguments) {
    return QProcess::startDetached(path, arguments);
}

QStringList installerArguments() {
#ifdef Q_OS_WIN
    return {"/VERYSILENT", "/SUPPRESSMSGBOXES", "/NORESTART", "/CLOSEAPPLICATIONS"};
#else
    return {};
#endif
}

void quitSoon() {
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
}

bool openInBrowser(const QUrl& url) {
    return QDesktopServices::openUrl(url);
}

}  // namespace tidewell
