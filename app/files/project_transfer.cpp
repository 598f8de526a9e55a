#include "app/files/project_transfer.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>
#include <new>

#include "app/background.h"

namespace tidewell {
namespace {

/// What is read or written in a few milliseconds is read or written at once.
constexpr qint64 smallFileBytes = 1 << 20;

QString translated(const char* text) {
    return QCoreApplication::translate("AppController", text);
}

QString write(const QString& path, ProjectData& data,
              const std::function<void(ProjectData&)>& complete, const FileProgress& onProgress) {
    if (!complete && writtenBytes(data) <= smallFileBytes) {
        return writeProject(path, data, nullptr);
    }
    QString error;
    runBeside(
        [&](std::atomic<double>& progress) {
            if (complete) {
                complete(data);
            }
            error = writeProject(path, data, &progress);
        },
        onProgress);
    return error;
}

ReadProject read(const QString& path, const FileProgress& onProgress) {
    if (QFileInfo(path).size() <= smallFileBytes) {
        return readProject(path, nullptr);
    }
    ReadProject read;
    runBeside([&](std::atomic<double>& progress) { read = readProject(path, &progress); },
              onProgress);
    return read;
}

}  // namespace

QString saveProjectFile(const QString& path, ProjectData data,
                        const std::function<void(ProjectData&)>& complete,
                        const FileProgress& onProgress) {
    try {
        const QString error = write(path, data, complete, onProgress);
        if (error.isEmpty()) {
            qInfo().noquote() << "Saved project:" << path;
            return {};
        }
        qWarning().noquote() << "saveProject: " + error;
    } catch (const std::bad_alloc&) {
        qWarning("saveProject: not enough memory");
        return translated(QT_TRANSLATE_NOOP("AppController", "Not enough memory to save"));
    }
    return translated(QT_TRANSLATE_NOOP("AppController",
                                        "Is its folder writable, and is there room on the disk?"));
}

ReadProject loadProjectFile(const QUrl& url, const FileProgress& onProgress) {
    const auto refuse = [](const char* error) { return ReadProject{translated(error), {}}; };
    if (!url.isValid() || !url.isLocalFile()) {
        return refuse(QT_TRANSLATE_NOOP("AppController", "Invalid/non-local file URL"));
    }
    const QString path = url.toLocalFile();
    if (path.isEmpty()) {
        return refuse(QT_TRANSLATE_NOOP("AppController", "Empty file path"));
    }
    try {
        ReadProject found = read(path, onProgress);
        if (!found.error.isEmpty()) {
            if (!found.damage.isEmpty()) {
                qWarning().noquote() << "loadProject:" << path << found.damage;
            }
            return refuse(found.error.toUtf8().constData());
        }
        qInfo().noquote() << "Loaded project:" << path
                          << "hasResults=" + QString(found.data.hasResults ? "true" : "false");
        return found;
    } catch (const std::bad_alloc&) {
        return refuse(QT_TRANSLATE_NOOP("AppController", "Not enough memory to read the file"));
    }
}

bool holdsResults(const QString& path) {
    const QFileInfo file(path);
    if (!file.isFile() || file.size() > smallFileBytes) {
        return file.isFile();
    }
    const ReadProject read = readProject(path, nullptr);
    return read.data.hasResults || !read.damage.isEmpty();
}

}  // namespace tidewell
