#pragma once

#include <signal.h>
#include <sys/resource.h>

namespace tidewell {

/// As long as it lives, no file grows beyond a size: a disk that is full there.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : formerHandler_(signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit limited{bytes, former_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &former_);
        signal(SIGXFSZ, formerHandler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit former_{};
    sighandler_t formerHandler_;
};

}  // namespace tidewell
