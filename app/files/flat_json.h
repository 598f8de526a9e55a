#pragma once

#include <string>
#include <string_view>

#include "app/results/told.h"

namespace tidewell {

// The text of objects that hold no others, written directly. A tree has some three of them for each
// of a million nodes, and by way of a document of its own each would take three times as long.

void appendJson(std::string& text, bool flag);
void appendJson(std::string& text, int number);
void appendJson(std::string& text, double number);  ///< null where JSON has no such number
void appendJson(std::string& text, std::string_view utf8);

/// What `tell` has to say of its arguments.
template <class... Told>
void appendJsonObject(std::string& text, const Told&... told) {
    char before = '{';
    tell(told..., [&](const char* key, const auto& value) {
        text.append(1, before).append(1, '"').append(key).append("\":");
        appendJson(text, value);
        before = ',';
    });
    text += '}';
}

}  // namespace tidewell
