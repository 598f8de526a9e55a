#include "session/releaser.h"

namespace kestrel_app {

void Releaser::take(std::shared_ptr<void> object) {
    const std::scoped_lock lock(mutex_);
    if (!pool_) {
        pool_ = std::make_unique<kestrel::WorkerPool>(1);
    }
    pool_->submit([object = std::move(object)]() mutable { object.reset(); });
}

}  // namespace kestrel_app
