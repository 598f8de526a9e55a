#include "engine/poker/text.h"

#include <locale.h>
#include <stdlib.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace kestrel {
namespace {

locale_t c_locale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

template <class Number, class Convert>
ReadNumber<Number> read_number(std::string_view text, const Convert& convert) {
    const std::string terminated(text);
    char* end = nullptr;
    errno = 0;
    const Number value = convert(terminated.c_str(), &end);
    return {value, static_cast<std::size_t>(end - terminated.c_str()), errno == ERANGE};
}

}  // namespace

std::string lower_case(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), to_lower);
    return lower;
}

std::string_view trimmed(std::string_view text) {
    const auto first = std::ranges::find_if_not(text, is_space);
    text.remove_prefix(static_cast<std::size_t>(first - text.begin()));
    while (!text.empty() && is_space(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::string without_white_space(std::string_view text) {
    std::string kept;
    std::ranges::remove_copy_if(text, std::back_inserter(kept), is_space);
    return kept;
}

ReadNumber<double> read_double(std::string_view text) {
    return read_number<double>(
        text, [](const char* begin, char** end) { return strtod_l(begin, end, c_locale()); });
}

ReadNumber<float> read_float(std::string_view text) {
    return read_number<float>(
        text, [](const char* begin, char** end) { return strtof_l(begin, end, c_locale()); });
}

ReadNumber<long long> read_integer(std::string_view text) {
    return read_number<long long>(
        text, [](const char* begin, char** end) { return strtoll_l(begin, end, 10, c_locale()); });
}

}  // namespace kestrel
