#include "cli/locks.h"

#include <algorithm>
#include <bitset>
#include <cmath>

#include "cli/format.h"
#include "cli/input_error.h"
#include "cli/line_walk.h"
#include "engine/poker/text.h"
#include "session/hand_labels.h"
#include "session/reach.h"
#include "session/text.h"

namespace tidewell_cli {
namespace {

using kestrel::Game;
using kestrel::GameNode;
using kestrel_app::NodeLockEntry;

const std::string every_hand = "*";

/// By label: whether the seat that decides at a node can hold it there.
using HeldLabels = std::bitset<kestrel_app::label_count>;

HeldLabels held_labels(const Game& game, const GameNode& node) {
    const kestrel::CardMask board = kestrel_app::board_at(game, node);
    HeldLabels held;
    for (const kestrel::Pocket& pocket : game.cards.pockets[index_of(node.seat)]) {
        if ((pocket_mask(pocket) & board) == 0) {
            held.set(kestrel_app::label_index(pocket));
        }
    }
    return held;
}

/// "aks" as "AKs".
std::string label_text(std::string_view text) {
    std::string label = kestrel::lower_case(text);
    std::transform(label.begin(), label.begin() + std::min<std::ptrdiff_t>(2, std::ssize(label)),
                   label.begin(), kestrel::to_upper);
    return label;
}

std::vector<float> parse_probs(std::string_view text) {
    std::vector<float> probs;
    double sum = 0;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::string_view item = kestrel::trimmed(text.substr(begin, end - begin));
        begin = end + 1;
        const auto prob = kestrel_app::parsed_number<float>(item);
        if (!prob || !std::isfinite(*prob) || *prob < 0) {
            throw InputError(in_quotes(item) + " is no probability");
        }
        probs.push_back(*prob);
        sum += static_cast<double>(*prob);
    }
    if (!(sum > 0)) {
        throw InputError("one of the probabilities must be above 0");
    }
    for (float& prob : probs) {
        prob = static_cast<float>(static_cast<double>(prob) / sum);
    }
    return probs;
}

void place_lock(const Game& game, Lock& lock, std::vector<NodeLockEntry>& entries) {
    const NodePath path = walk_line(game, lock.line);
    const GameNode& node = game.nodes[path.node];
    lock.line = line_of(game, path);
    if (node.kind != kestrel::NodeKind::Decision || node.actions.empty()) {
        throw InputError("nobody decides behind " + lock.line);
    }
    if (lock.probs.size() != node.actions.size()) {
        throw InputError(std::to_string(lock.probs.size()) + " given for the " +
                         std::to_string(node.actions.size()) + " choices behind " + lock.line +
                         ": " + choices_at(game, path.node));
    }
    const HeldLabels held = held_labels(game, node);
    const std::size_t wanted = kestrel_app::label_index(lock.hand);
    if (lock.hand != every_hand && !held[wanted]) {
        throw InputError(std::string(node.seat == kestrel::Seat::OOP ? "OOP" : "IP") +
                         " holds no " + lock.hand + " behind " + lock.line);
    }
    for (std::size_t label = 0; label < held.size(); ++label) {
        if (held[label] && (lock.hand == every_hand || label == wanted)) {
            entries.push_back({path.node, kestrel_app::hand_label(label), -1, 1.0F, lock.probs});
        }
    }
}

/// Calls `work`, and names the lock in what it throws.
template <class Work>
void named(const std::string& text, const Work& work) {
    try {
        work();
    } catch (const InputError& error) {
        throw InputError("--lock " + in_quotes(text) + ": " + error.what());
    }
}

}  // namespace

Lock parse_lock(std::string_view text) {
    Lock lock;
    lock.text = text;
    const std::size_t semicolon = text.find(';');
    const std::size_t equals = text.find('=', std::min(semicolon, text.size()));
    named(lock.text, [&] {
        if (equals == std::string_view::npos) {
            throw InputError("a lock reads LINE;HAND=p1,p2,... as in 'Check;AKs=0.7,0.3'");
        }
        lock.line = kestrel::trimmed(text.substr(0, semicolon));
        const std::string_view hand =
            kestrel::trimmed(text.substr(semicolon + 1, equals - semicolon - 1));
        lock.hand = label_text(hand);
        if (lock.hand != every_hand &&
            kestrel_app::label_index(lock.hand) == kestrel_app::label_count) {
            throw InputError(in_quotes(hand) +
                             " is no hand such as AA, AKs or AKo, nor * for all hands");
        }
        lock.probs = parse_probs(text.substr(equals + 1));
    });
    return lock;
}

std::vector<NodeLockEntry> place_locks(const Game& game, std::span<Lock> locks) {
    std::vector<NodeLockEntry> entries;
    for (Lock& lock : locks) {
        named(lock.text, [&] { place_lock(game, lock, entries); });
    }
    return entries;
}

}  // namespace tidewell_cli
