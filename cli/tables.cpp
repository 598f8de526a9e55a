#include "cli/tables.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "cli/columns.h"
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
    using Lines = std::vector<std::vector<std::string>>;
    const std::vector<std::string> names = distinct_names(report.node.actions);
    const auto add = [&](Lines& lines, std::size_t a, double frequency, const auto& stats) {
        const auto percent = [](double part) {
            const std::string text = figure(100.0 * part, 2);
            return text == "-" ? text : text + " %";
        };
        lines.push_back({names[a], percent(frequency), fixed(stats.combos[a], 2),
                         percent(stats.equity[a]), amount(stats.ev[a])});
    };
    if (report.stats) {
        Lines lines = {{"Action", "Frequency", "Combos", "Equity", "EV"}};
        for (std::size_t a = 0; a < names.size(); ++a) {
            add(lines, a, report.node.actions[a].frequency, *report.stats);
        }
        print_columns(out, style, lines);
        out << "  Of whole ranges, whatever was played on the way. EV: chips out of the pot.\n";
    }
    if (report.here) {
        Lines lines = {{"Hands here", "Frequency", "Combos", "Equity", "EV"}};
        for (std::size_t a = 0; a < names.size(); ++a) {
            add(lines, a, report.here->frequencies[a], *report.here);
        }
        print_columns(out, style, lines);
        out << (report.here->opponent_comes
                    ? "  Of the hands that come here, against those that the other player comes "
                      "with.\n"
                    : "  The other player never comes here.\n");
    }
}

}  // namespace tidewell_cli
