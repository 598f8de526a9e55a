#include "cli/program.h"

#include <algorithm>
#include <cctype>
#include <exception>
#include <iostream>
#include <iterator>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/built_spot.h"
#include "cli/input_error.h"
#include "cli/line_walk.h"
#include "cli/options.h"
#include "cli/output_file.h"
#include "cli/progress.h"
#include "cli/project_save.h"
#include "cli/report_json.h"
#include "cli/solve_report.h"
#include "cli/solve_run.h"
#include "cli/solve_task.h"
#include "cli/tables.h"
#include "cli/terminal.h"
#include "cli/terminal_report.h"
#include "cli/timing.h"
#include "cli/why.h"
#include "platform/interrupt.h"
#include "platform/memory_info.h"
#include "platform/standard_streams.h"
#include "session/hand_distributions.h"
#include "session/node_here.h"
#include "session/node_queries.h"
#include "session/signature.h"

namespace tidewell_cli {
namespace {

using kestrel_app::HandBucket;
using kestrel_app::HandDistributions;
using tidewell_platform::InterruptGuard;
using tidewell_platform::StandardStream;

/// What a process says that is ended by a signal and cannot end in the ordinary way.
constexpr std::string_view interrupted_line = "tidewell-solve: interrupted\n";

/// The same when the files have been written and the report has not.
constexpr std::string_view cut_line =
    "tidewell-solve: interrupted; files are written, standard output is cut short\n";

/// One line, whatever the text quotes.
void complain(std::string text) {
    std::ranges::replace_if(
        text, [](unsigned char c) { return std::iscntrl(c) != 0; }, '?');
    std::cerr << "tidewell-solve: " << text << std::endl;
}

void warn(const std::string& text) {
    complain("warning: " + text);
}

void tell(const std::vector<std::string>& warnings) {
    constexpr std::size_t most_told = 20;
    const std::size_t told = std::min(warnings.size(), most_told);
    std::for_each_n(warnings.begin(), told, warn);
    if (told < warnings.size()) {
        warn("and " + std::to_string(warnings.size() - told) + " more of these");
    }
}

SolveTask told_task(const Options& options) {
    std::vector<std::string> warnings;
    try {
        SolveTask task = read_task(options, warnings);
        tell(warnings);
        return task;
    } catch (const InputError&) {
        tell(warnings);  // one of them may be the reason
        throw;
    }
}

/// Where the report goes for a person.
struct Screen {
    std::ostream& out;
    TerminalStyle style;
};

Screen screen_of(const Options& options) {
    // With data on standard output, the rest goes where it does no harm.
    if (options.json_path == "-" || options.tables()) {
        return {std::cerr, style_of(StandardStream::error)};
    }
    return {std::cout, style_of(StandardStream::output)};
}

/// Leaves the locks of a project that fit the tree.
void check_project_locks(BuiltSpot& spot) {
    const std::size_t misfits =
        std::erase_if(spot.config.node_locks, [&](const kestrel_app::NodeLockEntry& lock) {
            return !kestrel_app::lock_fits(*spot.game, lock);
        });
    if (misfits > 0) {
        warn("node locks of the project (" + std::to_string(misfits) +
             ") do not fit the tree and are ignored");
    }
}

/// Before the long run: whether the node can answer what is asked of it.
void check_questions(const Options& options, const kestrel::Game& game, const NodePath& path) {
    const bool of_decisions = options.stats || options.combos || options.buckets;
    if (of_decisions && game.nodes[path.node].kind != kestrel::NodeKind::Decision) {
        throw InputError("nobody decides behind " + line_of(game, path) +
                         ", where --stats, --combos and --buckets need a decision");
    }
    if (!options.why.empty()) {
        check_why(game, path, parse_hand(options.why));
    }
}

/// Fails when nobody is left who would see the result.
void require_reader(const Options& options) {
    if (!std::cout && options.json_path.empty() && options.save_path.empty()) {
        throw WriteFailed("cannot write to standard output");
    }
}

SolveRun watched_run(const Options& options, const Screen& screen,
                     const kestrel_app::SolveConfig& config, InterruptGuard& interrupt) {
    Progress progress(screen.out, screen.style, config);
    return run_solve(config, interrupt,
                     [&](std::uint32_t iteration, double exploitability, bool measured) {
                         progress.on_iteration(iteration, exploitability, measured);
                         require_reader(options);
                     });
}

/// The tables that were asked for, with a blank line between them.
std::string tables_of(const Options& options, const SolveRun& run, const NodeReport& node) {
    std::vector<std::string> tables;
    if (options.combos) {
        tables.push_back(combos_table(node));
    }
    if (options.buckets) {
        const auto buckets = kestrel_app::hand_buckets(*run.finished, node.index);
        tables.push_back(buckets_table(node, buckets.value_or(std::vector<HandBucket>())));
    }
    if (options.distributions) {
        const auto both = kestrel_app::hand_distributions(*run.finished, node.index);
        if (!both) {
            warn("a player never gets to " + node.line + ", so that --distributions is empty");
        }
        tables.push_back(distributions_table(both.value_or(HandDistributions())));
    }
    std::string text;
    for (const std::string& table : tables) {
        text += (text.empty() ? "" : "\n") + table;
    }
    return text;
}

/// Takes one of the steps that put a result where it is wanted. A failure is told, and keeps none
/// of the others from being taken.
template <class Step>
bool done(const Step& step) {
    try {
        step();
        return true;
    } catch (const std::bad_alloc&) {
        complain("cannot write the result: out of memory");
    } catch (const std::exception& error) {
        complain(error.what());
    }
    return false;
}

/// The files that a result is wanted in, each finished or as it was. Whether all are finished.
bool write_files(const Options& options, const SolveReport& report, const SolvedProject& project,
                 InterruptGuard& interrupt) {
    const bool save = !options.save_path.empty();
    const bool json = is_replaced(options.json_path);
    if (!save && !json) {
        return true;
    }
    interrupt.hold();
    const bool saved = !save || done([&] { save_project(options.save_path, project); });
    const bool written = !json || done([&] { write_json(report, options.json_path); });
    if ((save && saved) || (json && written)) {
        interrupt.end_with(cut_line, exit_failed);
    }
    interrupt.stop_deferring();
    return saved && written;
}

ExitCode solve(const Options& options, Clock::time_point program_start, InterruptGuard& interrupt) {
    check_outputs(options);
    const SolveTask task = told_task(options);
    if (!options.save_path.empty()) {
        std::ranges::for_each(save_warnings(task.settings), warn);
    }
    BuiltSpot spot = estimate_spot(config_of(task));
    if (!options.list_depth) {
        check_memory(spot);
    }
    build_spot(spot);
    check_project_locks(spot);
    if (options.list_depth) {
        list_nodes(std::cout, *spot.game, *options.list_depth);
        return exit_ok;
    }
    const NodePath path = walk_line(*spot.game, options.node_line);
    check_questions(options, *spot.game, path);
    std::vector<Lock> locks = options.locks;
    kestrel_app::SolveConfig config = spot.config;
    std::ranges::copy(place_locks(*spot.game, locks), std::back_inserter(config.node_locks));
    spot.game.reset();  // the solve builds its own

    const Screen screen = screen_of(options);
    print_spot(screen.out, screen.style, spot);
    SolveRun run = watched_run(options, screen, spot.config, interrupt);
    std::optional<kestrel_app::SolveResult> before_locks;
    if (!locks.empty()) {
        before_locks = run.result;
        before_locks->nodes.reset();
        run = {};  // the second solve needs its memory
        screen.out << "  Solving again with locks\n" << std::flush;
        run = watched_run(options, screen, config, interrupt);
    }

    SolveReport report = report_solve(spot, run, path);
    report.before_locks = std::move(before_locks);
    report.locks = std::move(locks);
    if (options.stats) {
        report.stats = kestrel_app::node_action_stats(*run.finished, path.node);
        report.here = kestrel_app::action_stats_here(*run.finished, path.node);
    }
    if (!options.why.empty()) {
        report.why = why(*run.finished, path, parse_hand(options.why));
    }
    const std::string tables = tables_of(options, run, report.node);
    report.peak_resident_bytes = tidewell_platform::peak_resident_bytes();
    report.seconds.total = seconds_since(program_start);
    const bool written =
        write_files(options, report, {run, task.settings, config.node_locks, path.node}, interrupt);
    print_report(screen.out, screen.style, report);
    print_stats(screen.out, screen.style, report);
    if (report.why) {
        print_why(screen.out, screen.style, *report.why, distinct_names(report.node.actions));
    }
    std::cout << tables << std::flush;
    if (!options.json_path.empty() && !is_replaced(options.json_path)) {
        write_json(report, options.json_path);
    }
    return written ? exit_ok : exit_failed;
}

ExitCode run(const Options& options, Clock::time_point program_start, InterruptGuard& interrupt) {
    ExitCode code = exit_ok;
    if (options.help) {
        std::cout << help_text;
    } else if (options.version) {
        std::cout << "tidewell-solve " TIDEWELL_VERSION "\n";
    } else if (options.signature) {
        const std::size_t threads = options.threads.value_or(all_threads());
        std::cout << kestrel_app::signature_text(kestrel_app::solver_signature(threads)) << '\n';
    } else {
        code = solve(options, program_start, interrupt);
    }
    std::cout.flush();
    if (!std::cout) {
        throw WriteFailed("cannot write to standard output");
    }
    return code;
}

}  // namespace

int run_program(std::span<const char* const> arguments) {
    const auto program_start = Clock::now();
    tidewell_platform::secure_standard_streams();
    InterruptGuard interrupt(interrupted_line);
    try {
        return run(parse_options(arguments), program_start, interrupt);
    } catch (const InputError& error) {
        complain(error.what());
        return exit_bad_input;
    } catch (const Interrupted& error) {
        complain(error.what());
        return error.exit_code;
    } catch (const MemoryRefused& error) {
        complain(error.what());
    } catch (const WriteFailed& error) {
        complain(error.what());
    } catch (const std::bad_alloc&) {
        complain("the solve failed: out of memory");
    } catch (const std::exception& error) {
        complain(std::string("the solve failed: ") + error.what());
    }
    return exit_failed;
}

}  // namespace tidewell_cli
