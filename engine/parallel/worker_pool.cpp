#include "engine/parallel/worker_pool.h"

#include <algorithm>
#include <exception>
#include <string>
#include <system_error>
#include <utility>

namespace kestrel {

WorkerPool::WorkerPool(std::size_t count) {
    threads_.reserve(count);
    try {
        for (std::size_t i = 0; i < count; ++i) {
            threads_.emplace_back([this] { work(); });
        }
    } catch (const std::system_error& error) {
        stop();
        // The caller of the pool is one of the threads that were asked for.
        throw std::system_error(error.code(),
                                "Cannot start " + std::to_string(count + 1) + " threads");
    } catch (...) {
        stop();
        throw;
    }
}

WorkerPool::~WorkerPool() {
    stop();
}

void WorkerPool::stop() {
    {
        const std::scoped_lock lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    for (std::thread& thread : threads_) {
        thread.join();
    }
}

void WorkerPool::submit(Task task) {
    {
        const std::scoped_lock lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    wake_.notify_one();
}

bool WorkerPool::run_one() {
    Task task;
    {
        const std::scoped_lock lock(mutex_);
        if (tasks_.empty()) {
            return false;
        }
        task = std::move(tasks_.front());
        tasks_.pop_front();
    }
    task();
    return true;
}

void WorkerPool::help_until_zero(const std::atomic<std::size_t>& latch) {
    while (latch.load(std::memory_order_acquire) != 0) {
        if (!run_one()) {
            std::this_thread::yield();
        }
    }
}

void WorkerPool::work() {
    for (;;) {
        {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [this] { return stopping_ || !tasks_.empty(); });
            if (tasks_.empty()) {
                return;
            }
        }
        run_one();
    }
}

void parallel_for(WorkerPool* pool, std::size_t threads, std::size_t count,
                  const std::function<void(std::size_t, std::size_t)>& body) {
    if (pool == nullptr || threads < 2 || count < 2) {
        body(0, count);
        return;
    }
    const std::size_t workers = std::min(threads, count);
    const std::size_t chunk = (count + workers - 1) / workers;
    const std::size_t chunks = (count + chunk - 1) / chunk;
    if (chunks == 1) {
        body(0, count);
        return;
    }

    std::vector<std::exception_ptr> failures(chunks);
    std::atomic<std::size_t> latch{chunks - 1};
    const auto run_chunk = [&](std::size_t i) noexcept {
        try {
            body(i * chunk, std::min((i + 1) * chunk, count));
        } catch (...) {
            failures[i] = std::current_exception();
        }
    };
    for (std::size_t i = 0; i + 1 < chunks; ++i) {
        const auto task = [&run_chunk, &latch, i] {
            run_chunk(i);
            // The last access to this call's frame: the caller may return from here on.
            latch.fetch_sub(1, std::memory_order_release);
        };
        try {
            pool->submit(task);
        } catch (...) {
            task();  // no memory for the queue: the chunk is done here instead
        }
    }
    run_chunk(chunks - 1);
    pool->help_until_zero(latch);
    for (const std::exception_ptr& failure : failures) {
        if (failure != nullptr) {
            std::rethrow_exception(failure);
        }
    }
}

void parallel_turns(WorkerPool* pool, std::size_t threads, std::size_t count,
                    const std::function<void(Turns&)>& body) {
    Turns turns(count);
    parallel_for(pool, threads, std::min(threads, count),
                 [&](std::size_t, std::size_t) { body(turns); });
}

}  // namespace kestrel
