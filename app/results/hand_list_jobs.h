#pragma once

#include <QObject>
#include <vector>

#include "app/results/latest_job.h"
#include "app/results/node_answers.h"
#include "session/solve_session.h"

namespace tidewell {

/// Lists of a node's hands with their values, which are dear near the root: worked out beside the
/// event loop, and kept by `answers`. Both arguments must outlive the object.
class HandListJobs : public QObject {
    Q_OBJECT

  public:
    HandListJobs(const kestrel_app::SolveSession& session, NodeAnswers& answers)
        : session_(session), answers_(answers) {}

    /// Whether NodeAnswers tells the list without delay. Where not, it is worked out, and `ready`
    /// follows unless another node is asked for or `clear` is called before.
    bool request(int node);

    /// Stops what is under way.
    void clear();

  Q_SIGNALS:
    void ready(int node);

  private:
    void start(int node);

    const kestrel_app::SolveSession& session_;
    NodeAnswers& answers_;
    int pending_ = -1;
    LatestJob<std::vector<kestrel_app::HandCombo>> job_;
};

}  // namespace tidewell
