#pragma once

#include <QDir>
#include <QGuiApplication>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QtQuickTest>

#include "app/app_controller.h"
#include "app/graphics_backend.h"
#include "app/language_manager.h"
#include "app/update/update_manager.h"
#include "tests/qml/terminal.h"
#include "tests/temporary_folder.h"

/// What a document finds: the program's own objects, anew for each test file.
class Surroundings : public QObject {
    Q_OBJECT

  public slots:
    // Called by the test runner.
    void applicationAvailable() {
        QQuickStyle::setStyle(QStringLiteral("Basic"));
        tidewell::chooseGraphicsBackend();
        QGuiApplication::setOrganizationName(QStringLiteral("TidewellTests"));
        QGuiApplication::setApplicationName(QStringLiteral("TidewellTests"));
        QGuiApplication::setApplicationVersion(QStringLiteral("1.0.4"));
    }

    // Called by the test runner. The engine owns the objects, so that they live as long as its
    // documents.
    void qmlEngineAvailable(QQmlEngine* engine) {
        engine->addImportPath(QStringLiteral("qrc:/"));
        QQmlContext* const context = engine->rootContext();
        context->setContextProperty(QStringLiteral("languageManager"),
                                    new LanguageManager(engine, engine));
        context->setContextProperty(QStringLiteral("appController"), new AppController(engine));
        context->setContextProperty(QStringLiteral("updates"), new UpdateManager(engine));
        context->setContextProperty(QStringLiteral("terminalProgram"), new Terminal(engine));
        context->setContextProperty(QStringLiteral("temporaryFolderUrl"),
                                    QUrl::fromLocalFile(QDir::tempPath()));
    }

  private:
    // Stands before the application does: the runner takes over later.
    const tidewell_tests::TemporaryHome home_;
};
