#pragma once

#include <QString>
#include <QVariantList>

#include "app/results/result_tree.h"
#include "session/result_snapshot.h"

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

/// Those of a solve that ended well.
SolveResults resultsOf(const kestrel_app::SolveResult& result);

}  // namespace tidewell
