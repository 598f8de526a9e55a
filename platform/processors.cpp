#include "platform/processors.h"

#include <sched.h>

namespace tidewell_platform {

int permitted_processors() {
    cpu_set_t permitted;
    CPU_ZERO(&permitted);
    return sched_getaffinity(0, sizeof permitted, &permitted) == 0 ? CPU_COUNT(&permitted) : 0;
}

}  // namespace tidewell_platform
