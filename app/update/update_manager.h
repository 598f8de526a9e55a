#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QSaveFile>
#include <QString>
#include <QTimer>
#include <QUrl>
#include <memory>

#include "app/update/update_host.h"

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
    QString latestVersion() const { return latestVersion_; }
    QUrl downloadUrl() const { return downloadUrl_; }
    QString releaseNotes() const { return releaseNotes_; }
    bool downloadBusy() const { return download_.busy; }
    double downloadProgress() const { return download_.progress; }  ///< 0 to 1
    qint64 downloadBytesReceived() const { return download_.received; }
    qint64 downloadBytesTotal() const { return download_.total; }  ///< -1 while not known
    QString downloadedFilePath() const { return download_.path; }
    bool downloaded() const;  ///< an installer is stored completely
    bool canInstall() const { return downloaded(); }

    /// Fetches the manifest. While anything runs it only takes the time of the attempt.
    Q_INVOKABLE void checkNow();
    Q_INVOKABLE void openDownloadUrl();
    /// Downloads the installer, unless that is done, and starts it.
    Q_INVOKABLE void updateNow();
    Q_INVOKABLE void downloadNow();
    /// Starts the downloaded installer and quits the program.
    Q_INVOKABLE void installNow();
    /// Forgets manifest, times and download, a running one included.
    Q_INVOKABLE void clearState();

  signals:
    void manifestUrlChanged();
    void busyChanged();
    void stateChanged();

  private:
    struct Download {
        bool busy = false;
        double progress = 0.0;
        qint64 received = 0;
        qint64 total = 0;
        QString path;
        bool stored = false;  ///< whole and at its path
    };

    bool isOccupied() const { return busy_ || download_.busy; }
    void setError(const QString& error);
    void setBusy(bool busy);
    void restore();
    void apply(const QJsonObject& object);
    void finishCheck();
    void receiveProgress(qint64 received, qint64 total);
    void storeReceived();
    void finishDownload();
    void dropDownload();
    void pollInstall();
    void stopPolling();
    void drop(QPointer<QNetworkReply>& pending);

    tidewell::UpdateHost host_;
    QString manifestUrl_;
    bool busy_ = false;
    QString lastError_;
    QDateTime lastCheckedAt_;
    QDateTime lastSuccessAt_;
    bool updateAvailable_ = false;
    QString latestVersion_;
    QUrl downloadUrl_;
    QString releaseNotes_;
    Download download_;
    bool installAfterDownload_ = false;
    qint32 installPollsLeft_ = 0;
    QTimer installPollTimer_;
    std::unique_ptr<QSaveFile> downloadFile_;  ///< set as long as a download runs
    QNetworkAccessManager network_;
    QPointer<QNetworkReply> checkReply_;
    QPointer<QNetworkReply> downloadReply_;
};
