#include "platform/regular_file.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <utility>

#include "tests/temporary_folder.h"

namespace tidewell_platform {
namespace {

namespace fs = std::filesystem;

void make_socket(const std::string& path) {
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(listener);
}

TEST(RegularFile, OpensNothingElseAndNeverWaits) {
    const tidewell_tests::TemporaryFolder root;
    const auto path = [&](const std::string& name) { return (root.path() / name).string(); };
    std::ofstream(path("file")) << "text";
    std::ofstream(path("no\xFFutf8")) << "text";
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    make_socket(path("socket"));
    for (const auto& [link, target] : {std::pair("to_file", "file"),
                                       {"to_pipe", "pipe"},
                                       {"to_nothing", "nothing"},
                                       {"to_itself", "to_itself"}}) {
        fs::create_symlink(target, path(link));
    }

    using enum FileKind;
    const std::pair<std::string, FileKind> cases[] = {
        {path("file"), regular},
        {path("no\xFFutf8"), regular},
        {path("to_file"), regular},
        {fs::relative(path("file")).string(), regular},
        {"/proc/self/status", regular},
        {path("pipe"), pipe},
        {path("to_pipe"), pipe},
        {path("socket"), FileKind::socket},
        {path(""), folder},
        {"/dev/zero", device},
        {path("to_nothing"), missing},
        {path("file/below"), missing},
        {path(std::string("file\0", 5)), missing},
        {"", missing},
        {path("to_itself"), unknown},
        {path(std::string(5000, 'x')), unknown}};
    for (const auto& [name, kind] : cases) {
        const OpenedFile opened = open_regular_file(name);
        EXPECT_EQ(opened.kind, kind) << name;
        EXPECT_EQ(opened.descriptor >= 0, kind == regular) << name;
        EXPECT_EQ(opened.error != 0, kind == missing || kind == unknown) << name;
        char byte = 0;
        if (opened.descriptor >= 0) {
            EXPECT_EQ(read(opened.descriptor, &byte, 1), 1) << name;
            close(opened.descriptor);
        }
    }
}

}  // namespace
}  // namespace tidewell_platform
