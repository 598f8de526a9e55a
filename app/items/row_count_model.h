#pragma once

#include <QAbstractListModel>
#include <QtQmlIntegration>

namespace tidewell {

/// Rows without content, for a list whose delegates look up by their index what they show. A list
/// of another length grows or shrinks at its end, and the delegates on screen stay.
class RowCountModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(int count READ count WRITE setCount NOTIFY countChanged)

  public:
    using QAbstractListModel::QAbstractListModel;

    int count() const { return count_; }
    void setCount(int count);
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : count_;
    }
    QVariant data(const QModelIndex&, int) const override { return {}; }

  signals:
    void countChanged();

  private:
    int count_ = 0;
};

}  // namespace tidewell
