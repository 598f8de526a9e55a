#include "app/items/row_count_model.h"

#include <algorithm>

namespace tidewell {

void RowCountModel::setCount(int count) {
    count = std::max(0, count);
    if (count == count_) {
        return;
    }
    if (count > count_) {
        beginInsertRows({}, count_, count - 1);
        count_ = count;
        endInsertRows();
    } else {
        beginRemoveRows({}, count, count_ - 1);
        count_ = count;
        endRemoveRows();
    }
    emit countChanged();
}

}  // namespace tidewell
