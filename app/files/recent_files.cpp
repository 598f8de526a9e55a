#include "app/files/recent_files.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <iterator>

#include "app/files/shared_store.h"

namespace tidewell {
namespace {

const QString storeKey = QStringLiteral("recentFiles/paths");

QString pathOf(const QUrl& file) {
    return file.isLocalFile() ? QDir::cleanPath(file.toLocalFile()) : QString();
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
        case MissingRole:
            return entry.missing;
        default:
            return {};
    }
}

QHash<int, QByteArray> RecentFiles::roleNames() const {
    return {{UrlRole, "url"}, {NameRole, "name"}, {FolderRole, "folder"}, {MissingRole, "missing"}};
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
    return entries_.empty() ? QUrl() : QUrl::fromLocalFile(QFileInfo(entries_.front().path).path());
}

int RecentFiles::find(const QString& path) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& entry) { return entry.path == path; });
    return found == entries_.end() ? -1 : static_cast<int>(std::distance(entries_.begin(), found));
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
        entries.push_back({path, !QFileInfo::exists(path)});
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
