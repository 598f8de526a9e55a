#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QVariantMap>
#include <QtQmlIntegration>

namespace tidewell {

/// The hands that were played, newest first, until the program ends. One may be selected: the
/// newest for as long as the log follows, otherwise the one that was chosen, wherever it moves to.
///
/// The keys of a hand, which are the roles of the model too: `time` (local), `board`, `role`, `oop`
/// and `ip` (four characters each, or none), `line`, `endedReason` ("terminal" or "suboptimal"),
/// `mistakeActor`, `mistakeAction`, `correctAction` (empty without a mistake), `chosenActionIndex`,
/// `correctActionIndex` (-1), `evLoss`, `bestEv`, `chosenEv` (chips; NaN), `pot`, `investedOop`,
/// `investedIp` (chips), `isMistake`.
class HandLog : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A trainer has one")

    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int selectedIndex READ selectedIndex NOTIFY selectionChanged)  ///< -1 for none
    Q_PROPERTY(QVariantMap selected READ selected NOTIFY selectionChanged)
    Q_PROPERTY(bool following READ following WRITE setFollowing NOTIFY selectionChanged)

  public:
    using QAbstractListModel::QAbstractListModel;

    int count() const { return static_cast<int>(hands_.size()); }
    int selectedIndex() const { return selected_; }
    QVariantMap selected() const { return get(selected_); }
    bool following() const { return following_; }
    void setFollowing(bool following);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void add(const QVariantMap& hand);

    /// Empty for an index out of range.
    Q_INVOKABLE QVariantMap get(int index) const { return hands_.value(index); }

    /// The newest hand lets the log follow, any other one stays where it is.
    Q_INVOKABLE void select(int index);

    /// The log as tab-separated text, its first line the names of the columns; numbers as
    /// programs read them.
    Q_INVOKABLE QString toText() const;

    /// Puts the text on the clipboard.
    Q_INVOKABLE void copy() const;

  Q_SIGNALS:
    void countChanged();
    void selectionChanged();

  private:
    QList<QVariantMap> hands_;
    int selected_ = -1;
    bool following_ = true;
};

}  // namespace tidewell
