#include "app/language_manager.h"

#include <QCoreApplication>
#include <QDebug>
#include <QLocale>
#include <QPointer>
#include <QQmlEngine>
#include <QSettings>
#include <QStringList>
#include <QTranslator>
#include <memory>

namespace {

const QString languageKey = QStringLiteral("ui/language");
const QString systemLanguage = QStringLiteral("system");
const QString sourceLanguage = QStringLiteral("en");

/// The one translator of the process, if any; the application owns it.
QPointer<QTranslator> installedTranslator;

QString normalized(const QString& code) {
    const QString trimmed = code.trimmed();
    const QString lower = trimmed.toLower();
    return lower.isEmpty() || lower == "auto" || lower == systemLanguage ? systemLanguage : trimmed;
}

QLocale localeOf(const QString& code) {
    return code == systemLanguage ? QLocale::system() : QLocale(code);
}

/// Names under which the catalogue of a language may be filed, the closest first.
QStringList catalogueNames(const QString& code) {
    const QString name = localeOf(code).name();
    QStringList names;
    if (code != systemLanguage) {
        names << code;
    }
    names << name << name.section('_', 0, 0);
    names.removeDuplicates();
    return names;
}

/// Null for the source language and where no catalogue can be read.
std::unique_ptr<QTranslator> loadTranslator(const QString& code, const QString& directory) {
    if (code == sourceLanguage) {
        return nullptr;
    }
    auto translator = std::make_unique<QTranslator>();
    for (const QString& name : catalogueNames(code)) {
        if (translator->load("kestrel_" + name, directory)) {
            return translator;
        }
    }
    return nullptr;
}

void replaceTranslator(std::unique_ptr<QTranslator> translator) {
    delete installedTranslator;
    if (translator) {
        QCoreApplication::installTranslator(translator.get());
        translator->setParent(QCoreApplication::instance());
        installedTranslator = translator.release();
    }
}

}  // namespace

LanguageManager::LanguageManager(QQmlEngine* engine, QObject* parent, const QString& catalogues)
    : QObject(parent), engine_(engine), catalogues_(catalogues) {
    apply(normalized(QSettings().value(languageKey).toString()), Persist::no);
}

void LanguageManager::setLanguage(const QString& code) {
    const QString language = normalized(code);
    if (language != currentLanguage_) {
        apply(language, Persist::yes);
    }
}

void LanguageManager::apply(const QString& code, Persist persist) {
    std::unique_ptr<QTranslator> translator = loadTranslator(code, catalogues_);
    const char* const outcome = translator ? "loaded" : "not loaded";
    replaceTranslator(std::move(translator));

    const QLocale locale = localeOf(code);
    QLocale::setDefault(locale);
    currentLanguage_ = code;
    if (persist == Persist::yes) {
        QSettings settings;
        settings.setValue(languageKey, code);
        settings.sync();
    }
    qInfo() << "Language set to" << code << "(translator" << outcome << ")";
    if (engine_ != nullptr) {
        engine_->setUiLanguage(locale.bcp47Name());
        engine_->retranslate();
    }
    emit currentLanguageChanged();
}
