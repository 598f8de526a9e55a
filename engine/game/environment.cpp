#include "engine/game/environment.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <thread>

namespace kestrel {

std::size_t number_from_environment(const char* name, long smallest, std::size_t fallback) {
    const char* text = std::getenv(name);
    if (text == nullptr) {
        return fallback;
    }
    char* end = nullptr;
    errno = 0;
    const long value = std::strtol(text, &end, 10);
    return end != text && errno == 0 && value >= smallest ? static_cast<std::size_t>(value)
                                                          : fallback;
}

std::size_t hardware_threads() {
    return std::max(1U, std::thread::hardware_concurrency());
}

}  // namespace kestrel
