#include "cli/hand_matrix.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "engine/poker/cards.h"
#include "session/hand_labels.h"

namespace tidewell_cli {
namespace {

constexpr std::size_t cell_width = 5;

/// One hand class of the matrix.
struct Cell {
    double weight = 0;  ///< mean over the class's hands that get here
    std::vector<double> probs;
};

/// By `kestrel_app::label_index`, row by row.
using Matrix = std::array<Cell, kestrel_app::label_count>;

Matrix matrix_of(const NodeReport& node) {
    Matrix matrix;
    std::array<int, kestrel_app::label_count> counts{};
    for (const kestrel_app::HandCombo& combo : node.combos) {
        if (!(combo.weight > 0)) {
            continue;
        }
        const std::size_t label = kestrel_app::label_index(
            kestrel::Pocket{kestrel::parse_card(combo.c1), kestrel::parse_card(combo.c2)});
        Cell& cell = matrix[label];
        ++counts[label];
        cell.probs.resize(combo.action_probs.size());
        cell.weight += combo.weight;
        for (std::size_t a = 0; a < cell.probs.size(); ++a) {
            cell.probs[a] += combo.weight * combo.action_probs[a];
        }
    }
    for (std::size_t label = 0; label < matrix.size(); ++label) {
        Cell& cell = matrix[label];
        if (counts[label] == 0) {
            continue;
        }
        for (double& prob : cell.probs) {
            prob /= cell.weight;
        }
        cell.weight /= counts[label];
    }
    return matrix;
}

/// The rank of a row or a column of the matrix, aces first.
char rank_of_line(std::size_t line) {
    return kestrel::rank_char(12 - static_cast<int>(line));
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
            std::string text = " " + kestrel_app::hand_label(r * 13 + c);
            text.resize(cell_width, ' ');
            const Cell& cell = matrix[r * 13 + c];
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
            const Cell& cell = matrix[r * 13 + c];
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

}  // namespace

void print_hand_matrix(std::ostream& out, const TerminalStyle& style, const NodeReport& node) {
    if (style.colours && style.width < 2 + 13 * cell_width) {
        out << "  The matrix of hands needs a terminal of " << 2 + 13 * cell_width << " columns.\n";
    } else if (style.colours) {
        print_colour_matrix(out, style, node);
    } else {
        print_plain_matrix(out, node);
    }
}

}  // namespace tidewell_cli
