#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <string>
#include <vector>

#include "tests/app/files.h"

/// A copy of a program in a folder of its own, with a temporary folder, settings and working folder
/// that nobody else uses. Its log files are its own, then, and all goes at the end.
class InstalledProgram {
  public:
    explicit InstalledProgram(const QString& binary) {
        EXPECT_TRUE(folder_.isValid());
        for (const char* const name : {"app", "tmp", "home"}) {
            QDir(folder_.path()).mkdir(name);
        }
        EXPECT_TRUE(QFile::copy(binary, program()));
        setVariable("TMPDIR", path("tmp"));
        setVariable("HOME", path("home"));
        setVariable("XDG_CONFIG_HOME", path("home"));
        environment_.remove("KESTREL_ENABLE_LOGS");
        environment_.remove("TIDEWELL_ENABLE_LOGS");
        environment_.remove("QT_LOGGING_RULES");
    }

    QString path(const QString& name) const { return folder_.filePath(name); }
    QString program() const { return path("app/program"); }
    QString appLogPath() const { return path("app/tidewell.log"); }
    QString tempLogPath() const { return path("tmp/tidewell.log"); }

    void setVariable(const QString& name, const QString& value) {
        environment_.insert(name, value);
    }

    void start(QProcess& process, const QStringList& arguments = {}) const {
        process.setProcessEnvironment(environment_);
        process.setWorkingDirectory(path("home"));
        process.start(program(), arguments);
    }

  private:
    QTemporaryDir folder_;
    QProcessEnvironment environment_ = QProcessEnvironment::systemEnvironment();
};

/// The lines of a log file without their line feeds, "<time>" for the time that one begins with.
inline std::vector<std::string> linesOf(const QString& fileName) {
    static const QRegularExpression time(R"(^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3})");
    std::vector<std::string> lines;
    for (QString line : QString::fromUtf8(readFile(fileName)).split('\n')) {
        lines.push_back(line.replace(time, "<time>").toStdString());
    }
    EXPECT_EQ(lines.back(), "");  // no line is left open
    lines.pop_back();
    return lines;
}
