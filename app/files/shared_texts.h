#pragma once

#include <QJSValue>
#include <QObject>
#include <QString>
#include <QtQmlIntegration>

namespace tidewell {

/// Texts of the application's settings store for documents, which keep lists as JSON there; see
/// `changeStore`.
class SharedTexts : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    using QObject::QObject;

    /// As it stands on the disk now, `otherwise` where there is nothing.
    Q_INVOKABLE static QString read(const QString& key, const QString& otherwise);

    /// `change` is called with what stands there, or with `otherwise`, and gives what is to stand
    /// there; a change that fails, or that gives no text, changes nothing. What stands there then.
    Q_INVOKABLE static QString change(const QString& key, const QString& otherwise,
                                      const QJSValue& change);
};

}  // namespace tidewell
