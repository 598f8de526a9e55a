#pragma once

#include <QHash>
#include <QObject>
#include <QVariantMap>
#include <atomic>
#include <memory>

#include "session/solve_session.h"

namespace tidewell {

/// Works out the distributions of nodes on threads of the global pool, and keeps them. What has not
/// begun keeps no solve alive, and what has begun ends after its present walk of the tree once
/// nobody wants it. The destructor waits for that.
class DistributionJobs : public QObject {
    Q_OBJECT

  public:
    explicit DistributionJobs(const kestrel_app::SolveSession& session, QObject* parent = nullptr)
        : QObject(parent), session_(session) {}
    ~DistributionJobs() override;

    /// Answers at once, with what is kept or, while it is being worked out, with `pending` set:
    /// `ok`, `pending`, `nodeIndex`, `error`, and per seat `oopHands`, `evOop` (chips),
    /// `equityOop`, each also for IP.
    QVariantMap request(int node);

    /// Nobody waits for the node any more: what is under way for it stops without a word, and the
    /// next request begins anew. What is kept stays.
    void cancel(int node);

    /// Forgets everything and stops what is under way.
    void clear();

  Q_SIGNALS:
    void ready(int node);

  private:
    void finish(int node, const QVariantMap& answer);

    const kestrel_app::SolveSession& session_;
    QHash<int, QVariantMap> answers_;
    // Under way, by node, each with what tells its worker to stop.
    QHash<int, std::shared_ptr<std::atomic<bool>>> pending_;
};

}  // namespace tidewell
