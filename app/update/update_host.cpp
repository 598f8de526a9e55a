#include "app/update/update_host.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QProcess>
#include <QTimer>

namespace tidewell {

bool startInstaller(const QString& path, const QStringList& arguments) {
    return QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner) &&
           QProcess::startDetached(path, arguments);
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
