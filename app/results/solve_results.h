#pragma once

#include <QString>
#include <QVariantList>
#include <exception>

#include "app/results/result_tree.h"
#include "session/solve_session.h"

namespace tidewell {

/// A result as the pages read it; money in chips.
struct SolveResults {
    QString summary;
    double startingPot = 0;
    int iterations = 0;
    double exploitability = 0;
    double evOop = 0;
    double evIp = 0;
    QVariantList rootActions;  ///< maps of `name`, `actionType`, `frequency`
    ResultTree tree;

    bool any() const { return iterations > 0 || tree.nodeCount() > 0 || !rootActions.isEmpty(); }
};

/// Of a solve that did not end well the summary alone, which tells why.
SolveResults resultsOf(const kestrel_app::SolveResult& result);

/// The report of a solve that an exception has ended.
kestrel_app::SolveProgress reportOf(const std::exception& failure);

/// What a report says, for a person and for the pages that read how far a solve is out of it.
QString statusOf(const kestrel_app::SolveProgress& report);

}  // namespace tidewell
