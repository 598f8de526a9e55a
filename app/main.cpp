#include "app/application.h"
#include "app/command_line.h"

int main(int argc, char* argv[]) {
    if (const auto exitCode = tidewell::answerWithoutWindow(argc, argv)) return *exitCode;
    return tidewell::runApplication(argc, argv, {.opensFile = true});
}
