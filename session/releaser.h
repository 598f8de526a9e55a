#pragma once

#include <memory>
#include <mutex>
#include <utility>

#include "engine/parallel/worker_pool.h"

namespace kestrel_app {

/// Destroys what it is given on a thread of its own: large objects take long to give their memory
/// back. Any thread. The destructor waits until all of it is gone.
class Releaser {
  public:
    /// Where there is neither thread nor memory for that, the object dies here.
    template <class Object>
    void release(Object object) noexcept {
        try {
            take(std::make_shared<Object>(std::move(object)));
        } catch (...) {
            // It has died on the way.
        }
    }

  private:
    void take(std::shared_ptr<void> object);

    std::mutex mutex_;                           // guards pool_
    std::unique_ptr<kestrel::WorkerPool> pool_;  // from the first object on
};

}  // namespace kestrel_app
