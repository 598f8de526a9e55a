#include "app/results/why_jobs.h"

#include <QScopedValueRollback>
#include <QVariantList>
#include <memory>

#include "session/node_record.h"

namespace tidewell {
namespace {

using kestrel_app::ActionBreakdown;
using kestrel_app::Follows;
using kestrel_app::FollowUp;

QString wordOf(Follows follows) {
    switch (follows) {
        case Follows::answers:
            return "answers";
        case Follows::deal:
            return "deal";
        case Follows::showdown:
            return "showdown";
        case Follows::nothing:
            break;
    }
    return "nothing";
}

QVariantList listOf(const std::vector<FollowUp>& parts) {
    QVariantList list;
    for (const FollowUp& part : parts) {
        list.append(QVariantMap{{"name", QString::fromStdString(part.name)},
                                {"actionType", QString::fromStdString(part.type)},
                                {"probability", part.probability},
                                {"ev", part.ev / kestrel_app::hundredths_per_chip},
                                {"follows", wordOf(part.follows)},
                                {"parts", listOf(part.parts)}});
    }
    return list;
}

QVariantMap mapOf(const std::optional<ActionBreakdown>& breakdown) {
    if (!breakdown) {
        return {{"ok", false}, {"pending", false}};
    }
    return {{"ok", true},
            {"pending", false},
            {"ev", breakdown->ev / kestrel_app::hundredths_per_chip},
            {"follows", wordOf(breakdown->follows)},
            {"parts", listOf(breakdown->parts)}};
}

}  // namespace

QVariantMap WhyJobs::request(int node, const QString& c1, const QString& c2, int action) {
    const Question question{node, c1, c2, action};
    if (answer_.isEmpty() || !(question == question_)) {
        start(question);
    }
    return answer_;
}

void WhyJobs::start(const Question& question) {
    question_ = question;
    answer_ = mapOf(std::nullopt);
    const auto solve = session_.finished();
    if (question.node < 0 || question.action < 0 || !solve) {
        job_.drop();
        return;
    }
    answer_["pending"] = true;
    const auto work = [asked = std::weak_ptr(solve),
                       question](const std::atomic<bool>& stop) -> std::optional<ActionBreakdown> {
        const auto held = asked.lock();
        return held ? action_breakdown(*held, static_cast<std::uint64_t>(question.node),
                                       question.c1.toStdString(), question.c2.toStdString(),
                                       static_cast<std::size_t>(question.action), &stop)
                    : std::nullopt;
    };
    const auto done = [this, question](const std::optional<ActionBreakdown>& breakdown) {
        answer_ = mapOf(breakdown);
        if (!asking_) {
            Q_EMIT ready(question.node, question.c1, question.c2, question.action);
        }
    };
    const QScopedValueRollback asking(asking_, true);
    job_.start(work, done);
}

void WhyJobs::drop() {
    answer_.clear();
    job_.drop();
}

}  // namespace tidewell
