#include "app/update/update_manager.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSettings>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

#include "app/update/web_request.h"

namespace {

const char* const manifestUrlKey = "updates/manifestUrl";
const char* const cachedManifestKey = "updates/cachedManifestJson";
const char* const cachedAtKey = "updates/cachedAt";
const char* const cachedFromKey = "updates/cachedFrom";

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
    tidewell::dropReply(checkReply_, this);
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
    return download_ && download_->stored() && !download_->path().trimmed().isEmpty();
}

double UpdateManager::downloadProgress() const {
    const qint64 total = downloadBytesTotal();
    if (total < 1) return 0.0;
    return std::clamp(static_cast<double>(downloadBytesReceived()) / static_cast<double>(total),
                      0.0, 1.0);
}

qint64 UpdateManager::downloadBytesTotal() const {
    if (!download_) return 0;
    return download_->announced() >= 0 ? download_->announced() : download_->wanted().size;
}

QString UpdateManager::downloadChecks() const {
    if (!downloaded()) return {};
    if (!host_.releaseKey.isEmpty()) return tr("Checked: length, checksum and signature.");
    if (download_->checkedDigest()) return tr("Checked: length and checksum.");
    return tr("Checked: length. The release names no checksum.");
}

void UpdateManager::checkNow() {
    lastCheckedAt_ = QDateTime::currentDateTimeUtc();
    emit stateChanged();
    if (isOccupied()) return;
    const QString address = tidewell::normalizedAddress(manifestUrl_);
    if (address.isEmpty()) return setError(tr("Update URL is not configured."));

    tidewell::dropReply(checkReply_, this);
    setBusy(true);
    setError({});
    QNetworkRequest request = tidewell::webRequest(QUrl(address));
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
    if (!tidewell::isWebAddress(downloadUrl()) || !host_.openAddress(downloadUrl())) {
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
    if (!tidewell::isWebAddress(downloadUrl())) return setError(tr("No download URL available."));
    if (refusal_ != tidewell::UpdateRefusal::None) return setError(refusalText());

    dropDownload();
    lastError_.clear();
    auto download =
        std::make_unique<tidewell::InstallerDownload>(wantedInstaller(), host_.download);
    if (!download->start(network_, downloadFolder())) {
        return setError(tr("Failed to create download file."));
    }
    download_ = std::move(download);
    connect(download_.get(), &tidewell::InstallerDownload::progressed, this,
            &UpdateManager::stateChanged);
    connect(download_.get(), &tidewell::InstallerDownload::finished, this,
            &UpdateManager::finishDownload);
    emit stateChanged();
}

void UpdateManager::installNow() {
    if (isOccupied()) return;
    if (!downloaded()) return setError(tr("No downloaded update is ready to install."));
    if (!QFileInfo::exists(download_->path())) {
        dropDownload();  // so that the next update fetches it again
        return setError(tr("Downloaded installer file is missing."));
    }
    if (!tidewell::makeExecutable(download_->path())) {
        return setError(tr("Failed to launch installer."));
    }
    installsAtEnd_ = true;
    emit stateChanged();
    host_.quit();
}

void UpdateManager::programEnds() {
    if (!installsAtEnd_ || !downloaded()) return;
    installsAtEnd_ = false;
    if (host_.startInstaller(download_->path(), tidewell::installerArguments())) {
        download_->keep();
    } else {
        setError(tr("Failed to launch installer."));
        qWarning().noquote() << "[updates]" << lastError_ << download_->path();
    }
}

void UpdateManager::clearState() {
    stopPolling();
    dropDownload();
    updateAvailable_ = false;
    manifest_ = {};
    refusal_ = tidewell::UpdateRefusal::None;
    lastError_.clear();
    lastCheckedAt_ = {};
    lastSuccessAt_ = {};
    QSettings settings;
    settings.remove(cachedManifestKey);
    settings.remove(cachedAtKey);
    settings.remove(cachedFromKey);
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
        apply(*object, QUrl(settings.value(cachedFromKey).toString()));
    }
}

void UpdateManager::apply(const QJsonObject& object, const QUrl& source) {
    manifest_ = tidewell::readManifest(object);
    refusal_ = tidewell::refusalOf(manifest_, source, host_.releaseKey);
    const bool newer = tidewell::isNewerVersion(currentVersion(), manifest_.version) &&
                       manifest_.downloadUrl.isValid();
    updateAvailable_ = newer && refusal_ == tidewell::UpdateRefusal::None;
    // What this manifest names in its place, if anything, has to be fetched anew.
    if (download_ && download_->wanted() != wantedInstaller()) {
        dropDownload();
    }
    if (newer && refusal_ != tidewell::UpdateRefusal::None) {
        lastError_ = refusalText();
    }
    emit stateChanged();
}

QString UpdateManager::refusalText() const {
    switch (refusal_) {
        case tidewell::UpdateRefusal::Malformed:
            return tr(
                "The update service names a size, checksum or signature that cannot be read.");
        case tidewell::UpdateRefusal::Insecure:
            return tr("The update is offered at an address that is not secure.");
        case tidewell::UpdateRefusal::Unsigned:
            return tr("The update is not signed by its publisher.");
        case tidewell::UpdateRefusal::None:
            break;
    }
    return {};
}

tidewell::InstallerDownload::Wanted UpdateManager::wantedInstaller() const {
    return {manifest_.downloadUrl, manifest_.version,
            tidewell::installerFileName(manifest_.downloadUrl, manifest_.version), manifest_.size,
            manifest_.sha256};
}

// Also called for a reply that still runs, once it holds more than a manifest may.
void UpdateManager::finishCheck() {
    QNetworkReply& reply = *checkReply_;
    const int status = httpStatus(reply);
    const bool failed = reply.error() != QNetworkReply::NoError;
    const QString networkError = reply.errorString();
    const QByteArray body = failed ? QByteArray() : reply.readAll();
    const QUrl source =
        reply.request().url().scheme() == "https" ? reply.request().url() : reply.url();
    tidewell::dropReply(checkReply_, this);
    setBusy(false);

    if (failed) return setError(tr("Update check failed: %1").arg(networkError));
    const auto object = tidewell::parseManifest(body);
    if (!object) return setError(tr("Invalid update response (HTTP %1).").arg(status));
    lastSuccessAt_ = QDateTime::currentDateTimeUtc();
    apply(*object, source);
    QSettings settings;
    settings.setValue(cachedManifestKey,
                      QString::fromUtf8(QJsonDocument(*object).toJson(QJsonDocument::Compact)));
    settings.setValue(cachedAtKey, lastSuccessAt_);
    settings.setValue(cachedFromKey, source.toString());
}

void UpdateManager::finishDownload() {
    if (download_->finalizeFailed()) {
        lastError_ = tr("Failed to finalize download file (HTTP %1).").arg(download_->httpStatus());
    } else if (!download_->stored()) {
        lastError_ = tr("Download failed: %1").arg(download_->error());
    }
    emit stateChanged();
}

void UpdateManager::dropDownload() {
    installsAtEnd_ = false;
    download_.reset();
}

void UpdateManager::pollInstall() {
    if (!installAfterDownload_) return;
    if (installPollsLeft_ <= 0) return stopPolling();
    --installPollsLeft_;
    if (downloadBusy()) return installPollTimer_.start(host_.installPoll);
    stopPolling();
    if (downloaded()) installNow();
}

void UpdateManager::stopPolling() {
    installAfterDownload_ = false;
    installPollTimer_.stop();
}
