#pragma once

#include <stdexcept>
#include <string>

namespace kestrel {

/// What a call throws, "invalid argument: <message>" or "out of range: <message>"; "" if nothing.
/// Any other exception passes through and fails the test.
template <class Call>
std::string failure_of(Call&& call) {
    try {
        call();
    } catch (const std::invalid_argument& error) {
        return std::string("invalid argument: ") + error.what();
    } catch (const std::out_of_range& error) {
        return std::string("out of range: ") + error.what();
    }
    return {};
}

}  // namespace kestrel
