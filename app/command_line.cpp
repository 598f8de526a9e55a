#include "app/command_line.h"

#include <QDir>
#include <iostream>

namespace tidewell {
namespace {

const char* const help = R"(Usage: tidewell [FILE]

Opens the solver, with the project in FILE if one is given.

  --help      print this and end
  --version   print the version and end

Spots are solved in a terminal by tidewell-solve.
)";

}  // namespace

CommandLine parseCommandLine(const QStringList& arguments, const QString& folder) {
    CommandLine line;
    bool onlyFiles = false;
    for (const QString& argument : arguments.mid(1)) {
        if (onlyFiles || !argument.startsWith('-')) {
            if (!line.project.isEmpty()) {
                line.error = QStringLiteral("only one file can be opened at a time");
            }
            line.project = QUrl::fromUserInput(argument, folder, QUrl::AssumeLocalFile);
        } else if (argument == "--") {
            onlyFiles = true;
        } else if (argument == "--help" || argument == "-h") {
            line.help = true;
        } else if (argument == "--version") {
            line.version = true;
        } else {
            line.error = QStringLiteral("unknown option '%1'").arg(argument);
        }
    }
    return line;
}

std::optional<int> answerWithoutWindow(int argc, char** argv) {
    // Options of the toolkit are taken out only by an application, which needs a display. Where one
    // of them stands, what is asked is a window.
    if (argc != 2) return std::nullopt;
    const CommandLine line = parseCommandLine({QString(), QString::fromLocal8Bit(argv[1])}, {});
    if (line.help) {
        std::cout << help;
    } else if (line.version) {
        std::cout << "tidewell " TIDEWELL_VERSION "\n";
    } else {
        return std::nullopt;
    }
    return std::cout.flush() ? 0 : 1;
}

}  // namespace tidewell
