#include "cli/program.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "cli/input_error.h"
#include "cli/interrupt.h"
#include "cli/line_walk.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "cli/report_json.h"
#include "cli/solve_run.h"
#include "cli/spot_file.h"
#include "cli/terminal.h"
#include "cli/terminal_report.h"
#include "session/presets.h"
#include "session/signature.h"

namespace tidewell_cli {
namespace {

std::size_t all_threads() {
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, max_threads);
}

/// One line, whatever the text quotes.
void complain(std::string text) {
    std::ranges::replace_if(
        text, [](unsigned char c) { return std::iscntrl(c) != 0; }, '?');
    std::cerr << "tidewell-solve: " << text << std::endl;
}

kestrel_app::SolveConfig config_of(const Options& options) {
    kestrel_app::ConfigMap map;
    if (options.spot_path.empty()) {
        map = kestrel_app::quick_solve_preset();
    } else {
        std::vector<std::string> warnings;
        map = read_spot_file(options.spot_path, warnings);
        for (const std::string& warning : warnings) {
            complain("warning: " + warning);
        }
    }
    kestrel_app::SolveConfig config = kestrel_app::config_from_map(map);
    if (!map.contains("thread_count")) {
        config.thread_count = all_threads();
    }
    if (options.threads) {
        config.thread_count = *options.threads;
    }
    if (options.iterations) {
        config.max_iterations = *options.iterations;
    }
    config.exact_all_in = config.exact_all_in || options.exact_all_in;
    if (options.target_percent) {
        config.target_exploitability =
            static_cast<float>(config.starting_pot * *options.target_percent / 100.0);
    }
    return config;
}

void solve(const Options& options, Clock::time_point program_start) {
    InterruptGuard interrupt;
    const kestrel_app::SolveConfig config = config_of(options);
    if (!options.json_path.empty()) {
        check_writable(options.json_path);
    }
    const BuiltSpot spot = build_spot(config);
    if (options.list_depth) {
        list_nodes(std::cout, *spot.game, *options.list_depth);
        return;
    }
    const NodePath path = walk_line(*spot.game, options.node_line);

    // With the result on standard output, the rest goes where it does no harm.
    const bool json_on_output = options.json_path == "-";
    std::ostream& out = json_on_output ? std::cerr : std::cout;
    const TerminalStyle style = style_of(json_on_output ? STDERR_FILENO : STDOUT_FILENO);
    print_spot(out, style, spot);
    Progress progress(out, style, config);
    SolveReport report;
    try {
        report = solve_spot(spot, path, interrupt,
                            [&](std::uint32_t iteration, double exploitability, bool measured) {
                                progress.on_iteration(iteration, exploitability, measured);
                            });
    } catch (...) {
        progress.clear();
        throw;
    }
    progress.clear();
    report.seconds.total = seconds_since(program_start);
    print_report(out, style, report);
    if (!options.json_path.empty()) {
        write_json(report, options.json_path);
    }
}

void run(std::span<const char* const> arguments, Clock::time_point program_start) {
    const Options options = parse_options(arguments);
    if (options.help) {
        std::cout << help_text;
    } else if (options.version) {
        std::cout << "tidewell-solve " TIDEWELL_VERSION "\n";
    } else if (options.signature) {
        const std::size_t threads = options.threads.value_or(all_threads());
        std::cout << kestrel_app::signature_text(kestrel_app::solver_signature(threads)) << '\n';
    } else {
        solve(options, program_start);
    }
    std::cout.flush();
    if (!std::cout) {
        throw std::runtime_error("cannot write to standard output");
    }
}

}  // namespace

int run_program(std::span<const char* const> arguments) {
    const auto program_start = Clock::now();
    try {
        run(arguments, program_start);
        return exit_ok;
    } catch (const InputError& error) {
        complain(error.what());
        return exit_bad_input;
    } catch (const Interrupted& error) {
        complain(error.what());
        return exit_interrupted;
    } catch (const MemoryRefused& error) {
        complain(error.what());
    } catch (const std::bad_alloc&) {
        complain("the solve failed: out of memory");
    } catch (const std::exception& error) {
        complain(std::string("the solve failed: ") + error.what());
    }
    return exit_failed;
}

}  // namespace tidewell_cli
