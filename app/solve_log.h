#pragma once

#include <QVariantMap>

#include "app/results/solve_results.h"
#include "session/solve_session.h"

namespace tidewell {

/// Writes what a solve is asked for into the log, as one line.
void logStart(const QVariantMap& cfg);

/// The same for what a solve reports.
void logProgress(const kestrel_app::SolveProgress& report);

/// The same for a result that is about to be shown.
void logResult(const SolveResults& results);

}  // namespace tidewell
