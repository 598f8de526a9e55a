#pragma once

#include <QObject>
#include <QVariantList>

#include "app/results/latest_job.h"
#include "app/results/node_answers.h"
#include "session/node_here.h"
#include "session/solve_session.h"

namespace tidewell {

/// Statistics of the hands that come to a node, whose EVs are dear near the root: worked out beside
/// the event loop, and kept by `answers`. Both arguments must outlive the object.
class HereJobs : public QObject {
    Q_OBJECT

  public:
    HereJobs(const kestrel_app::SolveSession& session, NodeAnswers& answers)
        : session_(session), answers_(answers) {}

    /// Answers at once with what NodeAnswers has or, while it is being worked out, with maps that
    /// have `pending` set and neither `equity` nor `ev`. Only the node asked for last is worked on.
    QVariantList request(int node);

    /// Stops what is under way.
    void clear();

  Q_SIGNALS:
    /// What was pending is known.
    void ready(int node);

  private:
    void start(int node);

    const kestrel_app::SolveSession& session_;
    NodeAnswers& answers_;
    int pending_ = -1;
    bool starting_ = false;  // what ends now is told by `request` itself
    LatestJob<kestrel_app::ActionStatsHere> job_;
};

}  // namespace tidewell
