#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <QtQmlIntegration>

namespace tidewell {

/// Range text as the solver reads it, and what comes of it by painting. Hands are labels ("AA",
/// "AKs", "AKo"), combos two cards ("AhKh"), weights from 0 to 1; what is none of them is ignored.
/// A change alters the combos it is of alone and writes the rest as short runs; pieces that the
/// solver refuses stay in the text.
class HandRanges : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    /// What a range holds: `weights`, from labels to the mean weight of their combos, where that is
    /// above 0; `parts`, of these the ones whose combos differ, from the label to how many of them
    /// are in; `combos`, all of them by their weights, of 1326; `blocked`, those of them that hold
    /// a card of the board, which may be unfinished.
    Q_INVOKABLE static QVariantMap read(const QString& text, const QString& board);

    /// The `weights` of it alone.
    Q_INVOKABLE static QVariantMap weightsOf(const QString& text);

    /// The combos of a hand: `cards`, `weight`, and whether the board has one of its cards,
    /// `blocked`.
    Q_INVOKABLE static QVariantList combosOf(const QString& text, const QString& board,
                                             const QString& hand);

    /// The text once all combos of a hand have the weight.
    Q_INVOKABLE static QString painted(const QString& text, const QString& hand, double weight);

    /// The text once the weights of those combos of a hand that are in have moved, of all of them
    /// where none is.
    Q_INVOKABLE static QString shifted(const QString& text, const QString& hand, double difference);

    /// The text once a single combo has the weight.
    Q_INVOKABLE static QString withCombo(const QString& text, const QString& cards, double weight);

    /// The text once each combo has what it lacked to 1.
    Q_INVOKABLE static QString inverted(const QString& text);

    /// The text of a range on a board: `weights` from hands or combos, of which a combo wins over
    /// its hand, to weights, three digits after the point. Combos that the board blocks, of which
    /// nothing is known, are written like the others of their hand where these are alike.
    Q_INVOKABLE static QString written(const QVariantMap& weights, const QString& board);

    /// How many combos a hand has.
    Q_INVOKABLE static int sizeOf(const QString& hand);
};

}  // namespace tidewell
