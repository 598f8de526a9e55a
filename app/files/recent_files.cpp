#include "app/files/recent_files.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <algorithm>
#include <iterator>

namespace tidewell {
namespace {

const QString storeKey = QStringLiteral("recentFiles/paths");

QString pathOf(const QUrl& file) {
    return file.isLocalFile() ? QDir::cleanPath(file.toLocalFile()) : QString();
}

}  // namespace

RecentFiles::RecentFiles(QObject* parent) : QAbstractListModel(parent) {
    for (const QString& path : QSettings().value(storeKey).toStringList()) {
        if (count() < most && QDir::isAbsolutePath(path) && find(path) < 0) {
            entries_.push_back({path, !QFileInfo::exists(path)});
        }
    }
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
    if (path.isEmpty()) {
        return;
    }
    beginResetModel();
    if (const int row = find(path); row >= 0) {
        entries_.erase(entries_.begin() + row);
    }
    entries_.insert(entries_.begin(), {path, !QFileInfo::exists(path)});
    if (count() > most) {
        entries_.pop_back();
    }
    endResetModel();
    store();
    Q_EMIT countChanged();
}

void RecentFiles::remove(const QUrl& file) {
    const int row = find(pathOf(file));
    if (row < 0) {
        return;
    }
    beginRemoveRows({}, row, row);
    entries_.erase(entries_.begin() + row);
    endRemoveRows();
    store();
    Q_EMIT countChanged();
}

void RecentFiles::refresh() {
    for (int row = 0; row < count(); ++row) {
        Entry& entry = entries_[static_cast<std::size_t>(row)];
        const bool missing = !QFileInfo::exists(entry.path);
        if (missing != entry.missing) {
            entry.missing = missing;
            Q_EMIT dataChanged(index(row), index(row), {MissingRole});
        }
    }
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

void RecentFiles::store() const {
    QStringList paths;
    for (const Entry& entry : entries_) {
        paths.append(entry.path);
    }
    QSettings().setValue(storeKey, paths);
}

}  // namespace tidewell
