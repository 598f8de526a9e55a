#pragma once

#include <QObject>
#include <QThreadPool>
#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <new>
#include <optional>
#include <utility>

namespace tidewell {

/// Works out one answer after the other beside the event loop; the one asked for last is the only
/// one that anybody waits for. What was asked for before is told to stop, and is not begun where it
/// waits for a thread. Thread of the event loop. The destructor waits until all work has ended.
template <class Answer>
class LatestJob {
  public:
    /// On a thread of its own; nothing where there is no answer, or once `stop` is true.
    using Work = std::function<std::optional<Answer>(const std::atomic<bool>& stop)>;
    using Done = std::function<void(std::optional<Answer>)>;

    /// How long a question may hold up the event loop.
    static constexpr std::chrono::milliseconds patience{30};

    LatestJob() {
        constexpr int threads = 2;  // one may be in a part of its work that cannot be stopped
        pool_.setMaxThreadCount(threads);
    }
    ~LatestJob() {
        drop();
        pool_.waitForDone();
    }
    LatestJob(const LatestJob&) = delete;
    LatestJob& operator=(const LatestJob&) = delete;

    /// `done` is called before this returns where `wait` is enough for the work, otherwise by
    /// the event loop, unless `drop` or another `start` comes first. Without the memory for the
    /// work there is no answer.
    void start(Work work, Done done, std::chrono::milliseconds wait = patience) {
        drop();
        const auto run = std::make_shared<Run>();
        run_ = run;
        const std::future<void> ended = run->ended.get_future();
        pool_.start([this, run, work = std::move(work), done] {
            try {
                run->answer = run->stop ? std::nullopt : work(run->stop);
            } catch (const std::bad_alloc&) {
                run->answer.reset();
            }
            run->ended.set_value();
            QMetaObject::invokeMethod(
                &here_, [this, run, done] { finish(run, done); }, Qt::QueuedConnection);
        });
        if (wait.count() > 0 && ended.wait_for(wait) == std::future_status::ready) {
            finish(run, done);
        }
    }

    /// Nobody waits any more.
    void drop() {
        if (run_) {
            run_->stop = true;
            run_.reset();
        }
    }

  private:
    struct Run {
        std::atomic<bool> stop = false;
        std::promise<void> ended = {};
        std::optional<Answer> answer = std::nullopt;  // constant once `ended` is set
    };

    /// Once for each run that is still wanted.
    void finish(const std::shared_ptr<Run>& run, const Done& done) {
        if (run_ == run) {
            run_.reset();
            done(std::move(run->answer));
        }
    }

    QObject here_;  // receives what the threads post
    std::shared_ptr<Run> run_;
    QThreadPool pool_;
};

}  // namespace tidewell
