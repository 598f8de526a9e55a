#include "cli/terminal_report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "cli/format.h"
#include "engine/poker/cards.h"

namespace tidewell_cli {
namespace {

constexpr std::size_t cell_width = 5;
constexpr std::size_t bar_width = 40;

/// One hand class of the matrix.
struct Cell {
    double weight = 0;  ///< mean over the class's hands that get here
    std::vector<double> probs;
};

using Matrix = std::array<std::array<Cell, 13>, 13>;

Matrix matrix_of(const NodeReport& node) {
    Matrix matrix;
    std::array<std::array<int, 13>, 13> counts{};
    for (const ComboReport& combo : node.combos) {
        if (!(combo.weight > 0)) {
            continue;
        }
        const auto row = static_cast<std::size_t>(12 - kestrel::rank_of(combo.pocket.high));
        const auto column = static_cast<std::size_t>(12 - kestrel::rank_of(combo.pocket.low));
        const bool suited =
            kestrel::suit_of(combo.pocket.high) == kestrel::suit_of(combo.pocket.low);
        Cell& cell = suited ? matrix[row][column] : matrix[column][row];
        ++(suited ? counts[row][column] : counts[column][row]);
        cell.probs.resize(combo.probs.size());
        cell.weight += combo.weight;
        for (std::size_t a = 0; a < combo.probs.size(); ++a) {
            cell.probs[a] += combo.weight * combo.probs[a];
        }
    }
    for (std::size_t r = 0; r < 13; ++r) {
        for (std::size_t c = 0; c < 13; ++c) {
            Cell& cell = matrix[r][c];
            if (counts[r][c] == 0) {
                continue;
            }
            for (double& prob : cell.probs) {
                prob /= cell.weight;
            }
            cell.weight /= counts[r][c];
        }
    }
    return matrix;
}

/// The rank of a row or a column of the matrix, aces first.
char rank_of_line(std::size_t line) {
    return kestrel::rank_char(12 - static_cast<int>(line));
}

std::string label(std::size_t row, std::size_t column) {
    const char high = rank_of_line(std::min(row, column));
    const char low = rank_of_line(std::max(row, column));
    if (row == column) {
        return {high, low};
    }
    return {high, low, row < column ? 's' : 'o'};
}

/// The colour of one column of a cell that is split from left to right by action.
Colour column_colour(const Cell& cell, const std::vector<Colour>& colours, std::size_t column) {
    const double begin = static_cast<double>(column) / cell_width;
    const double end = static_cast<double>(column + 1) / cell_width;
    Colour result = colours.front();
    double action_begin = 0;
    double covered = 0;
    for (std::size_t a = 0; a < colours.size(); ++a) {
        const double action_end = a + 1 == colours.size() ? 1.0 : action_begin + cell.probs[a];
        const double overlap = std::min(end, action_end) - std::max(begin, action_begin);
        if (overlap > 0) {
            covered += overlap;
            result = mixed(result, colours[a], overlap / covered);
        }
        action_begin = action_end;
    }
    // A class that only partly gets here is fainter.
    return mixed(palette::surface, result, 0.3 + 0.7 * std::min(1.0, cell.weight));
}

double luminance(Colour colour) {
    return (0.299 * colour.red + 0.587 * colour.green + 0.114 * colour.blue) / 255.0;
}

void print_colour_matrix(std::ostream& out, const TerminalStyle& style, const NodeReport& node) {
    std::vector<Colour> colours;
    for (const ActionReport& action : node.actions) {
        colours.push_back(action_colour(action.type));
    }
    const Matrix matrix = matrix_of(node);
    const bool gaps = style.width >= 2 + 13 * (cell_width + 1);
    for (std::size_t r = 0; r < 13; ++r) {
        out << "  ";
        for (std::size_t c = 0; c < 13; ++c) {
            if (gaps && c > 0) {
                out << style.reset() << ' ';
            }
            std::string text = " " + label(r, c);
            text.resize(cell_width, ' ');
            const Cell& cell = matrix[r][c];
            if (cell.probs.empty()) {
                out << style.background(palette::surface) << style.foreground(palette::faint)
                    << text;
                continue;
            }
            for (std::size_t k = 0; k < cell_width; ++k) {
                const Colour ground = column_colour(cell, colours, k);
                out << style.background(ground)
                    << style.foreground(luminance(ground) > 0.42 ? palette::ground : palette::text)
                    << text[k];
            }
        }
        out << style.reset() << '\n';
    }
}

/// Without colours: for each class the letter of its most frequent action and how often it is
/// taken.
void print_plain_matrix(std::ostream& out, const NodeReport& node) {
    const Matrix matrix = matrix_of(node);
    out << "      ";
    for (std::size_t c = 0; c < 13; ++c) {
        out << "    " << rank_of_line(c);
    }
    out << '\n';
    for (std::size_t r = 0; r < 13; ++r) {
        out << "     " << rank_of_line(r);
        for (std::size_t c = 0; c < 13; ++c) {
            const Cell& cell = matrix[r][c];
            char text[16] = "    .";
            if (!cell.probs.empty()) {
                const auto most = std::ranges::max_element(cell.probs);
                const auto letter = static_cast<char>('a' + (most - cell.probs.begin()) % 26);
                std::snprintf(text, sizeof text, " %c%3.0f", letter, 100.0 * *most);
            }
            out << text;
        }
        out << '\n';
    }
    out << "  Suited hands stand above the diagonal. Each entry is the action that the hand takes\n"
           "  most often, by its letter, and how often in percent.\n";
}

std::string bar(const TerminalStyle& style, double share) {
    const double length = share * static_cast<double>(bar_width);
    if (!style.unicode) {
        return std::string(static_cast<std::size_t>(std::lround(length)), '#');
    }
    constexpr std::array<const char*, 8> eighths = {"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
    const auto steps = static_cast<std::size_t>(std::lround(length * 8));
    std::string text;
    for (std::size_t i = 0; i < steps / 8; ++i) {
        text += "█";
    }
    return text + eighths[steps % 8];
}

std::string cards_text(const TerminalStyle& style, const std::string& board) {
    std::string text;
    for (std::size_t i = 0; i + 1 < board.size(); i += 2) {
        const char suit = board[i + 1];
        const Colour colour = suit == 'h'   ? palette::red
                              : suit == 'd' ? palette::blue
                              : suit == 'c' ? palette::green
                                            : palette::text;
        text += (i == 0 ? "" : " ") + style.bold() + style.foreground(colour) + board.substr(i, 2) +
                style.reset();
    }
    return text;
}

/// A line of figures behind its name.
void print_row(std::ostream& out, const TerminalStyle& style, std::string_view name,
               const std::string& text) {
    std::string padded(name);
    padded.resize(16, ' ');
    out << "  " << style.foreground(palette::muted) << padded << style.reset() << text << '\n';
}

std::string signed_chips(double hundredths) {
    return (hundredths >= 0 ? "+" : "") + fixed(hundredths / 100.0, 4);
}

std::string threads_text(std::uint64_t threads) {
    return threads == 1 ? "1 thread" : std::to_string(threads) + " threads";
}

std::string heading(const NodeReport& node) {
    constexpr std::array<const char*, 3> streets = {"Flop", "Turn", "River"};
    std::string text = node.line == "root" ? "" : node.line + ": ";
    if (!node.player.empty()) {
        text += std::string(streets[static_cast<std::size_t>(node.street)]) + ", " + node.player +
                " to act";
    } else {
        text += node.actions.empty() ? "the hand is over" : "a card is dealt";
    }
    return text + ", pot " + chips(node.pot);
}

void print_actions(std::ostream& out, const TerminalStyle& style, const NodeReport& node) {
    std::size_t name_width = 0;
    for (const ActionReport& action : node.actions) {
        name_width = std::max(name_width, action.name.size());
    }
    for (std::size_t a = 0; a < node.actions.size(); ++a) {
        const ActionReport& action = node.actions[a];
        std::string name = action.name;
        name.resize(name_width, ' ');
        char share[16];
        std::snprintf(share, sizeof share, "%6.2f %%", 100.0 * action.frequency);
        out << "  ";
        if (!style.colours && !node.player.empty()) {
            out << static_cast<char>('a' + a % 26) << "  ";
        }
        out << name << "  " << share << "  " << style.foreground(action_colour(action.type))
            << bar(style, action.frequency) << style.reset() << '\n';
    }
}

}  // namespace

void print_spot(std::ostream& out, const TerminalStyle& style, const BuiltSpot& spot) {
    const kestrel_app::SolveConfig& config = spot.config;
    const kestrel_app::SolveMemoryEstimate& estimate = spot.estimate;
    std::string money =
        chips(config.starting_pot) + ", stacks " + chips(config.effective_stack) + " chips";
    if (config.rake_percent > 0) {
        money += ", rake " + decimal(config.rake_percent, 2) + " %";
        if (config.rake_cap > 0) {
            money += " up to " + chips(config.rake_cap);
        }
    }
    std::string memory = bytes(estimate.total_bytes) + " estimated";
    if (spot.available_bytes) {
        memory += ", " + bytes(*spot.available_bytes) + " available";
    }

    out << '\n';
    print_row(out, style, "Board", cards_text(style, config.board));
    print_row(out, style, "Pot", money);
    if (config.exact_all_in) {
        print_row(out, style, "All-ins", "exact run-outs");
    }
    print_row(out, style, "Hands",
              std::to_string(estimate.oop_hand_count) + " OOP, " +
                  std::to_string(estimate.ip_hand_count) + " IP");
    print_row(out, style, "Tree",
              grouped(estimate.node_count) + " nodes, " + grouped(estimate.decision_node_count) +
                  " decisions");
    print_row(out, style, "Memory", memory);
    out << std::flush;
}

void print_report(std::ostream& out, const TerminalStyle& style, const SolveReport& report) {
    const PhaseSeconds& seconds = report.seconds;
    print_row(out, style, "Peak memory", bytes(report.peak_resident_bytes));
    print_row(out, style, "Iterations",
              std::to_string(report.iterations) + " of " +
                  std::to_string(report.config.max_iterations) + ", " +
                  duration(report.iteration_ms / 1000.0) + " each on " +
                  threads_text(report.config.thread_count));
    print_row(out, style, "Exploitability",
              style.bold() + fixed(report.exploitability / 100.0, 4) + " chips, " +
                  fixed(report.exploitability_percent(), 3) + " % of the pot" + style.reset());
    print_row(out, style, "EV",
              signed_chips(report.ev[0]) + " OOP, " + signed_chips(report.ev[1]) +
                  " IP, chips against half the pot each");
    print_row(out, style, "Time",
              duration(seconds.total) + ": cards " + duration(seconds.card_context) + ", tree " +
                  duration(seconds.tree) + ", states " + duration(seconds.prepare) + ", solve " +
                  duration(seconds.solve));
    out << '\n';
    out << "  " << style.bold() << heading(report.node) << style.reset() << "\n\n";
    print_actions(out, style, report.node);
    out << '\n';
    if (report.node.player.empty()) {
        return;
    }
    if (style.colours && style.width < 2 + 13 * cell_width) {
        out << "  The matrix of hands needs a terminal of " << 2 + 13 * cell_width << " columns.\n";
    } else if (style.colours) {
        print_colour_matrix(out, style, report.node);
    } else {
        print_plain_matrix(out, report.node);
    }
}

}  // namespace tidewell_cli
