#pragma once

#include <QFile>
#include <QString>
#include <QtGlobal>

class QMessageLogContext;

namespace tidewell {

/// Names of the two log files.
struct LogPaths {
    QString appDir;  ///< beside the program
    QString temp;    ///< in the temporary folder
};

/// The files in these folders; `currentDir` stands in for an empty `tempDir`.
LogPaths logPaths(const QString& appDir, const QString& tempDir, const QString& currentDir);

/// Whether the environment asks for log files: KESTREL_ENABLE_LOGS or TIDEWELL_ENABLE_LOGS is on.
bool loggingRequested();

/// Drops debug and info messages of every category.
void silenceDebugAndInfo();

/// The local time as lines of the log begin with it, "2026-03-01T17:05:09.042".
QString logTime();

/// One log file, which `open_log` opens anew once it is full.
class LogFile {
  public:
    explicit LogFile(const QString& path) : path_(path) {}

    /// At its end; false where that is not possible.
    bool open();
    /// Nothing while it is not open.
    void write(const QString& line);

  private:
    QString path_;
    QFile file_;
};

/// Writes "<time> [<level>] <message>" to every open log file. A fatal message then aborts. For
/// all threads; Qt calls it while a `LogFiles` is open.
void logMessageHandler(QtMsgType type, const QMessageLogContext& context, const QString& message);

/// The two files while messages go there. One object at a time.
class LogFiles {
  public:
    explicit LogFiles(const LogPaths& paths);
    ~LogFiles();

    LogFiles(const LogFiles&) = delete;
    LogFiles& operator=(const LogFiles&) = delete;

    /// Opens both at their end and sends messages to those that open instead of to Qt's default
    /// output. Without any, all stays as it was and the answer is false.
    bool open();

  private:
    LogFile appDir_;
    LogFile temp_;
    QtMessageHandler previous_ = nullptr;
    bool installed_ = false;
};

}  // namespace tidewell
