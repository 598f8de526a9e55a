#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "cli/input_error.h"
#include "tests/temporary_folder.h"

namespace tidewell_cli {

class Folder : public tidewell_tests::TemporaryFolder {
  public:
    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(path() / name) << text;
        return *this / name;
    }
    std::string operator/(const std::string& name) const { return (path() / name).string(); }
};

inline std::string contents(const std::string& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

struct RunResult {
    int exit_code = -1;
    std::string out;
    std::string err;
};

/// The program as a child process with files for its output. `limits`: what the shell does first;
/// `output`: where standard output goes instead.
class Child {
  public:
    explicit Child(const std::vector<std::string>& arguments, const std::string& limits = "true",
                   const std::string& output = "") {
        std::string command = limits + "; exec " TIDEWELL_SOLVE_PATH;
        for (const std::string& argument : arguments) {
            command += " '" + argument + "'";
        }
        command += " 2>" + (folder_ / "err") + (output.empty() ? " >" + (folder_ / "out") : output);
        pid_ = fork();
        if (pid_ != 0) return;
        execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        _exit(127);
    }

    std::string out() const { return contents(folder_ / "out"); }
    void send(int signal_number) const { kill(pid_, signal_number); }

    RunResult wait() {
        int status = 0;
        waitpid(pid_, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), out(),
                contents(folder_ / "err")};
    }

  private:
    Folder folder_;
    pid_t pid_ = -1;
};

inline RunResult run(const std::vector<std::string>& arguments) {
    return Child(arguments).wait();
}

inline const char* const river_spot = R"({
  "board": "AhKd7c4s2h", "starting_pot": 20, "effective_stack": 90,
  "oop_range": "22+,A2s+,K9s+,QTs+,ATo+", "ip_range": "QQ-22,A2s+:0.8,KTs+,KJo+",
  "oop_river_bet_sizes": "50, 100", "oop_river_raise_sizes": "60", "oop_river_add_all_in": true,
  "ip_river_bet_sizes": 75, "ip_river_raise_sizes": "3x",
  "rake_percent": 5, "rake_cap": 3, "max_iterations": 130, "target_exploitability": 0
})";

inline const char* const turn_spot = R"({
  "board": "Td9c6h6c", "starting_pot": 10, "effective_stack": 40,
  "oop_range": "TT,87s,KQo:0.5", "ip_range": "99,AJs,A6s,54s",
  "oop_turn_bet_sizes": "50, 50.2", "ip_turn_bet_sizes": "75", "ip_turn_raise_sizes": "60",
  "ip_turn_dont_donk": true, "oop_add_all_in_jam_threshold_enabled": true,
  "oop_add_all_in_jam_threshold_pct": 300, "oop_river_bet_sizes": "60",
  "oop_river_dont_donk": true, "max_iterations": 120, "target_exploitability": 0
})";

inline nlohmann::json river_with(const std::string& key, const nlohmann::json& value) {
    nlohmann::json spot = nlohmann::json::parse(river_spot);
    spot[key] = value;
    return spot;
}

/// The message of the InputError that a call throws.
template <class Call>
std::string refusal_of(const Call& call) {
    try {
        call();
    } catch (const InputError& error) {
        return error.what();
    }
    return "accepted";
}

}  // namespace tidewell_cli
