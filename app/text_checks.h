#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration>

namespace tidewell {

/// What is wrong with text that a person has entered: the piece of it that the solver refuses, or
/// takes for something else, and why. Nothing where the text is fine, and text without content is.
class TextChecks : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    /// Of "QQ+, A5s-A2s:0.5" or "50%". Beside the cards of `board`, which may be unfinished, some
    /// hand with a weight has to be left.
    Q_INVOKABLE static QString checkRange(const QString& text, const QString& board);

    /// Of the sizes of one seat and street, "33, 75, 2e".
    Q_INVOKABLE static QString checkBetSizes(const QString& text);

    /// The same, where multiples ("2.5x") and caps ("500c3r") are sizes too.
    Q_INVOKABLE static QString checkRaiseSizes(const QString& text);

    /// What the solver says of a spot, in the user's words.
    Q_INVOKABLE static QString inWords(const QString& message);
};

}  // namespace tidewell
