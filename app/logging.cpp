#include "app/logging.h"

#include <QDateTime>
#include <QDir>
#include <QList>
#include <QLoggingCategory>
#include <QTextStream>
#include <cstdlib>
#include <mutex>

#include "app/environment.h"
#include "platform/log_file.h"

namespace tidewell {
namespace {

std::mutex logMutex;
QList<LogFile*> logDevices;  // guarded by logMutex

const char* levelName(QtMsgType type) {
    switch (type) {
        case QtDebugMsg:
            return "DEBUG";
        case QtWarningMsg:
            return "WARN";
        case QtCriticalMsg:
            return "ERROR";
        case QtFatalMsg:
            return "FATAL";
        case QtInfoMsg:
            break;
    }
    return "INFO";
}

}  // namespace

LogPaths logPaths(const QString& appDir, const QString& tempDir, const QString& currentDir) {
    const QString name = QDir::separator() + QStringLiteral("tidewell.log");
    return {appDir + name, (tempDir.isEmpty() ? currentDir : tempDir) + name};
}

bool loggingRequested() {
    const bool byEngine = envFlagEnabled("KESTREL_ENABLE_LOGS");
    const bool byProgram = envFlagEnabled("TIDEWELL_ENABLE_LOGS");
    return byEngine || byProgram;
}

void silenceDebugAndInfo() {
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.info=false\n"));
}

QString logTime() {
    return QDateTime::currentDateTime().toString(Qt::ISODateWithMs);
}

void logMessageHandler(QtMsgType type, const QMessageLogContext&, const QString& message) {
    const QString line = logTime() + " [" + levelName(type) + "] " + message;
    const std::lock_guard lock(logMutex);
    for (LogFile* const device : logDevices) {
        device->write(line);
    }
    if (type == QtFatalMsg) {
        std::abort();
    }
}

bool LogFile::open() {
    const int descriptor = tidewell_platform::open_log(QFile::encodeName(path_).constData());
    return descriptor >= 0 &&
           file_.open(descriptor, QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text,
                      QFileDevice::AutoCloseHandle);
}

void LogFile::write(const QString& line) {
    if (file_.isOpen() && file_.size() >= tidewell_platform::full_log) {
        file_.close();
        open();
    }
    if (file_.isOpen()) {
        QTextStream stream(&file_);
        stream << line << '\n';
        stream.flush();
    }
}

LogFiles::LogFiles(const LogPaths& paths) : appDir_(paths.appDir), temp_(paths.temp) {}

LogFiles::~LogFiles() {
    if (!installed_) {
        return;
    }
    qInstallMessageHandler(previous_);
    const std::lock_guard lock(logMutex);
    logDevices.clear();
}

bool LogFiles::open() {
    {
        const std::lock_guard lock(logMutex);
        for (LogFile* const file : {&appDir_, &temp_}) {
            if (file->open()) {
                logDevices.append(file);
            }
        }
        if (logDevices.isEmpty()) {
            return false;
        }
    }
    previous_ = qInstallMessageHandler(logMessageHandler);
    installed_ = true;
    return true;
}

}  // namespace tidewell
