#include "app/play/hand_log.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QStringList>
#include <array>
#include <cmath>

namespace tidewell {
namespace {

constexpr std::array keys = {"time",
                             "role",
                             "board",
                             "oop",
                             "ip",
                             "line",
                             "endedReason",
                             "mistakeActor",
                             "mistakeAction",
                             "correctAction",
                             "evLoss",
                             "chosenEv",
                             "bestEv",
                             "pot",
                             "investedOop",
                             "investedIp",
                             "chosenActionIndex",
                             "correctActionIndex",
                             "isMistake"};

/// A figure that is not known is left empty.
QString fieldOf(const QVariant& value) {
    if (value.typeId() == QMetaType::Double) {
        const double number = value.toDouble();
        return std::isfinite(number) ? QString::number(number, 'g', 10) : QString();
    }
    return value.toString();
}

}  // namespace

void HandLog::setFollowing(bool following) {
    if (following != following_) {
        following_ = following;
        Q_EMIT selectionChanged();
    }
}

int HandLog::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant HandLog::data(const QModelIndex& index, int role) const {
    const auto key = static_cast<std::size_t>(role - Qt::UserRole);
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || key >= keys.size()) {
        return {};
    }
    return hands_[index.row()].value(keys[key]);
}

QHash<int, QByteArray> HandLog::roleNames() const {
    QHash<int, QByteArray> names;
    for (std::size_t key = 0; key < keys.size(); ++key) {
        names.insert(Qt::UserRole + static_cast<int>(key), keys[key]);
    }
    return names;
}

void HandLog::add(const QVariantMap& hand) {
    beginInsertRows({}, 0, 0);
    hands_.prepend(hand);
    endInsertRows();
    if (following_) {
        selected_ = 0;
    } else if (selected_ >= 0) {
        ++selected_;
    }
    Q_EMIT countChanged();
    Q_EMIT selectionChanged();
}

void HandLog::select(int index) {
    if (index >= 0 && index < count()) {
        selected_ = index;
        following_ = index == 0;
        Q_EMIT selectionChanged();
    }
}

QString HandLog::toText() const {
    QStringList lines;
    QStringList fields(keys.begin(), keys.end());
    lines.append(fields.join('\t'));
    for (const QVariantMap& hand : hands_) {
        fields.clear();
        for (const char* const key : keys) {
            fields.append(fieldOf(hand.value(key)));
        }
        lines.append(fields.join('\t'));
    }
    return lines.join('\n') + '\n';
}

void HandLog::copy() const {
    QGuiApplication::clipboard()->setText(toText());
}

}  // namespace tidewell
