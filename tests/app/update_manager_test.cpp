#include "app/update/update_manager.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QNetworkProxyFactory>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <tuple>
#include <utility>

#include "app/update/release_signature.h"
#include "app/update/update_manifest.h"
#include "tests/app/files.h"
#include "tests/app/http_server.h"

using After = HttpServer::After;
using namespace std::chrono_literals;

namespace {

/// Runs the event loop until something holds, or for ten seconds.
bool waitUntil(const std::function<bool()>& holds) {
    const QDeadlineTimer deadline(10s);
    while (!holds() && !deadline.hasExpired()) {
        QCoreApplication::processEvents();
    }
    return holds();
}

QByteArray manifestFor(const QString& url, const QByteArray& more = {}) {
    return R"({"version": "9.0", "url": ")" + url.toUtf8() + "\"" + more + "}";
}

QByteArray sha256(const QByteArray& bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

QByteArray namedDigest(const QByteArray& bytes) {
    return R"(, "sha256": ")" + sha256(bytes).toHex() + '"';
}

/// Managers against a server, with a folder of their own to download to.
class UpdateManagerTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        QNetworkProxyFactory::setUseSystemConfiguration(false);
        QSettings().clear();
        qunsetenv("KESTREL_UPDATE_URL");
        qunsetenv("KESTREL_UPDATE_MANIFEST_URL");
        qputenv("TMPDIR", folder.path().toUtf8());
        host.installPoll = 10ms;
        host.startInstaller = [this](const QString& path, const QStringList&) {
            started.append(path);
            return true;
        };
        host.quit = [this] { ++quits; };
        host.openAddress = [this](const QUrl& url) {
            opened.append(url.toString());
            return true;
        };
    }

    void TearDown() override {
        QSettings().clear();
        qputenv("TMPDIR", formerTemp);
    }

    /// A manager that starts with this manifest from before.
    std::unique_ptr<UpdateManager> makeManager(const QByteArray& manifest = {}) {
        if (!manifest.isEmpty()) {
            QSettings().setValue("updates/cachedManifestJson", QString::fromUtf8(manifest));
        }
        return std::make_unique<UpdateManager>(host);
    }

    /// A manager that knows of an update at a path of the server, and what the server says there.
    std::unique_ptr<UpdateManager> makeManagerFor(const QString& path, const QByteArray& answer,
                                                  After after = After::Close,
                                                  const QByteArray& more = {}) {
        server.answer(path.toUtf8(), answer, after);
        return makeManager(manifestFor(server.address(path), more));
    }

    void check(UpdateManager& manager, const QString& address) {
        manager.setManifestUrl(address);
        manager.checkNow();
        EXPECT_TRUE(waitUntil([&manager] { return !manager.busy(); }));
    }

    void finishDownload(UpdateManager& manager) {
        EXPECT_TRUE(waitUntil([&manager] { return !manager.downloadBusy(); }));
    }

    /// Returns when a poll that was due, if there was one, is over.
    void passAPoll() {
        const QDeadlineTimer end(3 * host.installPoll, Qt::PreciseTimer);
        waitUntil([&] { return end.hasExpired(); });
    }

    /// Names of all files and folders, at any depth.
    QStringList storedFiles() const {
        QStringList names;
        QDirIterator all(folder.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        while (all.hasNext()) {
            all.next();
            names.append(all.fileName());
        }
        return names;
    }

    const QByteArray formerTemp = qgetenv("TMPDIR");
    HttpServer server;
    QTemporaryDir folder;
    tidewell::UpdateHost host;
    QStringList started;
    int quits = 0;
    QStringList opened;
};

}  // namespace

TEST(UpdateManifest, VersionsCompareByTheirNumbersAlone) {
    const std::tuple<const char*, const char*, bool> cases[] = {{"1.2.2", " v1.2.3-beta+5 ", true},
                                                                {"1.2.3", "v1.2.3-beta+5", false},
                                                                {"1.9", "V1.10", true},
                                                                {"2.0", "1.9.9", false},
                                                                {"1.0", "", false},
                                                                {"1.0", "1.0+9-9", false}};
    for (const auto& [current, latest, newer] : cases) {
        EXPECT_EQ(tidewell::isNewerVersion(current, latest), newer) << current << " to " << latest;
    }
}

TEST(UpdateManifest, InstallerNamesStayInTheirFolder) {
    const std::tuple<const char*, const char*, QString> cases[] = {
        {"/get/Setup%202.exe?x=/other.exe", "2.0", "Setup 2.exe"},
        {"/get/S%C3%A4ge.exe", "2.0", "Säge.exe"},
        {"/get/..%2F..%2Fevil.exe", "2.0", "evil.exe"},
        {"/get/..%5C..%5Cevil.exe", "2.0", "evil.exe"},
        {"/", "../../evil", "Tidewell-Setup-latest.exe"},
        {"/", "2\n0", "Tidewell-Setup-latest.exe"}};
    const auto named = [](const QString& path, const char* version) {
        return tidewell::installerFileName(QUrl("https://host.invalid" + path), version);
    };
    for (const auto& [path, version, name] : cases) {
        EXPECT_EQ(named(path, version), name);
    }
    for (const char* const path :
         {"/get/", "/get/a%2F", "", "/get/x%2F%2e%2e", "/get/%20.bashrc", "/get/C%3Aevil.exe",
          "/get/a%00.exe", "/get/a%0Ab.exe", "/get/%E2%80%AEexe.txt"}) {
        EXPECT_EQ(named(path, " 2.0 "), "Tidewell-Setup-2.0.exe") << path;
    }
}

TEST_F(UpdateManagerTest, ChoosesTheManifestAddress) {
    const auto address = [this] { return makeManager()->manifestUrl(); };
    EXPECT_EQ(address(), tidewell::normalizedAddress(tidewell::defaultManifestAddress()));
    qputenv("KESTREL_UPDATE_URL", " http://second.invalid/m.json// ");
    qputenv("KESTREL_UPDATE_MANIFEST_URL", " / ");
    EXPECT_EQ(address(), "http://second.invalid/m.json");
    qputenv("KESTREL_UPDATE_MANIFEST_URL", "http://first.invalid/");
    EXPECT_EQ(address(), "http://first.invalid");

    const auto manager = makeManager();
    manager->setManifestUrl(" http://chosen.invalid/ ");
    EXPECT_EQ(address(), "http://chosen.invalid");
    manager->setManifestUrl("");
    EXPECT_EQ(address(), "http://first.invalid");
    manager->checkNow();
    EXPECT_EQ(manager->lastError(), "Update URL is not configured.");
}

TEST_F(UpdateManagerTest, ACheckFindsAnUpdateAndTheNextStartKnowsOfIt) {
    const QByteArray manifest = R"({"version": " v9.1 ", "notes": "Faster", "x": 1,
        "windows_url": " https://host.invalid/s.exe ", "url": "https://host.invalid/other"})";
    server.answer("/moved.json", httpRedirect(server.address("/latest.json")));
    server.answer("/latest.json", httpAnswer(200, manifest));
    auto manager = makeManager();
    check(*manager, server.address("/moved.json"));
    EXPECT_TRUE(server.requests().value(0).contains("Accept: application/json\r\n"));
    const QDateTime found = manager->lastSuccessAt();

    for (int start = 0; start < 2; ++start) {
        EXPECT_EQ(manager->lastError(), "");
        EXPECT_TRUE(manager->updateAvailable());
        EXPECT_EQ(manager->latestVersion(), "v9.1");
        EXPECT_EQ(manager->releaseNotes(), "Faster");
        EXPECT_EQ(manager->downloadUrl(), QUrl("https://host.invalid/s.exe"));
        EXPECT_EQ(manager->lastSuccessAt(), found);
        manager = makeManager();
    }
    EXPECT_EQ(server.requests().size(), 2);
    manager->clearState();
    EXPECT_FALSE(manager->updateAvailable() || manager->lastSuccessAt().isValid());
    EXPECT_EQ(makeManager()->latestVersion(), "");
    EXPECT_EQ(makeManager()->manifestUrl(), server.address("/moved.json"));
}

TEST_F(UpdateManagerTest, OffersOnlyANewerVersionThatCanBeHad) {
    const std::pair<const char*, bool> cases[] = {
        {R"({"version": "1.0.5", "windows_url": " ", "url": "http://host.invalid/s"})", true},
        {R"({"version": "1.0.4", "url": "http://host.invalid/s"})", false},
        {R"({"version": 9, "url": "http://host.invalid/s"})", false},
        {R"({"version": "9.0", "url": "http://[half"})", false},
        {R"({"version": "9.0"})", false}};
    for (const auto& [manifest, offered] : cases) {
        EXPECT_EQ(makeManager(manifest)->updateAvailable(), offered) << manifest;
    }
}

TEST_F(UpdateManagerTest, AFailedCheckTellsWhyAndKeepsTheLastManifest) {
    const QByteArray good = manifestFor("http://host.invalid/s");
    const char* const failed = "Update check failed: ";
    const char* const invalid = "Invalid update response (HTTP 200).";
    const QByteArray huge = good + QByteArray(5 << 20, ' ');  // and no end to it
    writeFile(folder.filePath("m.json"), good);
    const QString local = QUrl::fromLocalFile(folder.filePath("m.json")).toString();
    const std::tuple<const char*, QByteArray, const char*, After> cases[] = {
        {"/500", httpAnswer(500, good), failed, After::Close},
        {"/half", httpAnswer(200, good, 2 * good.size()), failed, After::Close},
        {"/slow", {}, failed, After::Hold},
        {"/slow-half", httpAnswer(200, good, 2 * good.size()), failed, After::Hold},
        {"/local", httpRedirect(local), failed, After::Close},
        {"/list", httpAnswer(200, "[" + good + "]"), invalid, After::Close},
        {"/huge", httpAnswer(200, huge, 1LL << 40), invalid, After::Hold}};
    for (const auto& [path, answer, error, after] : cases) {
        const bool slow = QString(path).startsWith("/slow");
        host.checkLimit = slow ? 300ms : tidewell::UpdateHost().checkLimit;
        const auto manager = makeManager(good);
        server.answer(path, answer, after);
        check(*manager, server.address(path));
        EXPECT_TRUE(manager->lastError().startsWith(error)) << path;
        EXPECT_TRUE(manager->updateAvailable()) << path;
        EXPECT_FALSE(manager->lastSuccessAt().isValid()) << path;
    }
}

TEST(UpdateManifest, ReleasesAreRefusedUnlessTheirProofHolds) {
    using tidewell::UpdateRefusal;
    const tidewell::ReleaseKeys keys = tidewell::makeReleaseKeys();
    const tidewell::ReleaseKeys others = tidewell::makeReleaseKeys();
    const QByteArray digest = sha256("installer");
    const auto signedBy = [&](const tidewell::ReleaseKeys& who, const QString& version,
                              const QByteArray& what) {
        return namedDigest("installer") + R"(, "signature": ")" +
               tidewell::signRelease(who.secretKey, version, what).toBase64() + '"';
    };
    const QString secure = "https://host.invalid/s";
    const QString plain = "http://host.invalid/s";
    const std::tuple<QString, QString, QByteArray, bool, UpdateRefusal> cases[] = {
        {secure, secure, "", false, UpdateRefusal::None},
        {plain, plain, "", false, UpdateRefusal::None},
        {secure, plain, "", false, UpdateRefusal::Insecure},
        {"", plain, R"(, "sha256": "12")", false, UpdateRefusal::Malformed},
        {"", plain, R"(, "sha256": ")" + QByteArray(64, 'g') + '"', false,
         UpdateRefusal::Malformed},
        {"", plain, R"(, "size": 1.5)", false, UpdateRefusal::Malformed},
        {"", plain, R"(, "signature": "!")", false, UpdateRefusal::Malformed},
        {"", plain, namedDigest("installer"), true, UpdateRefusal::Unsigned},
        {"", plain, signedBy(keys, "9.0", digest), true, UpdateRefusal::None},
        {"", plain, signedBy(keys, "8.0", digest), true, UpdateRefusal::Unsigned},
        {"", plain, signedBy(keys, "9.0", sha256("other")), true, UpdateRefusal::Unsigned},
        {"", plain, signedBy(others, "9.0", digest), true, UpdateRefusal::Unsigned}};
    for (const auto& [source, address, more, needsKey, refusal] : cases) {
        const auto object = tidewell::parseManifest(manifestFor(address, more));
        ASSERT_TRUE(object);
        EXPECT_EQ(tidewell::refusalOf(tidewell::readManifest(*object), QUrl(source),
                                      needsKey ? keys.publicKey : QByteArray()),
                  refusal)
            << qPrintable(source) << " " << more.constData();
    }
}

TEST(UpdateManifest, TheReleaseToolWritesOneThatHolds) {
    const QTemporaryDir folder;
    const auto run = [](const QStringList& arguments) {
        QProcess tool;
        tool.start(MANIFEST_PATH, arguments);
        EXPECT_TRUE(tool.waitForFinished());
        return std::pair(tool.exitCode(), tool.readAllStandardOutput());
    };
    const QString key = folder.filePath("key");
    const auto [made, publicKey] = run({"--new-key", key});
    EXPECT_EQ(made, 0);
    EXPECT_EQ(run({"--new-key", key}).first, 1);  // never over one that is in use
    writeFile(folder.filePath("s"), "installer");
    const auto [written, json] = run({"--release", "9.0", "--url", "https://host.invalid/s",
                                      "--key", key, folder.filePath("s")});
    EXPECT_EQ(written, 0);
    const auto object = tidewell::parseManifest(json);
    ASSERT_TRUE(object);
    const tidewell::UpdateManifest manifest = tidewell::readManifest(*object);
    EXPECT_EQ(manifest.size, 9);
    EXPECT_EQ(manifest.sha256, sha256("installer"));
    EXPECT_EQ(tidewell::refusalOf(manifest, QUrl("https://host.invalid/m"),
                                  QByteArray::fromBase64(publicKey.trimmed())),
              tidewell::UpdateRefusal::None);
}

TEST_F(UpdateManagerTest, AnUnsignedUpdateIsNeitherOfferedNorFetched) {
    host.releaseKey = tidewell::makeReleaseKeys().publicKey;
    const auto manager = makeManagerFor("/s.exe", httpAnswer(200, "#!/bin/sh\n"));
    EXPECT_FALSE(manager->updateAvailable());
    manager->downloadNow();
    EXPECT_EQ(manager->lastError(), "The update is not signed by its publisher.");
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(UpdateManagerTest, StoresADownloadWhereNobodyElseCanTouchIt) {
    const QByteArray installer = "#!/bin/sh\n" + QByteArray(300'000, 'x');
    const auto manager =
        makeManagerFor("/a/..%2F..%5Ckept", httpRedirect(server.address("/s.exe")));
    server.answer("/s.exe", httpAnswer(200, installer));
    manager->downloadNow();
    finishDownload(*manager);
    EXPECT_EQ(manager->lastError(), "");
    EXPECT_TRUE(manager->downloaded() && manager->canInstall());
    const QFileInfo stored(manager->downloadedFilePath());
    EXPECT_EQ(stored.fileName(), "kept");
    EXPECT_EQ(readFile(stored.filePath()), installer);
    const auto beyondOwner = QFile::Permissions(0x0077);
    EXPECT_EQ(stored.permissions() & beyondOwner, QFile::Permissions());
    EXPECT_EQ(QFileInfo(stored.path()).permissions() & beyondOwner, QFile::Permissions());
    EXPECT_EQ(storedFiles().size(), 2);
    EXPECT_TRUE(manager->downloadChecks().contains("no checksum"));

    // One that a later check has outdated is given up.
    server.answer("/m.json", httpAnswer(200, R"({"version": "9.1", "url": "http://a.invalid/s"})"));
    check(*manager, server.address("/m.json"));
    EXPECT_FALSE(manager->downloaded());
    EXPECT_EQ(storedFiles(), QStringList());
}

TEST_F(UpdateManagerTest, AFailedDownloadLeavesNoFile) {
    const QByteArray half = "#!/bin/sh\n" + QByteArray(100'000, 'x');
    const QByteArray page = "<html>Not here today</html>";
    const QByteArray chunk = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n400\r\nxxx";
    const QByteArray endless = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n";
    const QByteArray huge(3 << 20, 'x');
    host.download.bytes = 2 << 20;
    const std::tuple<const char*, QByteArray, QByteArray, const char*, After> cases[] = {
        {"/404.exe", httpAnswer(404, half), "", "", After::Close},
        {"/empty.exe", httpAnswer(200, ""), "", "the file is empty", After::Close},
        {"/page.exe", httpAnswer(200, page), "", "what has arrived is no installer", After::Close},
        {"/html.exe", httpAnswer(200, half, -1, "Content-Type: text/html\r\n"), "", "a web page",
         After::Close},
        {"/half.exe", httpAnswer(200, half, 200'000), "", "", After::Close},
        {"/chunk.exe", chunk, namedDigest(half), "", After::Close},
        {"/length.exe", endless + half, "", "does not tell how long", After::Close},
        {"/short.exe", endless + half, R"(, "size": 100011)", "ended after 100010 of 100011 bytes",
         After::Close},
        {"/long.exe", endless + half, R"(, "size": 100009)", "more has arrived", After::Close},
        {"/size.exe", httpAnswer(200, half), R"(, "size": 100011)", "another size", After::Close},
        {"/digest.exe", httpAnswer(200, half), namedDigest("other"), "the checksum", After::Close},
        {"/announced.exe", httpAnswer(200, half, 1LL << 40), "", "larger than", After::Hold},
        {"/endless.exe", endless + huge, namedDigest(half), "larger than", After::Hold},
        {"/slow.exe", httpAnswer(200, half, 200'000), "", "nothing has arrived", After::Hold},
        {"/local.exe", httpRedirect("file:///etc/hostname"), "", "", After::Close}};
    for (const auto& [path, answer, more, reason, after] : cases) {
        host.download.idle = QString(path) == "/slow.exe" ? 300ms : 30s;
        const auto manager = makeManagerFor(path, answer, after, more);
        manager->updateNow();
        finishDownload(*manager);
        EXPECT_EQ(manager->lastError().left(17), "Download failed: ") << path;
        EXPECT_TRUE(manager->lastError().contains(reason))
            << path << ": " << qPrintable(manager->lastError());
        EXPECT_FALSE(manager->downloaded() || manager->canInstall()) << path;
        EXPECT_EQ(storedFiles(), QStringList()) << path;
        EXPECT_TRUE(manager->updateAvailable()) << path;
        passAPoll();
        EXPECT_FALSE(manager->installsAtEnd()) << path;
    }
    EXPECT_EQ(quits, 0);
}

TEST_F(UpdateManagerTest, TouchesOnlyWebAddresses) {
    for (const char* const address :
         {"file:///etc/hostname", "ftp://host.invalid/s", "s.exe", "http:s", "x-open:now", ""}) {
        for (const auto act : {&UpdateManager::downloadNow, &UpdateManager::openDownloadUrl}) {
            const auto manager = makeManager(manifestFor(address));
            (manager.get()->*act)();
            EXPECT_EQ(manager->lastError(), "No download URL available.") << address;
            EXPECT_FALSE(manager->downloadBusy()) << address;
        }
    }
    makeManager(manifestFor("https://host.invalid/s"))->openDownloadUrl();
    EXPECT_EQ(opened, QStringList("https://host.invalid/s"));
}

TEST_F(UpdateManagerTest, UpdateNowDownloadsOnceAndStartsTheInstaller) {
    auto manager = makeManager();
    manager->updateNow();
    EXPECT_EQ(manager->lastError(), "No update is available.");
    manager->installNow();
    EXPECT_EQ(manager->lastError(), "No downloaded update is ready to install.");

    const QString trace = folder.filePath("trace");
    const QByteArray script = "#!/bin/sh\nprintf 'ran%s' \"$*\" > '" + trace.toUtf8() + "'\n";
    host.startInstaller = tidewell::startInstaller;
    manager = makeManagerFor("/s.run", httpAnswer(200, "#!/no/such/interpreter\n"));
    manager->updateNow();
    EXPECT_TRUE(waitUntil([&] { return manager->installsAtEnd(); }));
    EXPECT_EQ(quits, 1);
    manager->programEnds();
    EXPECT_EQ(manager->lastError(), "Failed to launch installer.");

    ASSERT_TRUE(QFile::remove(manager->downloadedFilePath()));
    manager->installNow();
    EXPECT_EQ(manager->lastError(), "Downloaded installer file is missing.");
    server.answer("/s.run", httpAnswer(200, script));
    manager->updateNow();
    EXPECT_TRUE(waitUntil([&] { return manager->installsAtEnd(); }));
    EXPECT_EQ(quits, 2);
    EXPECT_EQ(manager->lastError(), "");
    EXPECT_FALSE(QFile::exists(trace));  // the program may stay after all
    manager->programEnds();
    manager.reset();
    EXPECT_TRUE(waitUntil([&] {
        return readFile(trace) == "ran" + tidewell::installerArguments().join(' ').toUtf8();
    }));
    EXPECT_EQ(server.requests().size(), 2);
}

TEST_F(UpdateManagerTest, ClearingOrEndingGivesUpADownload) {
    const qint64 total = 1LL << 30;
    for (const bool ending : {false, true}) {
        auto manager = makeManagerFor("/s.exe", httpAnswer(200, "x", total), After::Hold);
        manager->updateNow();
        ASSERT_TRUE(waitUntil([&] { return server.holds(); }));
        ASSERT_TRUE(waitUntil([&] {  // progress is reported a few times a second
            server.writeHeld("x");
            return manager->downloadProgress() > 0.0;
        }));
        if (ending) {
            manager.reset();
        } else {
            manager->clearState();
            EXPECT_FALSE(manager->downloadBusy());
        }
        EXPECT_EQ(storedFiles(), QStringList());
        passAPoll();
    }
    EXPECT_TRUE(started.isEmpty());
}
