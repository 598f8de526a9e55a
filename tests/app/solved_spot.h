#pragma once

#include <thread>

#include "app/config_map.h"
#include "app/results/solve_results.h"
#include "session/solve_session.h"
#include "tests/app/controller_support.h"

namespace tidewell {

/// A spot that was solved without a controller.
class SolvedSpot {
  public:
    explicit SolvedSpot(const QVariantMap& cfg = riverConfig()) {
        session_.start(kestrel_app::config_from_map(configMapOf(cfg)),
                       [this](const kestrel_app::SolveProgress& report) {
                           result_ = report.result.value_or(kestrel_app::SolveResult{});
                       });
        while (session_.isRunning()) {
            std::this_thread::yield();
        }
        EXPECT_TRUE(result_.ok) << result_.error;
    }

    kestrel_app::SolveSession& session() { return session_; }
    const kestrel_app::TreeSnapshot& nodes() const { return *result_.nodes; }
    ResultTree tree() const { return {result_.nodes, result_.effective_stack / 100.0}; }

  private:
    kestrel_app::SolveResult result_;  // outlives the thread that writes it
    kestrel_app::SolveSession session_;
};

}  // namespace tidewell
