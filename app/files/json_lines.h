#pragma once

#include <cstddef>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace tidewell {

/// Writes one JSON document piece by piece, so that it never stands in memory as a whole: outer
/// lists and objects are opened and closed, and each value inside takes one line, indented.
class JsonLines {
  public:
    using Sink = std::function<void(std::string_view)>;

    explicit JsonLines(Sink sink) : sink_(std::move(sink)) {}

    /// `bracket`: '{' or '['. A key stands before what belongs to an object, and nowhere else.
    void open(char bracket, std::string_view key = {});
    void close();

    void add(const nlohmann::json& value, std::string_view key = {});

    /// A value that is JSON text already.
    void addText(std::string_view json, std::string_view key = {});

    /// Hands the last piece to the sink.
    void finish();

  private:
    struct Open {
        char end;
        bool filled = false;
    };

    void next(std::string_view key);
    void newLine();

    Sink sink_;
    std::string buffer_;
    std::vector<Open> open_;
};

}  // namespace tidewell
