#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QUrl>
#include <QVersionNumber>
#include <optional>

namespace tidewell {

/// What an update manifest may hold at most, in bytes; a real one has a few hundred.
inline constexpr qint64 manifestSizeLimit = 4 * 1024 * 1024;

/// What the update service says about the latest version. Nothing in it is to be trusted.
struct UpdateManifest {
    QString version;  ///< without white space at both ends
    QString notes;
    QUrl downloadUrl;  ///< of the installer; not valid if there is none

    // Optional: what the installer has to be. Raw bytes, empty without; -1 without a size.
    qint64 size = -1;
    QByteArray sha256;
    QByteArray signature;    ///< Ed25519, of version and digest
    bool malformed = false;  ///< one of these is there and cannot be read
};

/// Why an update is not to be fetched.
enum class UpdateRefusal {
    None,
    Malformed,  ///< size, digest or signature cannot be read
    Insecure,   ///< came by https, and names an address without
    Unsigned    ///< the key of this program did not sign version and digest
};

/// `source` is where the manifest was fetched from, empty if that is not known; `releaseKey` the
/// public key that releases are signed with, empty if they need no signature.
UpdateRefusal refusalOf(const UpdateManifest& manifest, const QUrl& source,
                        const QByteArray& releaseKey);

/// Where the manifest lies unless the user or the environment says otherwise; set at build time.
QString defaultManifestAddress();

/// An address without white space at both ends and without slashes at its end.
QString normalizedAddress(const QString& address);

/// The JSON object in a manifest's text; nothing if it is no object or above the size limit.
std::optional<QJsonObject> parseManifest(const QByteArray& json);

/// Keys that are missing or no strings read as "". Besides `version`, `notes`, `windows_url` and
/// `url` there may be `size` (bytes, a number), `sha256` (hexadecimal) and `signature` (base64).
UpdateManifest readManifest(const QJsonObject& object);

/// "v1.2.3-beta+5" is 1.2.3: pre-release and build suffixes count for nothing. Null if there is no
/// number.
QVersionNumber parseVersion(const QString& text);

/// Whether both versions can be read and the second is higher.
bool isNewerVersion(const QString& current, const QString& latest);

/// Whether an address is a complete one of http or https, the only ones to fetch or to open.
bool isWebAddress(const QUrl& url);

/// The name to store an installer under: the last path component of its address, or one made of
/// the version. Always a plain visible name that stays in its folder, whatever the manifest says.
QString installerFileName(const QUrl& url, const QString& latestVersion);

}  // namespace tidewell
