#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace kestrel {

/// A fixed set of threads on one first-in first-out queue. A thread that waits for its tasks helps
/// to run queued ones, so tasks may fan out themselves without the queue running dry of workers.
class WorkerPool {
  public:
    using Task = std::function<void()>;

    /// Starts `count` threads. Throws std::system_error "Cannot start <count + 1> threads: <why>"
    /// when one cannot be started: those beside the caller's.
    explicit WorkerPool(std::size_t count);

    /// Lets the workers finish what is queued, and joins them.
    ~WorkerPool();

    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    /// Queues a task, which must not throw.
    void submit(Task task);

    /// Runs queued tasks until `latch` is zero; yields while there is none. What the tasks behind
    /// the latch wrote is visible on return.
    void help_until_zero(const std::atomic<std::size_t>& latch);

  private:
    bool run_one();
    void work();
    void stop();

    std::vector<std::thread> threads_;
    std::mutex mutex_;  // guards tasks_ and stopping_; never held while a task runs
    std::condition_variable wake_;
    std::deque<Task> tasks_;
    bool stopping_ = false;
};

/// Runs body(begin, end) over [0, count) in at most `threads` contiguous chunks of equal length:
/// the last one on this thread, the others on the pool. One call on this thread when there is no
/// pool, fewer than two threads, or fewer than two indices. Returns when all chunks have ended; the
/// failure of the lowest chunk that failed is then thrown here.
void parallel_for(WorkerPool* pool, std::size_t threads, std::size_t count,
                  const std::function<void(std::size_t, std::size_t)>& body);

/// Deals out the indices below a count, each once, in rising order, to whichever thread asks.
class Turns {
  public:
    explicit Turns(std::size_t count) : count_(count) {}

    /// The next index; nothing once all are dealt out.
    std::optional<std::size_t> take() {
        const std::size_t index = next_.fetch_add(1, std::memory_order_relaxed);
        return index < count_ ? std::optional(index) : std::nullopt;
    }

  private:
    const std::size_t count_;
    std::atomic<std::size_t> next_{0};
};

/// For pieces of work of uneven size: runs body(turns) on at most `threads` threads at once, this
/// one among them, each of which takes turns until none is left. Otherwise as `parallel_for`.
void parallel_turns(WorkerPool* pool, std::size_t threads, std::size_t count,
                    const std::function<void(Turns&)>& body);

}  // namespace kestrel
