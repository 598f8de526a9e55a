#include "app/files/shared_texts.h"

#include <QDebug>
#include <QSettings>

#include "app/files/shared_store.h"

namespace tidewell {

QString SharedTexts::read(const QString& key, const QString& otherwise) {
    QSettings settings;
    settings.sync();
    return settings.value(key, otherwise).toString();
}

QString SharedTexts::change(const QString& key, const QString& otherwise, const QJSValue& change) {
    QString text;
    changeStore([&](QSettings& settings) {
        text = settings.value(key, otherwise).toString();
        const QJSValue changed = change.call({QJSValue(text)});
        if (changed.isString()) {
            text = changed.toString();
            settings.setValue(key, text);
        } else {
            qWarning().noquote() << "A change of" << key << "gives no text:" << changed.toString();
        }
    });
    return text;
}

}  // namespace tidewell
