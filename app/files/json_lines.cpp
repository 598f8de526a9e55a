#include "app/files/json_lines.h"

#include <nlohmann/json.hpp>

namespace tidewell {

void JsonLines::open(char bracket, std::string_view key) {
    next(key);
    buffer_ += bracket;
    open_.push_back({bracket == '{' ? '}' : ']'});
}

void JsonLines::close() {
    const Open closed = open_.back();
    open_.pop_back();
    if (closed.filled) {
        newLine();
    }
    buffer_ += closed.end;
}

void JsonLines::add(const nlohmann::json& value, std::string_view key) {
    addText(value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace), key);
}

void JsonLines::addText(std::string_view json, std::string_view key) {
    next(key);
    buffer_ += json;
}

void JsonLines::finish() {
    buffer_ += '\n';
    sink_(buffer_);
    buffer_.clear();
}

/// What stands before a value.
void JsonLines::next(std::string_view key) {
    constexpr std::size_t pieceBytes = 1 << 16;
    if (buffer_.size() >= pieceBytes) {
        sink_(buffer_);
        buffer_.clear();
    }
    if (!open_.empty()) {
        buffer_ += open_.back().filled ? "," : "";
        open_.back().filled = true;
        newLine();
    }
    if (!key.empty()) {
        buffer_.append(1, '"').append(key).append("\": ");
    }
}

void JsonLines::newLine() {
    buffer_.append(1, '\n').append(4 * open_.size(), ' ');
}

}  // namespace tidewell
