// Writes the manifest of a release, which the program's update check reads, to the standard output.
//
//   tidewell-manifest --new-key FILE
//       makes a pair of keys, keeps the secret one in FILE and tells the public one, which goes
//       into the build as TIDEWELL_UPDATE_KEY
//   tidewell-manifest --release VERSION --url URL [--notes FILE] [--key FILE] INSTALLER
//       tells size and SHA-256 of the installer, and signs them with the secret key

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>
#include <iostream>
#include <stdexcept>
#include <string>

#include "app/update/release_signature.h"
#include "app/update/update_manifest.h"

namespace {

struct Failure : std::runtime_error {
    explicit Failure(const QString& text) : std::runtime_error(text.toStdString()) {}
};

void openToRead(QFile& file) {
    if (!file.open(QIODevice::ReadOnly)) {
        throw Failure(file.fileName() + ": " + file.errorString());
    }
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    openToRead(file);
    return file.readAll();
}

void makeKeys(const QString& path) {
    const tidewell::ReleaseKeys keys = tidewell::makeReleaseKeys();
    QFile file(path);
    // Never over a key that is in use.
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                   QFileDevice::ReadOwner | QFileDevice::WriteOwner)) {
        throw Failure(path + ": " + file.errorString());
    }
    const QByteArray text = keys.secretKey.toBase64() + '\n';
    if (file.write(text) != text.size()) throw Failure(path + ": " + file.errorString());
    std::cout << keys.publicKey.toBase64().toStdString() << '\n';
}

QJsonObject manifestOf(const QCommandLineParser& options, const QString& installer) {
    const QString version = options.value("release");
    if (tidewell::parseVersion(version).isNull()) throw Failure("--release needs a version");
    const QString url = options.value("url");
    if (!tidewell::isWebAddress(QUrl(url))) throw Failure("--url needs an address of the web");

    QFile file(installer);
    openToRead(file);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (file.size() == 0 || !hash.addData(&file)) throw Failure(installer + ": nothing to read");

    QJsonObject manifest{{"version", version},
                         {"url", url},
                         {"size", file.size()},
                         {"sha256", QString::fromLatin1(hash.result().toHex())}};
    if (options.isSet("notes")) {
        manifest["notes"] = QString::fromUtf8(contentOf(options.value("notes")));
    }
    if (options.isSet("key")) {
        const QString text = QString::fromLatin1(contentOf(options.value("key")));
        const QByteArray key = tidewell::bytesFromBase64(text, tidewell::secretKeySize);
        if (key.isEmpty()) throw Failure(options.value("key") + ": holds no secret key");
        manifest["signature"] =
            QString::fromLatin1(tidewell::signRelease(key, version, hash.result()).toBase64());
    }
    return manifest;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription("Writes the manifest of a release for the update check.");
    options.addHelpOption();
    options.addOptions({{"new-key", "Make a pair of keys, the secret one in <file>.", "file"},
                        {"release", "The version that is released.", "version"},
                        {"url", "Where the installer can be fetched.", "url"},
                        {"notes", "What is new, as a text file.", "file"},
                        {"key", "The secret key to sign with.", "file"}});
    options.addPositionalArgument("installer", "The file that is released.");
    options.process(application);
    try {
        if (options.isSet("new-key")) {
            makeKeys(options.value("new-key"));
        } else if (options.positionalArguments().size() == 1) {
            const QJsonObject manifest = manifestOf(options, options.positionalArguments().first());
            std::cout << QJsonDocument(manifest).toJson().toStdString();
        } else {
            throw Failure("one installer is needed; see --help");
        }
    } catch (const std::exception& failure) {
        std::cerr << "tidewell-manifest: " << failure.what() << '\n';
        return 1;
    }
    return std::cout.flush() ? 0 : 1;
}
