#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "cli/input_error.h"

namespace tidewell_cli {

/// A folder of the test's own, removed at the end.
class Folder {
  public:
    Folder() {
        std::string name =
            (std::filesystem::temp_directory_path() / "tidewell-test-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string write(const std::string& name, const std::string& text) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text;
        return file.string();
    }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
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

/// The program as a child process with files for its output. `limits`: what the shell does first.
class Child {
  public:
    explicit Child(const std::vector<std::string>& arguments, const std::string& limits = "true") {
        std::string command = limits + "; exec " TIDEWELL_SOLVE_PATH;
        for (const std::string& argument : arguments) {
            command += " '" + argument + "'";
        }
        command += " >" + (folder_ / "out") + " 2>" + (folder_ / "err");
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
