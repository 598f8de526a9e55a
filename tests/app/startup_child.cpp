// The program's start-up with another document: startup_child DOCUMENT [DEATH]. With the name of a
// way to die, it dies like this as soon as it handles events.

#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>

#include <QCoreApplication>
#include <QMetaObject>
#include <QOffscreenSurface>
#include <QUrl>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>

#include "app/application.h"

namespace {

volatile std::uintptr_t badAddress = 0x10;
volatile int zero = 0;
volatile std::size_t tooMuch = SIZE_MAX / 2;

void writeToBadAddress() {
    *reinterpret_cast<volatile int*>(badAddress) = 1;
}

// The array is used after the inner call, so that no frame can be reused.
int recurse(int depth) {
    volatile char frame[4096];
    frame[0] = static_cast<char>(depth);
    return zero == 0 ? recurse(depth + 1) + frame[0] : 0;
}

void readBeyondFile() {
    std::FILE* const empty = std::tmpfile();
    const void* const page = mmap(nullptr, 1, PROT_READ, MAP_SHARED, fileno(empty), 0);
    zero = *static_cast<const volatile char*>(page);
}

const std::map<std::string, void (*)()> deaths = {
    {"abort", [] { std::abort(); }},
    {"bad address", writeToBadAddress},
    {"bad address in a thread", [] { std::thread(writeToBadAddress).join(); }},
    {"stack overflow", [] { zero = recurse(0); }},
    {"beyond a file", readBeyondFile},
    {"terminate", [] { std::terminate(); }},
    {"uncaught exception", [] { std::thread([] { throw std::logic_error("nobody"); }).join(); }},
    {"failed allocation", [] { ::operator delete(::operator new(tooMuch)); }},
    {"fatal message", [] { qFatal("the last message"); }},
};

void (*chosen)() = nullptr;
bool diesInDriver = false;

void queueDeath() {
    if (chosen != nullptr) {
        QMetaObject::invokeMethod(QCoreApplication::instance(), chosen, Qt::QueuedConnection);
    }
}
Q_COREAPP_STARTUP_FUNCTION(queueDeath)

}  // namespace

/// Found before Qt's: the first that the look for OpenGL does.
void QOffscreenSurface::create() {
    if (diesInDriver) {
        writeToBadAddress();
    }
}

int main(int argc, char* argv[]) {
    const rlimit noCore{};
    setrlimit(RLIMIT_CORE, &noCore);
    if (argc > 2) {
        diesInDriver = argv[2] == std::string("graphics driver");
        chosen = diesInDriver ? nullptr : deaths.at(argv[2]);
    }
    return tidewell::runApplication(argc, argv, {.document = QUrl::fromLocalFile(argv[1])});
}
