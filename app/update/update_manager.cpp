#include "app/update/update_manager.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSettings>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

#include "app/files/write_all.h"
#include "app/update/update_manifest.h"

namespace {

const char* const manifestUrlKey = "updates/manifestUrl";
const char* const cachedManifestKey = "updates/cachedManifestJson";
const char* const cachedAtKey = "updates/cachedAt";

constexpr qint32 installPolls = 600;

QString chosenManifestAddress() {
    const QString candidates[] = {QSettings().value(manifestUrlKey).toString(),
                                  qEnvironmentVariable("KESTREL_UPDATE_MANIFEST_URL"),
                                  qEnvironmentVariable("KESTREL_UPDATE_URL")};
    for (const QString& candidate : candidates) {
        const QString address = tidewell::normalizedAddress(candidate);
        if (!address.isEmpty()) return address;
    }
    return tidewell::normalizedAddress(tidewell::defaultManifestAddress());
}

QString downloadFolder() {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    if (folder.trimmed().isEmpty()) {
        folder = QDir::tempPath();
    }
    if (folder.trimmed().isEmpty()) {
        folder = QDir::currentPath();
    }
    QDir().mkpath(folder);
    return folder;
}

QNetworkRequest webRequest(const QUrl& url) {
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    return request;
}

int httpStatus(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

void abortAfter(std::chrono::milliseconds limit, QNetworkReply* reply) {
    auto* const timer = new QTimer(reply);
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, reply, [reply] {
        if (reply->isRunning()) reply->abort();
    });
    timer->start(limit);
}

}  // namespace

UpdateManager::UpdateManager(QObject* parent) : UpdateManager(tidewell::UpdateHost(), parent) {}

UpdateManager::UpdateManager(tidewell::UpdateHost host, QObject* parent)
    : QObject(parent), host_(std::move(host)), manifestUrl_(chosenManifestAddress()) {
    installPollTimer_.setSingleShot(true);
    connect(&installPollTimer_, &QTimer::timeout, this, &UpdateManager::pollInstall);
    restore();
}

UpdateManager::~UpdateManager() {
    drop(checkReply_);
    dropDownload();
}

QString UpdateManager::currentVersion() const {
    return QCoreApplication::applicationVersion();
}

void UpdateManager::setManifestUrl(const QString& address) {
    const QString normalized = tidewell::normalizedAddress(address);
    if (normalized == manifestUrl_) return;
    manifestUrl_ = normalized;
    QSettings().setValue(manifestUrlKey, normalized);
    emit manifestUrlChanged();
}

bool UpdateManager::downloaded() const {
    return download_.stored && !download_.path.trimmed().isEmpty();
}

void UpdateManager::checkNow() {
    lastCheckedAt_ = QDateTime::currentDateTimeUtc();
    emit stateChanged();
    if (isOccupied()) return;
    const QString address = tidewell::normalizedAddress(manifestUrl_);
    if (address.isEmpty()) return setError(tr("Update URL is not configured."));

    drop(checkReply_);
    setBusy(true);
    setError({});
    QNetworkRequest request = webRequest(QUrl(address));
    request.setHeader(QNetworkRequest::ContentTypeHeader, "application/json");
    request.setRawHeader("Accept", "application/json");
    QNetworkReply* const reply = network_.get(request);
    checkReply_ = reply;
    abortAfter(host_.checkLimit, reply);
    connect(reply, &QNetworkReply::finished, this, &UpdateManager::finishCheck);
    connect(reply, &QNetworkReply::readyRead, this, [this, reply] {
        if (reply->bytesAvailable() > tidewell::manifestSizeLimit) finishCheck();
    });
}

void UpdateManager::openDownloadUrl() {
    // Any other kind of address might start whatever the desktop has registered for it.
    if (!tidewell::isWebAddress(downloadUrl_) || !host_.openAddress(downloadUrl_)) {
        setError(tr("No download URL available."));
    }
}

void UpdateManager::updateNow() {
    if (isOccupied()) return;
    if (!updateAvailable_) return setError(tr("No update is available."));
    if (downloaded()) return installNow();
    installAfterDownload_ = true;
    installPollsLeft_ = installPolls;
    downloadNow();
    pollInstall();
}

void UpdateManager::downloadNow() {
    if (isOccupied()) return;
    if (!tidewell::isWebAddress(downloadUrl_)) return setError(tr("No download URL available."));

    dropDownload();
    lastError_.clear();
    download_.busy = true;
    emit stateChanged();

    const QString name = tidewell::installerFileName(downloadUrl_, latestVersion_);
    download_.path = QDir(downloadFolder()).filePath(name);
    // The folder may be open to others: whoever puts a link there does not choose what is written.
    if (QFileInfo(download_.path).isSymLink()) {
        QFile::remove(download_.path);
    }
    downloadFile_ = std::make_unique<QSaveFile>(download_.path);
    if (QFileInfo(download_.path).isSymLink() || !tidewell::openForAll(*downloadFile_)) {
        dropDownload();
        return setError(tr("Failed to create download file."));
    }

    QNetworkRequest request = webRequest(downloadUrl_);
    request.setRawHeader("Accept", "*/*");
    QNetworkReply* const reply = network_.get(request);
    downloadReply_ = reply;
    abortAfter(host_.downloadLimit, reply);
    connect(reply, &QNetworkReply::downloadProgress, this, &UpdateManager::receiveProgress);
    connect(reply, &QNetworkReply::readyRead, this, &UpdateManager::storeReceived);
    connect(reply, &QNetworkReply::finished, this, &UpdateManager::finishDownload);
}

void UpdateManager::installNow() {
    if (isOccupied()) return;
    if (!downloaded()) return setError(tr("No downloaded update is ready to install."));
    if (!QFileInfo::exists(download_.path)) {
        download_ = {};  // so that the next update fetches it again
        return setError(tr("Downloaded installer file is missing."));
    }
    if (!host_.startInstaller(download_.path, tidewell::installerArguments())) {
        return setError(tr("Failed to launch installer."));
    }
    host_.quit();
}

void UpdateManager::clearState() {
    stopPolling();
    dropDownload();
    updateAvailable_ = false;
    latestVersion_.clear();
    downloadUrl_.clear();
    releaseNotes_.clear();
    lastError_.clear();
    lastCheckedAt_ = {};
    lastSuccessAt_ = {};
    QSettings settings;
    settings.remove(cachedManifestKey);
    settings.remove(cachedAtKey);
    emit stateChanged();
}

void UpdateManager::setError(const QString& error) {
    lastError_ = error;
    emit stateChanged();
}

void UpdateManager::setBusy(bool busy) {
    busy_ = busy;
    emit busyChanged();
}

void UpdateManager::restore() {
    const QSettings settings;
    const QString json = settings.value(cachedManifestKey).toString().trimmed();
    if (const auto object = tidewell::parseManifest(json.toUtf8())) {
        lastSuccessAt_ = settings.value(cachedAtKey).toDateTime();
        apply(*object);
    }
}

void UpdateManager::apply(const QJsonObject& object) {
    const tidewell::UpdateManifest manifest = tidewell::readManifest(object);
    latestVersion_ = manifest.version;
    releaseNotes_ = manifest.notes;
    downloadUrl_ = manifest.downloadUrl;
    updateAvailable_ =
        tidewell::isNewerVersion(currentVersion(), latestVersion_) && downloadUrl_.isValid();
    emit stateChanged();
}

// Also called for a reply that still runs, once it holds more than a manifest may.
void UpdateManager::finishCheck() {
    QNetworkReply& reply = *checkReply_;
    const int status = httpStatus(reply);
    const bool failed = reply.error() != QNetworkReply::NoError;
    const QString networkError = reply.errorString();
    const QByteArray body = failed ? QByteArray() : reply.readAll();
    drop(checkReply_);
    setBusy(false);

    if (failed) return setError(tr("Update check failed: %1").arg(networkError));
    const auto object = tidewell::parseManifest(body);
    if (!object) return setError(tr("Invalid update response (HTTP %1).").arg(status));
    lastSuccessAt_ = QDateTime::currentDateTimeUtc();
    apply(*object);
    QSettings settings;
    settings.setValue(cachedManifestKey,
                      QString::fromUtf8(QJsonDocument(*object).toJson(QJsonDocument::Compact)));
    settings.setValue(cachedAtKey, lastSuccessAt_);
}

void UpdateManager::receiveProgress(qint64 received, qint64 total) {
    download_.received = received;
    download_.total = total;
    download_.progress =
        total < 1
            ? 0.0
            : std::clamp(static_cast<double>(received) / static_cast<double>(total), 0.0, 1.0);
    emit stateChanged();
}

// A failed write shows when the file is committed.
void UpdateManager::storeReceived() {
    tidewell::writeAll(*downloadFile_, downloadReply_->readAll());
}

void UpdateManager::finishDownload() {
    const int status = httpStatus(*downloadReply_);
    if (downloadReply_->error() != QNetworkReply::NoError) {
        lastError_ = tr("Download failed: %1").arg(downloadReply_->errorString());
    } else {
        storeReceived();
        download_.stored = downloadFile_->commit();
        if (!download_.stored) {
            lastError_ = tr("Failed to finalize download file (HTTP %1).").arg(status);
        }
    }
    downloadFile_.reset();  // uncommitted, it takes what it wrote with it
    drop(downloadReply_);
    download_.busy = false;
    emit stateChanged();
}

void UpdateManager::dropDownload() {
    drop(downloadReply_);
    downloadFile_.reset();
    download_ = {};
}

void UpdateManager::pollInstall() {
    if (!installAfterDownload_) return;
    if (installPollsLeft_ <= 0) return stopPolling();
    --installPollsLeft_;
    if (download_.busy) return installPollTimer_.start(host_.installPoll);
    stopPolling();
    if (downloaded()) installNow();
}

void UpdateManager::stopPolling() {
    installAfterDownload_ = false;
    installPollTimer_.stop();
}

// Ends a request without a word of it reaching this object any more.
void UpdateManager::drop(QPointer<QNetworkReply>& pending) {
    QNetworkReply* const reply = pending;
    pending.clear();
    if (reply == nullptr) return;
    disconnect(reply, nullptr, this, nullptr);
    if (reply->isRunning()) reply->abort();
    reply->deleteLater();
}
