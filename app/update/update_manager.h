#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QUrl>
#include <memory>

#include "app/update/installer_download.h"
#include "app/update/update_host.h"
#include "app/update/update_manifest.h"

class QNetworkReply;

/// Tells whether a newer version exists, downloads its installer and starts it, each only when it
/// is asked to. Every failure ends as a text in `lastError` and leaves the last good manifest in
/// force. Belongs to the GUI thread, blocks nowhere.
class UpdateManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString currentVersion READ currentVersion CONSTANT)
    Q_PROPERTY(QString manifestUrl READ manifestUrl WRITE setManifestUrl NOTIFY manifestUrlChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(QString lastError READ lastError NOTIFY stateChanged)
    Q_PROPERTY(QDateTime lastCheckedAt READ lastCheckedAt NOTIFY stateChanged)
    Q_PROPERTY(QDateTime lastSuccessAt READ lastSuccessAt NOTIFY stateChanged)
    Q_PROPERTY(bool updateAvailable READ updateAvailable NOTIFY stateChanged)
    Q_PROPERTY(QString latestVersion READ latestVersion NOTIFY stateChanged)
    Q_PROPERTY(QUrl downloadUrl READ downloadUrl NOTIFY stateChanged)
    Q_PROPERTY(QString releaseNotes READ releaseNotes NOTIFY stateChanged)
    Q_PROPERTY(bool downloadBusy READ downloadBusy NOTIFY stateChanged)
    Q_PROPERTY(double downloadProgress READ downloadProgress NOTIFY stateChanged)
    Q_PROPERTY(qint64 downloadBytesReceived READ downloadBytesReceived NOTIFY stateChanged)
    Q_PROPERTY(qint64 downloadBytesTotal READ downloadBytesTotal NOTIFY stateChanged)
    Q_PROPERTY(QString downloadedFilePath READ downloadedFilePath NOTIFY stateChanged)
    Q_PROPERTY(bool downloaded READ downloaded NOTIFY stateChanged)
    Q_PROPERTY(bool canInstall READ canInstall NOTIFY stateChanged)
    Q_PROPERTY(QString downloadChecks READ downloadChecks NOTIFY stateChanged)
    Q_PROPERTY(bool installsAtEnd READ installsAtEnd NOTIFY stateChanged)

  public:
    /// Reads the settings store, restores the last known manifest; needs no network.
    explicit UpdateManager(QObject* parent = nullptr);
    explicit UpdateManager(tidewell::UpdateHost host, QObject* parent = nullptr);
    /// Gives up what is under way.
    ~UpdateManager() override;

    QString currentVersion() const;
    QString manifestUrl() const { return manifestUrl_; }
    void setManifestUrl(const QString& address);
    bool busy() const { return busy_; }  ///< a check is running
    QString lastError() const { return lastError_; }
    QDateTime lastCheckedAt() const { return lastCheckedAt_; }  ///< UTC; of an attempt
    QDateTime lastSuccessAt() const { return lastSuccessAt_; }  ///< UTC; of a valid manifest
    bool updateAvailable() const { return updateAvailable_; }
    QString latestVersion() const { return manifest_.version; }
    QUrl downloadUrl() const { return manifest_.downloadUrl; }
    QString releaseNotes() const { return manifest_.notes; }
    bool downloadBusy() const { return download_ && download_->running(); }
    double downloadProgress() const;  ///< 0 to 1
    qint64 downloadBytesReceived() const { return download_ ? download_->received() : 0; }
    qint64 downloadBytesTotal() const;  ///< -1 while not known
    QString downloadedFilePath() const { return download_ ? download_->path() : QString(); }
    bool downloaded() const;  ///< an installer is stored completely
    bool canInstall() const { return downloaded(); }
    /// For people: what the stored installer was compared with; "" without one.
    QString downloadChecks() const;
    /// The installer starts when the program ends.
    bool installsAtEnd() const { return installsAtEnd_; }

    /// Fetches the manifest. While anything runs it only takes the time of the attempt.
    Q_INVOKABLE void checkNow();
    Q_INVOKABLE void openDownloadUrl();
    /// Downloads the installer, unless that is done, and starts it.
    Q_INVOKABLE void updateNow();
    Q_INVOKABLE void downloadNow();
    /// Asks the program to end, and has the downloaded installer start when it does: never beside a
    /// program that still holds work and stays after all.
    Q_INVOKABLE void installNow();
    /// The program ends now, and nothing can stop it any more.
    void programEnds();
    /// Forgets manifest, times and download, a running one included.
    Q_INVOKABLE void clearState();

  signals:
    void manifestUrlChanged();
    void busyChanged();
    void stateChanged();

  private:
    bool isOccupied() const { return busy_ || downloadBusy(); }
    void setError(const QString& error);
    void setBusy(bool busy);
    void restore();
    void apply(const QJsonObject& object, const QUrl& source);
    QString refusalText() const;
    tidewell::InstallerDownload::Wanted wantedInstaller() const;
    void finishCheck();
    void finishDownload();
    void dropDownload();
    void pollInstall();
    void stopPolling();

    tidewell::UpdateHost host_;
    QString manifestUrl_;
    bool busy_ = false;
    QString lastError_;
    QDateTime lastCheckedAt_;
    QDateTime lastSuccessAt_;
    bool updateAvailable_ = false;
    tidewell::UpdateManifest manifest_;
    tidewell::UpdateRefusal refusal_ = tidewell::UpdateRefusal::None;
    bool installAfterDownload_ = false;
    qint32 installPollsLeft_ = 0;
    QTimer installPollTimer_;
    bool installsAtEnd_ = false;
    QNetworkAccessManager network_;
    QPointer<QNetworkReply> checkReply_;
    std::unique_ptr<tidewell::InstallerDownload>
        download_;  ///< the last one; must go before the network
};
