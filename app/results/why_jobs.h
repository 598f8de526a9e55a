#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

#include "app/results/latest_job.h"
#include "session/action_breakdown.h"
#include "session/solve_session.h"

namespace tidewell {

/// What the EV of an action is made of for one hand, worked out beside the event loop where it
/// takes longer. The question asked last is the only one that is answered. The session must outlive
/// the object.
class WhyJobs : public QObject {
    Q_OBJECT

  public:
    explicit WhyJobs(const kestrel_app::SolveSession& session) : session_(session) {}

    /// Answers at once, with `ok` set or, while it is being worked out, with `pending`; neither
    /// where it cannot be told, as without a live solve. See ActionBreakdown: `ev` in chips,
    /// `follows` "answers", "deal", "showdown" or "nothing", and `parts`, maps of `name`,
    /// `actionType`, `probability`, `ev` (NaN where it never comes), `follows` and `parts`.
    QVariantMap request(int node, const QString& c1, const QString& c2, int action);

    /// Nobody wants the answer any more: the work ends soon.
    void drop();

  Q_SIGNALS:
    /// What was pending is known.
    void ready(int node, const QString& c1, const QString& c2, int action);

  private:
    struct Question {
        int node = -1;
        QString c1 = {};
        QString c2 = {};
        int action = -1;

        bool operator==(const Question&) const = default;
    };

    void start(const Question& question);

    const kestrel_app::SolveSession& session_;
    Question question_;    // the last one
    QVariantMap answer_;   // to it
    bool asking_ = false;  // what ends now is told by `request` itself
    LatestJob<kestrel_app::ActionBreakdown> job_;
};

}  // namespace tidewell
