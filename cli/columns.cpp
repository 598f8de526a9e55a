#include "cli/columns.h"

#include <algorithm>
#include <cstddef>

namespace tidewell_cli {

void print_columns(std::ostream& out, const TerminalStyle& style,
                   const std::vector<std::vector<std::string>>& lines) {
    std::vector<std::size_t> widths(lines.front().size());
    for (const auto& line : lines) {
        for (std::size_t column = 0; column < line.size(); ++column) {
            widths[column] = std::max(widths[column], line[column].size());
        }
    }
    out << '\n';
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string text = lines[i][0] + std::string(widths[0] - lines[i][0].size(), ' ');
        for (std::size_t column = 1; column < widths.size(); ++column) {
            text += "   " + std::string(widths[column] - lines[i][column].size(), ' ') +
                    lines[i][column];
        }
        text.erase(text.find_last_not_of(' ') + 1);
        out << "  " << (i == 0 ? style.foreground(palette::muted) : "") << text
            << (i == 0 ? style.reset() : "") << '\n';
    }
}

}  // namespace tidewell_cli
