#include "app/update/release_signature.h"

#include <sodium.h>

#include <stdexcept>

namespace tidewell {
namespace {

static_assert(publicKeySize == crypto_sign_PUBLICKEYBYTES);
static_assert(secretKeySize == crypto_sign_SECRETKEYBYTES);
static_assert(signatureSize == crypto_sign_BYTES);

void makeReady() {
    if (sodium_init() < 0) throw std::runtime_error("libsodium cannot be used");
}

const unsigned char* bytes(const QByteArray& array) {
    return reinterpret_cast<const unsigned char*>(array.constData());
}

unsigned char* bytes(QByteArray& array) {
    return reinterpret_cast<unsigned char*>(array.data());
}

// The heading keeps a signature from standing for anything else that the key might sign. A line
// feed cannot stand in the parts: versions are single lines, digests hexadecimal.
QByteArray releaseText(const QString& version, const QByteArray& sha256) {
    return "tidewell release\n" + version.toUtf8() + '\n' + sha256.toHex() + '\n';
}

}  // namespace

ReleaseKeys makeReleaseKeys() {
    makeReady();
    ReleaseKeys keys{QByteArray(publicKeySize, 0), QByteArray(secretKeySize, 0)};
    crypto_sign_keypair(bytes(keys.publicKey), bytes(keys.secretKey));
    return keys;
}

QByteArray builtInReleaseKey() {
    const QString text = QStringLiteral(TIDEWELL_UPDATE_KEY).trimmed();
    if (text.isEmpty()) return {};
    const QByteArray key = bytesFromBase64(text, publicKeySize);
    return key.isEmpty() ? QByteArray(publicKeySize, 0) : key;
}

QByteArray signRelease(const QByteArray& secretKey, const QString& version,
                       const QByteArray& sha256) {
    if (secretKey.size() != secretKeySize || sha256.size() != sha256Size) return {};
    makeReady();
    const QByteArray text = releaseText(version, sha256);
    QByteArray signature(signatureSize, 0);
    crypto_sign_detached(bytes(signature), nullptr, bytes(text),
                         static_cast<unsigned long long>(text.size()), bytes(secretKey));
    return signature;
}

bool isSignedRelease(const QByteArray& publicKey, const QString& version, const QByteArray& sha256,
                     const QByteArray& signature) {
    if (publicKey.size() != publicKeySize || sha256.size() != sha256Size ||
        signature.size() != signatureSize || version.contains('\n')) {
        return false;
    }
    makeReady();
    const QByteArray text = releaseText(version, sha256);
    return crypto_sign_verify_detached(bytes(signature), bytes(text),
                                       static_cast<unsigned long long>(text.size()),
                                       bytes(publicKey)) == 0;
}

QByteArray bytesFromHex(const QString& text, qsizetype size) {
    const QByteArray digits = text.trimmed().toLatin1().toLower();
    const QByteArray value = QByteArray::fromHex(digits);  // leaves out what is no digit
    return value.size() == size && value.toHex() == digits ? value : QByteArray();
}

QByteArray bytesFromBase64(const QString& text, qsizetype size) {
    const auto result = QByteArray::fromBase64Encoding(text.trimmed().toLatin1(),
                                                       QByteArray::AbortOnBase64DecodingErrors);
    return result && result.decoded.size() == size ? result.decoded : QByteArray();
}

}  // namespace tidewell
