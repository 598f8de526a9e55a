#include "app/files/text_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QTemporaryDir>

#include "tests/app/file_size_limit.h"
#include "tests/app/files.h"

using tidewell::readTextFile;
using tidewell::readTextResource;
using tidewell::saveTextFile;

namespace {

constexpr int readLimit = 2'097'152;

class TextFiles : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(folder.isValid()); }

    QUrl url(const QString& name) const { return QUrl::fromLocalFile(folder.filePath(name)); }

    void write(const QString& name, const QByteArray& bytes) const {
        writeFile(folder.filePath(name), bytes);
    }
    QByteArray read(const QString& name) const { return readFile(folder.filePath(name)); }

    QTemporaryDir folder;
};

}  // namespace

TEST_F(TextFiles, SavesAndReadsUtf8) {
    const QString text = "AhKs: ♠♥ 0,5\nzweite Zeile, 😀\n";
    const QVariantMap saved = saveTextFile(url("räng %41.txt"), text);
    EXPECT_EQ(saved, QVariantMap({{"ok", true}, {"error", ""}}));
    EXPECT_EQ(read("räng %41.txt"), text.toUtf8());
    EXPECT_EQ(readTextFile(url("räng %41.txt")),
              QVariantMap({{"ok", true}, {"error", ""}, {"text", text}}));

    write("dos.txt", "a\r\nb\r\n");
    EXPECT_EQ(readTextFile(url("dos.txt"))["text"], "a\nb\n");
}

TEST_F(TextFiles, ReadsAtMostTwoMebibytes) {
    write("full.txt", QByteArray(readLimit, 'x'));
    EXPECT_EQ(readTextFile(url("full.txt"))["text"].toString().size(), readLimit);
    write("over.txt", QByteArray(readLimit + 1, 'x'));
    EXPECT_EQ(readTextFile(url("over.txt"))["error"], "File is too large (2097153 bytes).");
    EXPECT_TRUE(readTextFile(QUrl("file:///proc/self/status"))["text"].toString().contains("Name:"))
        << "made while it is read, of no size before";
}

TEST_F(TextFiles, TellWhatIsWrong) {
    const char* const remote = "Only local files are supported.";
    const char* const invalid = "Invalid/non-local file URL";
    const struct {
        QUrl url;
        const char* reading;
        const char* saving;
    } cases[] = {{QUrl(), "Invalid file URL.", invalid},
                 {QUrl("https://host.invalid/a.txt"), remote, invalid},
                 {QUrl("a.txt"), remote, invalid},
                 {QUrl("file:"), "Empty file path.", "Empty file path"},
                 {url("none/a.txt"), "File does not exist.", "Failed to open file: "},
                 {url("."), "Failed to open file: This is a folder", "Failed to open file: "},
                 {url("pipe"), "Failed to open file: This is a pipe, not a file", nullptr},
                 {QUrl("file:///dev/zero"), "Failed to open file: This is a device", nullptr},
                 {QUrl("file:///n%FF.txt"), "Failed to open file: Its name", nullptr},
                 {QUrl("file:///etc/passwd%00.txt"), "File does not exist.", nullptr}};
    ASSERT_EQ(mkfifo(folder.filePath("pipe").toUtf8(), 0600), 0);
    for (const auto& [address, reading, saving] : cases) {
        SCOPED_TRACE(address.toString().toStdString());
        const QVariantMap read = readTextFile(address);
        EXPECT_EQ(read["text"], "");
        EXPECT_TRUE(!read["ok"].toBool() && read["error"].toString().startsWith(reading));
        if (saving != nullptr) {
            const QVariantMap saved = saveTextFile(address, "text");
            EXPECT_TRUE(!saved["ok"].toBool() && saved["error"].toString().startsWith(saving));
        }
    }
}

TEST_F(TextFiles, AFailedSaveKeepsTheFormerFile) {
    write("kept.txt", "kept");
    {
        const tidewell::FileSizeLimit full(1);
        EXPECT_EQ(saveTextFile(url("kept.txt"), "text")["error"],
                  "Failed to save file: File too large");
    }
    EXPECT_EQ(read("kept.txt"), "kept");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("kept.txt"));
}

TEST_F(TextFiles, ReadsOnlyResources) {
    const QString suits = "{ \"suits\": \"♠♥♦♣\" }\n";
    for (const char* const path : {"qrc:/suits.json", ":/suits.json", " /suits.json\n"}) {
        EXPECT_EQ(readTextResource(path), suits) << path;
    }
    write("a.txt", "outside");
    const QString refused[] = {folder.filePath("a.txt"), url("a.txt").toString(), "suits.json",
                               "qrc:/none.json",         ":/../../etc/hostname",  ""};
    for (const QString& path : refused) {
        EXPECT_EQ(readTextResource(path), "") << path.toStdString();
    }
}
