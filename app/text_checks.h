#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration>

namespace tidewell {

/// What the solver's own parsers say about text that a person has entered: their message, as it
/// would end a solve, or nothing where the text is fine. Text without content is fine here.
class TextChecks : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    /// Of "QQ+, A5s-A2s:0.5" or "50%".
    Q_INVOKABLE static QString checkRange(const QString& text);

    /// Of the sizes of one seat and street, "33, 75, 2e". `addAllIn` is the switch beside them.
    Q_INVOKABLE static QString checkBetSizes(const QString& text, bool addAllIn);

    /// The same, where multiples ("2.5x") and caps ("500c3r") are sizes too.
    Q_INVOKABLE static QString checkRaiseSizes(const QString& text, bool addAllIn);
};

}  // namespace tidewell
