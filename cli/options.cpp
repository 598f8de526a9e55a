#include "cli/options.h"

#include <limits>
#include <string_view>

#include "cli/format.h"
#include "cli/input_error.h"
#include "session/text.h"

namespace tidewell_cli {
namespace {

template <class Number>
Number whole_number(const std::string& option, std::string_view text, Number least, Number most) {
    const auto number = kestrel_app::parsed_number<Number>(text);
    if (!number || *number < least || *number > most) {
        throw InputError(option + " takes a whole number from " + std::to_string(least) + " to " +
                         std::to_string(most) + ", not " + in_quotes(text));
    }
    return *number;
}

double percentage(const std::string& option, std::string_view text) {
    const auto number = kestrel_app::parsed_number<double>(text);
    if (!number || !(*number >= 0.0 && *number <= 100.0)) {
        throw InputError(option + " takes a percentage from 0 to 100, not " + in_quotes(text));
    }
    return *number;
}

void check_together(const Options& options) {
    const bool asks_of_a_solve = !options.json_path.empty() || !options.save_path.empty() ||
                                 !options.node_line.empty() || !options.locks.empty() ||
                                 options.stats || !options.why.empty() || options.tables();
    if (options.signature && (!options.spot_path.empty() || asks_of_a_solve)) {
        throw InputError("--signature solves spots of its own and reports nothing else");
    }
    if (options.list_depth && asks_of_a_solve) {
        throw InputError("--list-nodes solves nothing that another option could report");
    }
    if (options.json_path == "-" && options.tables()) {
        throw InputError(
            "--json - and tables would share standard output; write the JSON to a file");
    }
}

}  // namespace

Options parse_options(std::span<const char* const> arguments) {
    Options options;
    bool only_paths = false;
    bool has_path = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (only_paths || !argument.starts_with('-') || argument == "-") {
            if (has_path) {
                throw InputError("more than one spot is named; see --help");
            }
            options.spot_path = argument;
            has_path = true;
            if (argument.empty()) {
                throw InputError("the name of the spot is empty");
            }
            continue;
        }
        const std::size_t equals = argument.find('=');
        const std::string name(argument.substr(0, equals));
        const auto value = [&]() -> std::string_view {
            if (equals != std::string_view::npos) {
                return argument.substr(equals + 1);
            }
            if (i + 1 == arguments.size()) {
                throw InputError(name + " takes a value; see --help");
            }
            return arguments[++i];
        };
        const auto flag = [&](bool& target) {
            if (equals != std::string_view::npos) {
                throw InputError(name + " takes no value");
            }
            target = true;
        };
        if (name == "--threads") {
            options.threads = whole_number<std::size_t>(name, value(), 1, max_threads);
        } else if (name == "--iterations") {
            options.iterations = whole_number<std::uint32_t>(
                name, value(), 1, std::numeric_limits<std::uint32_t>::max());
        } else if (name == "--target") {
            options.target_percent = percentage(name, value());
        } else if (name == "--json") {
            options.json_path = value();
            if (options.json_path.empty()) {
                throw InputError("--json takes the name of a file");
            }
        } else if (name == "--save") {
            options.save_path = value();
            if (options.save_path.empty() || options.save_path == "-") {
                throw InputError("--save takes the name of a file");
            }
        } else if (name == "--node") {
            options.node_line = value();
        } else if (name == "--list-nodes") {
            options.list_depth = whole_number<std::size_t>(name, value(), 0, 1000);
        } else if (name == "--lock") {
            options.locks.push_back(parse_lock(value()));
        } else if (name == "--why") {
            options.why = value();
            if (options.why.empty()) {
                throw InputError("--why takes a hand of two cards such as AhKd");
            }
        } else if (name == "--stats") {
            flag(options.stats);
        } else if (name == "--combos") {
            flag(options.combos);
        } else if (name == "--buckets") {
            flag(options.buckets);
        } else if (name == "--distributions") {
            flag(options.distributions);
        } else if (name == "--exact-all-in") {
            flag(options.exact_all_in);
        } else if (name == "--signature") {
            flag(options.signature);
        } else if (name == "--version") {
            flag(options.version);
        } else if (name == "--help" || name == "-h") {
            flag(options.help);
        } else if (name == "--") {
            only_paths = true;
        } else {
            throw InputError("unknown option " + in_quotes(name) + "; see --help");
        }
    }
    check_together(options);
    return options;
}

const char* const help_text =
    R"(Usage: tidewell-solve [options] [SPOT.json | PROJECT.tidewellproj]

Solves a heads-up no-limit hold'em spot after the flop and reports the strategy
of its first decision. Without a spot it solves the quick-solve spot.

Options:
  --threads N         threads to solve with (default: all)
  --iterations N      largest number of iterations
  --target PERCENT    stop at this exploitability, in percent of the starting pot
  --exact-all-in      weigh the run-outs of an all-in as the two hands meet them
  --node LINE         report the node behind a line of actions and cards,
                      for instance "Check/Bet 50%/Call/2c"
  --list-nodes DEPTH  list the lines of the tree down to a depth, without solving
  --json FILE         write the result as JSON ("-": standard output)
  --save FILE         write a project that the desktop program opens (.tidewellproj),
                      with the tree, and the hands of the root and of --node
  --stats             also how many combos take each action of the node, with what
                      equity and EV: of whole ranges, and of the hands that come there
  --why HAND          what the EV of each action is made of for a hand such as AhKd:
                      the answers, how often each comes, and the EV behind it
  --combos            the hands of the node's player: EV, how often each action, tags
  --buckets           classes of hands such as "top pair": how often each action
  --distributions     both players' hands: EV and equity
                      These three write tables with tabs between the columns to
                      standard output, and the report goes to standard error.
  --lock "LINE;HAND=p1,p2,..."
                      solve a second time, and report that, with the play of a hand
                      such as AKs fixed behind a line: one number for each action;
                      "*" for all hands; may be given many times
  --signature         solve a fixed suite and print a hash of all numbers
  --version           print the version
  --help              print this text

SPOT.json ("-": standard input) is one JSON object; docs/spot-files.md tells more.
Amounts are in chips. Board, pot, stack and both ranges are needed.
  board                  "AdJd8s": three to five cards
  starting_pot, effective_stack
  rake_percent, rake_cap 5 for 5 % of the pot, up to the cap; 0: no rake, no cap
  starting_street        "flop", "turn" or "river" (default: what the board says)
  max_iterations         default 2000
  target_exploitability  in chips, default 0.1
  thread_count           default all
  oop_range, ip_range    "QQ+,AKs,A5s-A2s:0.5", or "50%": every hand at half weight
  SEAT_STREET_bet_sizes  for SEAT oop or ip, STREET flop, turn or river; left out:
                         none. "33, 75%" of the pot; "500c": 500 hundredths of a
                         chip; "2e": the stack in over two streets; "a": all-in
  SEAT_STREET_raise_sizes
                         the same on top of the call, and "2.5x" of the bet
  SEAT_STREET_add_all_in, oop_STREET_dont_donk
                         true or false
  SEAT_add_all_in_jam_threshold_enabled, SEAT_add_all_in_jam_threshold_pct
                         offer an all-in of at most this percentage of the pot
  exact_all_in           true or false, as --exact-all-in

PROJECT.tidewellproj is a project of the desktop program: its last solve is solved
again, with its locks if that was made under them; without one, what its pages show.

Exit code: 0 solved, 1 the solve failed, does not fit in memory or cannot be
written, 2 bad input; after Ctrl-C 130, after SIGTERM 143, after SIGHUP 129, and
nothing is written then.
)";

}  // namespace tidewell_cli
