#include "cli/tables.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "cli/format.h"

namespace tidewell_cli {
namespace {

std::string figure(double number, int digits) {
    return std::isfinite(number) ? fixed(number, digits) : "-";
}

/// An amount in hundredths of a chip.
std::string amount(double hundredths) {
    return figure(hundredths / 100.0, 4);
}

/// A probability, a weight or an equity.
std::string share(double number) {
    return figure(number, 6);
}

std::string joined(std::span<const std::string> items, const char* between) {
    std::string text;
    for (const std::string& item : items) {
        text += (text.empty() ? "" : between) + item;
    }
    return text;
}

void add_line(std::string& table, std::span<const std::string> fields) {
    table += joined(fields, "\t") + '\n';
}

}  // namespace

std::vector<std::string> distinct_names(std::span<const ActionReport> actions) {
    std::vector<std::string> names;
    for (std::size_t a = 0; a < actions.size(); ++a) {
        const std::string& name = actions[a].name;
        const bool shared = std::ranges::count(actions, name, &ActionReport::name) > 1;
        names.push_back(shared ? name + " #" + std::to_string(a + 1) : name);
    }
    return names;
}

std::string combos_table(const NodeReport& node) {
    std::vector<std::string> line = {"combo", "weight", "ev"};
    for (const std::string& name : distinct_names(node.actions)) {
        line.push_back(name + " ev");
        line.push_back(name + " prob");
    }
    line.push_back("tags");
    std::string table;
    add_line(table, line);
    for (const kestrel_app::HandCombo& combo : node.combos) {
        line = {combo.c1 + combo.c2, share(combo.weight), amount(combo.ev)};
        for (std::size_t a = 0; a < node.actions.size(); ++a) {
            line.push_back(amount(combo.action_evs[a]));
            line.push_back(share(combo.action_probs[a]));
        }
        line.push_back(joined(combo.buckets, ", "));
        add_line(table, line);
    }
    return table;
}

std::string buckets_table(const NodeReport& node,
                          std::span<const kestrel_app::HandBucket> buckets) {
    std::vector<std::string> line = {"class", "combos"};
    for (const std::string& name : distinct_names(node.actions)) {
        line.push_back(name + " prob");
    }
    std::string table;
    add_line(table, line);
    for (const kestrel_app::HandBucket& bucket : buckets) {
        line = {bucket.name, figure(bucket.combos, 4)};
        for (const float prob : bucket.action_probs) {
            line.push_back(share(static_cast<double>(prob)));
        }
        add_line(table, line);
    }
    return table;
}

std::string distributions_table(const kestrel_app::HandDistributions& distributions) {
    constexpr std::array<const char*, 2> seats = {"OOP", "IP"};
    std::string table = "seat\thand\tev\tequity\n";
    for (std::size_t s = 0; s < seats.size(); ++s) {
        const kestrel_app::SeatDistribution& hands = distributions[s];
        for (std::size_t h = 0; h < hands.hands.size(); ++h) {
            add_line(table,
                     std::array<std::string, 4>{seats[s], hands.hands[h], amount(hands.ev[h]),
                                                share(hands.equity[h])});
        }
    }
    return table;
}

void print_stats(std::ostream& out, const TerminalStyle& style, const SolveReport& report) {
    if (!report.stats) {
        return;
    }
    const kestrel_app::NodeActionStats& stats = *report.stats;
    std::vector<std::array<std::string, 5>> lines = {
        {"Action", "Frequency", "Combos", "Equity", "EV"}};
    const std::vector<std::string> names = distinct_names(report.node.actions);
    for (std::size_t a = 0; a < names.size(); ++a) {
        const std::string equity = figure(100.0 * stats.equity[a], 2);
        lines.push_back({names[a], fixed(100.0 * report.node.actions[a].frequency, 2) + " %",
                         fixed(stats.combos[a], 2), equity == "-" ? equity : equity + " %",
                         amount(stats.ev[a])});
    }
    std::array<std::size_t, 5> widths{};
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
        out << "  " << (i == 0 ? style.foreground(palette::muted) : "") << text
            << (i == 0 ? style.reset() : "") << '\n';
    }
    out << "  Of whole ranges, whatever was played on the way. EV: chips out of the pot.\n";
}

}  // namespace tidewell_cli
