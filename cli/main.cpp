#include "cli/program.h"

int main(int argc, char** argv) {
    return tidewell_cli::run_program({argv + (argc > 0 ? 1 : 0), argv + argc});
}
