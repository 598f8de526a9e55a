#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QVariantMap>

#include "session/solve_session.h"

namespace tidewell {

/// Works out the distributions of nodes on threads of the global pool, and keeps them. The
/// destructor waits for the workers that run.
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

    /// Forgets everything; answers that are under way are dropped when they come.
    void clear();

  Q_SIGNALS:
    void ready(int node);

  private:
    void finish(int node, const QVariantMap& answer);

    const kestrel_app::SolveSession& session_;
    QHash<int, QVariantMap> answers_;
    QSet<int> pending_;
    quint64 generation_ = 0;  // of the solve that answers belong to
};

}  // namespace tidewell
