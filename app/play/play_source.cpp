#include "app/play/play_source.h"

#include <QFutureWatcher>
#include <QtConcurrent>
#include <algorithm>
#include <new>
#include <string>
#include <utility>

#include "session/node_queries.h"

namespace tidewell {
namespace {

using kestrel_app::FinishedSolve;
using kestrel_app::HandCombo;
using kestrel_app::NodeRecord;
using Stop = std::shared_ptr<std::atomic<bool>>;
using Cards = std::pair<std::string, std::string>;

Cards textsOf(const Hole& hole) {
    return std::minmax(kestrel::card_to_string(hole[0]), kestrel::card_to_string(hole[1]));
}

bool isHand(const HandCombo& combo, const Cards& cards) {
    return Cards(std::minmax(combo.c1, combo.c2)) == cards;
}

const HandCombo* comboIn(const NodeRecord::Kept<std::vector<HandCombo>>& combos, const Hole& hole) {
    if (!combos) {
        return nullptr;
    }
    const Cards cards = textsOf(hole);
    const auto found =
        std::ranges::find_if(*combos, [&](const HandCombo& combo) { return isHand(combo, cards); });
    return found == combos->end() ? nullptr : &*found;
}

/// The hands of a node and, for a hand that is not among them or that is none, the mean values.
NodeRecord workOut(const FinishedSolve& solve, std::uint64_t node, NodeRecord known,
                   const std::optional<Hole>& hole) {
    using namespace kestrel_app;
    if (!known.combos) {
        if (auto combos = hand_combos(solve, node)) {
            known.combos = std::make_shared<const std::vector<HandCombo>>(in_chips(*combos));
        }
    }
    if (!known.stats && !(hole && comboIn(known.combos, *hole) != nullptr)) {
        if (auto stats = node_action_stats(solve, node)) {
            known.stats = std::make_shared<const NodeActionStats>(in_chips(*stats));
        }
    }
    return known;
}

NodeRecord workOutBeside(const std::weak_ptr<const FinishedSolve>& asked, std::uint64_t node,
                         const NodeRecord& known, const std::optional<Hole>& hole,
                         const Stop& stop) {
    try {
        const auto solve = asked.lock();
        return solve && !*stop ? workOut(*solve, node, known, hole) : NodeRecord();
    } catch (const std::bad_alloc&) {
        return {};  // without the memory for it there is no answer
    }
}

}  // namespace

PlaySource::~PlaySource() {
    *stop_ = true;
    for (auto* const watcher : findChildren<QFutureWatcherBase*>()) {
        watcher->waitForFinished();
    }
}

std::vector<kestrel_app::SeatCombo> PlaySource::range(int node, kestrel::Seat seat) {
    const auto combos = answers_.rangeOf(node, seat);
    return combos ? *combos : std::vector<kestrel_app::SeatCombo>();
}

std::vector<double> PlaySource::strategyOf(int node, kestrel::Seat seat, const Hole& hole) const {
    if (const auto solve = session_.finished()) {
        const Cards cards = textsOf(hole);
        return kestrel_app::pocket_strategy(*solve, static_cast<std::uint64_t>(node), seat,
                                            cards.first, cards.second)
            .value_or(std::vector<double>());
    }
    const HandCombo* const combo = comboOf(node, hole);
    return combo != nullptr ? combo->action_probs : std::vector<double>();
}

bool PlaySource::ask(int node, const std::optional<Hole>& hole) {
    const auto solve = session_.finished();
    if (!solve || knows(node, hole)) {
        return true;
    }
    if (pending_.contains(node)) {
        return false;
    }
    pending_.insert(node);
    const NodeRecord* const record = recordOf(node);
    auto* const watcher = new QFutureWatcher<NodeRecord>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, node, stop = stop_] {
        watcher->deleteLater();
        if (!*stop) {
            pending_.remove(node);
            answers_.add(node, watcher->result());
            Q_EMIT told(node);
        }
    });
    watcher->setFuture(QtConcurrent::run(workOutBeside, std::weak_ptr<const FinishedSolve>(solve),
                                         static_cast<std::uint64_t>(node),
                                         record != nullptr ? *record : NodeRecord(), hole, stop_));
    return false;
}

void PlaySource::learn(int node, const std::optional<Hole>& hole) {
    const auto solve = session_.finished();
    if (solve && !knows(node, hole)) {
        const NodeRecord* const record = recordOf(node);
        const NodeRecord known = record != nullptr ? *record : NodeRecord();
        answers_.add(node, workOut(*solve, static_cast<std::uint64_t>(node), known, hole));
    }
}

std::vector<std::vector<double>> PlaySource::actionEvs(int node,
                                                       const std::optional<Hole>& hole) const {
    std::vector<std::vector<double>> lists;
    const NodeRecord* const record = recordOf(node);
    if (const HandCombo* const combo = hole ? comboOf(node, *hole) : nullptr) {
        lists.push_back(combo->action_evs);
    }
    if (record != nullptr && record->stats) {
        lists.push_back(record->stats->ev);
    }
    return lists;
}

void PlaySource::clear() {
    pending_.clear();
    *stop_ = true;
    stop_ = std::make_shared<std::atomic<bool>>(false);
}

const NodeRecord* PlaySource::recordOf(int node) const {
    const auto found = answers_.records().find(node);
    return found == answers_.records().end() ? nullptr : &found->second;
}

const HandCombo* PlaySource::comboOf(int node, const Hole& hole) const {
    const NodeRecord* const record = recordOf(node);
    return record != nullptr ? comboIn(record->combos, hole) : nullptr;
}

bool PlaySource::knows(int node, const std::optional<Hole>& hole) const {
    if (hole && comboOf(node, *hole) != nullptr) {
        return true;
    }
    const NodeRecord* const record = recordOf(node);
    return record != nullptr && record->stats && (!hole || record->combos);
}

}  // namespace tidewell
