#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>
#include <optional>

namespace tidewell {

/// What the program was asked for when it was started.
struct CommandLine {
    bool help = false;
    bool version = false;
    QUrl project;   ///< to open; empty for none
    QString error;  ///< what cannot be made sense of; empty if all can
};

/// `arguments` begin with the program's name; relative files are taken from `folder`.
CommandLine parseCommandLine(const QStringList& arguments, const QString& folder);

/// Prints help or version if that is all that is asked, and needs no display for it: then the exit
/// code.
std::optional<int> answerWithoutWindow(int argc, char** argv);

}  // namespace tidewell
