#include "cli/terminal_report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "cli/format.h"
#include "cli/hand_matrix.h"

namespace tidewell_cli {
namespace {

constexpr std::size_t bar_width = 40;

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

std::string signed_chips(float hundredths) {
    return (hundredths >= 0 ? "+" : "") + fixed(static_cast<double>(hundredths) / 100.0, 4);
}

std::string exploitability_text(const kestrel_app::SolveResult& result) {
    return fixed(static_cast<double>(result.exploitability) / 100.0, 4);
}

void print_effect_of_locks(std::ostream& out, const TerminalStyle& style,
                           const SolveReport& report) {
    if (!report.before_locks) {
        return;
    }
    const kestrel_app::SolveResult& before = *report.before_locks;
    const kestrel_app::SolveResult& after = report.result;
    const char* const to = style.unicode ? " → " : " -> ";
    print_row(out, style, "By the locks",
              "EV " + signed_chips(before.ev_oop) + to + signed_chips(after.ev_oop) + " OOP, " +
                  signed_chips(before.ev_ip) + to + signed_chips(after.ev_ip) +
                  " IP; exploitability " + exploitability_text(before) + to +
                  exploitability_text(after));
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
    if (!config.node_locks.empty()) {
        print_row(out, style, "Locks",
                  "of the project: " + std::to_string(config.node_locks.size()));
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
              std::to_string(report.result.iterations) + " of " +
                  std::to_string(report.config.max_iterations) + ", " +
                  duration(report.iteration_ms / 1000.0) + " each on " +
                  threads_text(report.config.thread_count));
    print_row(out, style, "Exploitability",
              style.bold() + exploitability_text(report.result) + " chips, " +
                  fixed(exploitability_percent(report.result), 3) + " % of the pot" +
                  style.reset());
    print_row(out, style, "EV",
              signed_chips(report.result.ev_oop) + " OOP, " + signed_chips(report.result.ev_ip) +
                  " IP, chips against half the pot each");
    print_effect_of_locks(out, style, report);
    print_row(out, style, "Time",
              duration(seconds.total) + ": cards " + duration(seconds.card_context) + ", tree " +
                  duration(seconds.tree) + ", states " + duration(seconds.prepare) + ", solve " +
                  duration(seconds.solve));
    out << '\n';
    out << "  " << style.bold() << heading(report.node) << style.reset() << "\n\n";
    print_actions(out, style, report.node);
    out << '\n';
    if (!report.node.player.empty()) {
        print_hand_matrix(out, style, report.node);
    }
}

}  // namespace tidewell_cli
