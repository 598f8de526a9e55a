#include "app/update/update_manifest.h"

#include <QJsonDocument>
#include <QStringView>
#include <algorithm>

#include "app/update/release_signature.h"

namespace tidewell {
namespace {

bool isPlainFileName(const QString& name) {
    static const QString reserved = "/\\:*?\"<>|";  // the separators, and what Windows refuses
    const auto codePoints = name.toUcs4();
    return !name.isEmpty() && !name.startsWith('.') && !name.endsWith('.') &&
           std::all_of(codePoints.begin(), codePoints.end(), [](uint codePoint) {
               return QChar::isPrint(codePoint) &&
                      (codePoint > 0x7F || !reserved.contains(QChar(codePoint)));
           });
}

}  // namespace

QString defaultManifestAddress() {
    return TIDEWELL_UPDATE_URL;
}

QString normalizedAddress(const QString& address) {
    QString normalized = address.trimmed();
    while (normalized.endsWith('/')) {
        normalized.chop(1);
    }
    return normalized;
}

std::optional<QJsonObject> parseManifest(const QByteArray& json) {
    if (json.size() > manifestSizeLimit) return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject()) return std::nullopt;
    return document.object();
}

UpdateManifest readManifest(const QJsonObject& object) {
    QString address = object["windows_url"].toString().trimmed();
    if (address.isEmpty()) {
        address = object["url"].toString().trimmed();
    }
    UpdateManifest manifest;
    manifest.version = object["version"].toString().trimmed();
    manifest.notes = object["notes"].toString();
    manifest.downloadUrl = QUrl(address);
    if (object.contains("size")) {
        manifest.size = object["size"].toInteger(-1);
        manifest.malformed = manifest.size <= 0;
    }
    if (object.contains("sha256")) {
        manifest.sha256 = bytesFromHex(object["sha256"].toString(), sha256Size);
        manifest.malformed = manifest.malformed || manifest.sha256.isEmpty();
    }
    if (object.contains("signature")) {
        manifest.signature = bytesFromBase64(object["signature"].toString(), signatureSize);
        manifest.malformed = manifest.malformed || manifest.signature.isEmpty();
    }
    return manifest;
}

UpdateRefusal refusalOf(const UpdateManifest& manifest, const QUrl& source,
                        const QByteArray& releaseKey) {
    if (manifest.malformed) return UpdateRefusal::Malformed;
    if (source.scheme() == "https" && manifest.downloadUrl.scheme() != "https") {
        return UpdateRefusal::Insecure;
    }
    if (!releaseKey.isEmpty() &&
        !isSignedRelease(releaseKey, manifest.version, manifest.sha256, manifest.signature)) {
        return UpdateRefusal::Unsigned;
    }
    return UpdateRefusal::None;
}

QVersionNumber parseVersion(const QString& text) {
    QString version = text.trimmed();
    if (version.startsWith('v', Qt::CaseInsensitive)) {
        version.remove(0, 1);
    }
    version = version.section('+', 0, 0).section('-', 0, 0).trimmed();
    return QVersionNumber::fromString(version);
}

bool isNewerVersion(const QString& current, const QString& latest) {
    const QVersionNumber currentNumber = parseVersion(current);
    const QVersionNumber latestNumber = parseVersion(latest);
    return !currentNumber.isNull() && !latestNumber.isNull() &&
           QVersionNumber::compare(currentNumber, latestNumber) < 0;
}

bool isWebAddress(const QUrl& url) {
    return url.isValid() && (url.scheme() == "http" || url.scheme() == "https") &&
           !url.host().isEmpty();
}

QString installerFileName(const QUrl& url, const QString& latestVersion) {
    // Slashes and backslashes that were percent-encoded in the address separate like plain ones.
    QString name = url.path(QUrl::FullyDecoded);
    name.replace('\\', '/');
    name = name.section('/', -1).trimmed();
    if (isPlainFileName(name)) return name;

    const QString fallback = "Tidewell-Setup-%1.exe";
    name = fallback.arg(latestVersion.trimmed());
    const bool usable = !latestVersion.trimmed().isEmpty() && isPlainFileName(name);
    return usable ? name : fallback.arg("latest");
}

}  // namespace tidewell
