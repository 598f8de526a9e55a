#include "app/files/recent_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <algorithm>
#include <iterator>

#include "app/files/regular_file.h"
#include "app/files/shared_store.h"

namespace tidewell {
namespace {

const QString storeKey = QStringLiteral("recentFiles/paths");

QString pathOf(const QUrl& file) {
    return file.isLocalFile() ? QDir::cleanPath(file.toLocalFile()) : QString();
}

/// The program writes what was entered, the board first, ahead of all results: no more is read of
/// a file that may be large.
QString boardIn(const QString& path) {
    constexpr qint64 headBytes = 4096;
    QFile file;
    openRegularFile(file, path);
    if (!file.isOpen()) {
        return {};
    }
    static const QRegularExpression board(
        QStringLiteral("\"boardText\"\\s*:\\s*\"((?:[2-9TJQKA][shdc]){0,5})\""),
        QRegularExpression::CaseInsensitiveOption);
    return board.match(QString::fromUtf8(file.read(headBytes))).captured(1);
}

}  // namespace

RecentFiles::RecentFiles(QObject* parent) : QAbstractListModel(parent) {
    QSettings settings;
    show(kept(settings));
}

int RecentFiles::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant RecentFiles::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Entry& entry = entries_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case UrlRole:
            return QUrl::fromLocalFile(entry.path);
        case Qt::DisplayRole:
        case NameRole:
            return QFileInfo(entry.path).fileName();
        case FolderRole:
            return QDir::toNativeSeparators(QFileInfo(entry.path).path());
        case BoardRole:
            return entry.board;
        case SavedRole:
            return entry.saved;
        case MissingRole:
            return entry.missing;
        default:
            return {};
    }
}

QHash<int, QByteArray> RecentFiles::roleNames() const {
    return {{UrlRole, "url"},     {NameRole, "name"},   {FolderRole, "folder"},
            {BoardRole, "board"}, {SavedRole, "saved"}, {MissingRole, "missing"}};
}

void RecentFiles::add(const QUrl& file) {
    const QString path = pathOf(file);
    if (!path.isEmpty()) {
        change([&](QStringList& paths) {
            paths.removeAll(path);
            paths.prepend(path);
        });
    }
}

void RecentFiles::remove(const QUrl& file) {
    const QString path = pathOf(file);
    if (find(path) >= 0) {
        change([&](QStringList& paths) { paths.removeAll(path); });
    }
}

void RecentFiles::refresh() {
    QSettings settings;
    settings.sync();
    show(kept(settings));
}

bool RecentFiles::exists(const QUrl& file) {
    return QFileInfo::exists(file.toLocalFile());
}

QUrl RecentFiles::newestFolder() const {
    if (!entries_.empty()) {
        const QString folder = QFileInfo(entries_.front().path).path();
        if (QFileInfo(folder).isDir()) return QUrl::fromLocalFile(folder);
    }
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QUrl::fromLocalFile(QFileInfo(documents).isDir() ? documents : QDir::homePath());
}

int RecentFiles::find(const QString& path) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& entry) { return entry.path == path; });
    return found == entries_.end() ? -1 : static_cast<int>(std::distance(entries_.begin(), found));
}

RecentFiles::Entry RecentFiles::entryOf(const QString& path) {
    const QFileInfo file(path);
    return {path, !file.exists(), file.lastModified(), boardIn(path)};
}

QStringList RecentFiles::kept(const QSettings& settings) {
    QStringList paths;
    for (const QString& path : settings.value(storeKey).toStringList()) {
        if (paths.size() < most && QDir::isAbsolutePath(path) && !paths.contains(path)) {
            paths.append(path);
        }
    }
    return paths;
}

void RecentFiles::change(const std::function<void(QStringList&)>& change) {
    QStringList paths;
    changeStore([&](QSettings& settings) {
        paths = kept(settings);
        change(paths);
        paths = paths.mid(0, most);
        settings.setValue(storeKey, paths);
    });
    show(paths);
}

void RecentFiles::show(const QStringList& paths) {
    std::vector<Entry> entries;
    for (const QString& path : paths) {
        entries.push_back(entryOf(path));
    }
    if (entries == entries_) {
        return;
    }
    beginResetModel();
    entries_ = std::move(entries);
    endResetModel();
    Q_EMIT countChanged();
}

}  // namespace tidewell
