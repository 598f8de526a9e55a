#pragma once

#include <QObject>
#include <QString>

class QQmlEngine;

/// The language of the user interface, which can change at run time: the installed translator, the
/// default locale and the retranslation of the QML engine.
///
/// A language is "system" or a code such as "de" or "pt_BR". English is the language of the source
/// texts and has no catalogue; any other language without a usable catalogue shows them too.
class LanguageManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString currentLanguage READ currentLanguage NOTIFY currentLanguageChanged)

  public:
    /// Applies the stored language, "system" without one. `engine` may be null and must outlive
    /// this object. `catalogues` is the directory of the files "kestrel_<code>.qm".
    explicit LanguageManager(QQmlEngine* engine, QObject* parent = nullptr,
                             const QString& catalogues = QStringLiteral(":/Tidewell/i18n"));

    QString currentLanguage() const { return currentLanguage_; }

    /// Applies and stores a language. "auto", "system" (in any letter case) and "" give "system".
    /// Nothing happens when it is the current language already.
    Q_INVOKABLE void setLanguage(const QString& code);

  signals:
    void currentLanguageChanged();

  private:
    enum class Persist { no, yes };

    void apply(const QString& code, Persist persist);

    QQmlEngine* engine_;
    QString catalogues_;
    QString currentLanguage_ = QStringLiteral("system");
};
