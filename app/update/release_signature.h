#pragma once

#include <QByteArray>
#include <QString>

namespace tidewell {

/// Lengths of raw keys, digests and signatures, in bytes (Ed25519 is RFC 8032).
inline constexpr qsizetype publicKeySize = 32;
inline constexpr qsizetype secretKeySize = 64;
inline constexpr qsizetype signatureSize = 64;
inline constexpr qsizetype sha256Size = 32;

/// A pair for whoever publishes releases. The public one is set when the program is built.
struct ReleaseKeys {
    QByteArray publicKey;
    QByteArray secretKey;
};

ReleaseKeys makeReleaseKeys();

/// The public key that this program was built with, raw; empty if releases need no signature.
/// One that was set and cannot be read is a key that nothing was ever signed with.
QByteArray builtInReleaseKey();

/// Signs a version together with the digest of its installer, so that neither can be put beside
/// another. Empty if the key is none.
QByteArray signRelease(const QByteArray& secretKey, const QString& version,
                       const QByteArray& sha256);

/// Whether the owner of the key signed exactly this version and digest.
bool isSignedRelease(const QByteArray& publicKey, const QString& version, const QByteArray& sha256,
                     const QByteArray& signature);

/// The bytes that a text names, in hexadecimal or base64; empty unless there are exactly so many.
QByteArray bytesFromHex(const QString& text, qsizetype size);
QByteArray bytesFromBase64(const QString& text, qsizetype size);

}  // namespace tidewell
