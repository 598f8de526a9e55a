#include "app/application.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQmlError>
#include <QQuickStyle>
#include <QRectF>
#include <QScreen>
#include <QStandardPaths>
#include <QVariantMap>
#include <QWindow>
#include <iostream>

#include "app/app_controller.h"
#include "app/command_line.h"
#include "app/graphics_backend.h"
#include "app/language_manager.h"
#include "app/logging.h"
#include "app/update/update_manager.h"
#include "app/window_screen.h"
#include "platform/crash_handlers.h"

namespace tidewell {
namespace {

void nameApplication() {
    const QString name = QStringLiteral("Tidewell");
    QCoreApplication::setOrganizationName(name);
    QCoreApplication::setApplicationName(name);
    QGuiApplication::setApplicationDisplayName(name);
    QCoreApplication::setApplicationVersion(QStringLiteral(TIDEWELL_VERSION));
}

/// From here on a process that dies says so, whether or not logging is on.
void prepareLastWords(const LogPaths& paths) {
    tidewell_platform::setCrashLogPaths(QFile::encodeName(paths.appDir).toStdString(),
                                        QFile::encodeName(paths.temp).toStdString());
    tidewell_platform::installCrashHandlers();
    for (const char* const message :
         {"Crash handlers installed (v2)", "--- Tidewell starting (pre-QFile) ---"}) {
        tidewell_platform::appendCrashLine((logTime() + " [INFO] " + message).toStdString());
    }
}

void logSurroundings(const LogPaths& paths) {
    qInfo().noquote() << "Starting Tidewell";
    qInfo().noquote() << "appDir=" + QCoreApplication::applicationDirPath();
    qInfo().noquote() << "cwd=" + QDir::currentPath();
    qInfo().noquote() << "log_appDir=" + paths.appDir;
    qInfo().noquote() << "log_temp=" + paths.temp;
    qInfo().noquote() << "QuickControlsStyle=" + QQuickStyle::name();
}

/// A window is placed while it is created, so it is told about its screen beforehand.
void load(QQmlApplicationEngine& engine, const QUrl& document, const QUrl& project) {
    QVariantMap properties;
    if (const QScreen* const screen = QGuiApplication::primaryScreen()) {
        properties["availableGeometry"] = QRectF(screen->availableGeometry());
    }
    if (!project.isEmpty()) {
        properties["projectToOpen"] = project;
    }
    engine.setInitialProperties(properties);
    engine.load(document);
    for (QObject* const root : engine.rootObjects()) {
        if (auto* const window = qobject_cast<QWindow*>(root)) {
            new WindowScreen(window);
        }
    }
}

}  // namespace

void reportFailures(QQmlApplicationEngine& engine) {
    QCoreApplication* const application = QCoreApplication::instance();
    QObject::connect(&engine, &QQmlApplicationEngine::warnings, application,
                     [](const QList<QQmlError>& warnings) {
                         for (const QQmlError& warning : warnings) {
                             qWarning().noquote() << warning.toString();
                         }
                     });
    QObject::connect(
        &engine, &QQmlApplicationEngine::objectCreationFailed, application,
        [] {
            qCritical("QML object creation failed");
            QCoreApplication::exit(-1);
        },
        Qt::QueuedConnection);
}

int runApplication(int& argc, char** argv, const Start& start) {
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    const QGuiApplication application(argc, argv);
    nameApplication();
    CommandLine asked;
    if (start.opensFile) {
        asked = parseCommandLine(QCoreApplication::arguments(), QDir::currentPath());
    }
    if (!asked.error.isEmpty()) {
        std::cerr << "tidewell: " << asked.error.toStdString() << "; see --help\n";
        return 2;
    }

    const bool logsEnabled = loggingRequested();
    if (!logsEnabled) {
        silenceDebugAndInfo();
    }
    const LogPaths paths = logPaths(QCoreApplication::applicationDirPath(),
                                    QStandardPaths::writableLocation(QStandardPaths::TempLocation),
                                    QDir::currentPath());
    prepareLastWords(paths);
    LogFiles logFiles(paths);
    if (logsEnabled && logFiles.open()) {
        logSurroundings(paths);
    }

    QGuiApplication::setQuitOnLastWindowClosed(true);
    chooseGraphicsBackend();  // drivers crash, so not before there are handlers
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/"));  // the module of the documents
    QQmlContext* const context = engine.rootContext();
    LanguageManager languageManager(&engine);
    context->setContextProperty(QStringLiteral("languageManager"), &languageManager);
    AppController appController;
    context->setContextProperty(QStringLiteral("appController"), &appController);
    UpdateManager updates;
    context->setContextProperty(QStringLiteral("updates"), &updates);
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &updates, &UpdateManager::programEnds);

    reportFailures(engine);
    load(engine, start.document, asked.project);
    if (engine.rootObjects().isEmpty()) {
        qCritical().noquote() << "Failed to load QML:" << start.document.toString();
        return -1;
    }
    qInfo().noquote()
        << QStringLiteral("QML loaded. rootObjects=%1").arg(engine.rootObjects().size());
    const int exitCode = QGuiApplication::exec();
    // Documents that outlived the objects they are bound to would warn about each of them.
    const QList<QObject*> roots = engine.rootObjects();
    qDeleteAll(roots);
    return exitCode;
}

}  // namespace tidewell
