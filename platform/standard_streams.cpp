#include "platform/standard_streams.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <initializer_list>

namespace tidewell_platform {
namespace {

int descriptor_of(StandardStream stream) {
    return static_cast<int>(stream);
}

}  // namespace

void secure_standard_streams() {
    for (const auto stream :
         {StandardStream::input, StandardStream::output, StandardStream::error}) {
        if (fcntl(descriptor_of(stream), F_GETFD) < 0) {
            // Takes the lowest number that is free, which is this one. The wrong way round, so that
            // whoever uses it is told.
            open("/dev/null", stream == StandardStream::input ? O_WRONLY : O_RDONLY);
        }
    }
    signal(SIGPIPE, SIG_IGN);
    signal(SIGXFSZ, SIG_IGN);
}

bool is_terminal(StandardStream stream) {
    return isatty(descriptor_of(stream)) == 1;
}

std::size_t terminal_columns(StandardStream stream) {
    winsize size{};
    return ioctl(descriptor_of(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace tidewell_platform
