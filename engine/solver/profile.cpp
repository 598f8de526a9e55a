#include "engine/solver/profile.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <vector>

namespace kestrel {
namespace {

struct Registry {
    std::mutex mutex;  // guards locals
    std::vector<std::shared_ptr<SolverProfile::Local>> locals;
};

Registry& registry() {
    static Registry instance;
    return instance;
}

}  // namespace

std::atomic<int> SolverProfile::switch_{-1};

bool SolverProfile::read_switch() {
    const char* text = std::getenv("KESTREL_PROFILE");
    const bool on = text != nullptr && *text != '\0' && *text != '0';
    switch_.store(on ? 1 : 0, std::memory_order_relaxed);
    return on;
}

SolverProfile::Local& SolverProfile::local() {
    thread_local const std::shared_ptr<Local> mine = [] {
        auto created = std::make_shared<Local>();
        Registry& all = registry();
        const std::scoped_lock lock(all.mutex);
        all.locals.push_back(created);
        return created;
    }();
    return *mine;
}

void SolverProfile::reset() {
    Registry& all = registry();
    const std::scoped_lock lock(all.mutex);
    for (const auto& local : all.locals) {
        for (std::size_t i = 0; i < profile_slot_count; ++i) {
            local->nanoseconds[i].set(0);
            local->calls[i].set(0);
        }
    }
}

SolverProfile::Summary SolverProfile::aggregate() {
    Registry& all = registry();
    const std::scoped_lock lock(all.mutex);
    Summary summary;
    for (const auto& local : all.locals) {
        for (std::size_t i = 0; i < profile_slot_count; ++i) {
            const std::uint64_t nanoseconds = local->nanoseconds[i].value();
            summary[i].nanoseconds += nanoseconds;
            summary[i].calls += local->calls[i].value();
            summary[i].max_nanoseconds = std::max(summary[i].max_nanoseconds, nanoseconds);
        }
    }
    return summary;
}

}  // namespace kestrel
