#pragma once

#include <QAbstractListModel>
#include <QDateTime>
#include <QSettings>
#include <QStringList>
#include <QUrl>
#include <QtQmlIntegration>
#include <functional>
#include <vector>

namespace tidewell {

/// The project files that were last opened or saved, newest first, kept in the application's
/// settings store under "recentFiles/paths", where other windows add to it, too. A file that is not
/// there any more stays listed, as missing, until someone removes it: its disk may come back.
class RecentFiles : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    static constexpr int most = 8;

    enum Role {
        UrlRole = Qt::UserRole,  ///< "url": the file as a URL
        NameRole,                ///< "name": its name without the folder
        FolderRole,              ///< "folder": the path of its folder
        BoardRole,               ///< "board": cards such as "AdJd8s"; empty where it tells none
        SavedRole,               ///< "saved": when it was last written, a date and time
        MissingRole              ///< "missing": bool, as of the last `refresh` or `add`
    };

    explicit RecentFiles(QObject* parent = nullptr);

    int count() const { return static_cast<int>(entries_.size()); }
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Puts a file on top; beyond `most` the oldest goes. What is no local file is ignored.
    Q_INVOKABLE void add(const QUrl& file);
    Q_INVOKABLE void remove(const QUrl& file);
    /// Looks what other windows have done, and which files are there.
    Q_INVOKABLE void refresh();

    Q_INVOKABLE static bool exists(const QUrl& file);
    /// The folder of the newest file, that of the user's documents, or their own: the first that is
    /// there.
    Q_INVOKABLE QUrl newestFolder() const;

  Q_SIGNALS:
    void countChanged();

  private:
    struct Entry {
        QString path;  ///< absolute
        bool missing = false;
        QDateTime saved;
        QString board;

        bool operator==(const Entry&) const = default;
    };

    static Entry entryOf(const QString& path);
    static QStringList kept(const QSettings& settings);
    int find(const QString& path) const;
    void change(const std::function<void(QStringList&)>& change);
    void show(const QStringList& paths);

    std::vector<Entry> entries_;
};

}  // namespace tidewell
