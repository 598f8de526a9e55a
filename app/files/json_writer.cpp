#include "app/files/json_writer.h"

#include <QByteArray>
#include <QJsonValue>
#include <QVariantHash>
#include <QVariantList>
#include <QVariantMap>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <utility>

namespace tidewell {
namespace {

constexpr std::size_t bufferBytes = 1 << 16;

/// Below this a double tells every whole number from its neighbours.
constexpr double mostExact = 9007199254740992.0;  // 2^53

std::string_view viewOf(const QByteArray& bytes) {
    return {bytes.data(), static_cast<std::size_t>(bytes.size())};
}

}  // namespace

JsonWriter::JsonWriter(Sink sink) : sink_(std::move(sink)) {
    buffer_.reserve(2 * bufferBytes);
}

void JsonWriter::key(std::string_view name) {
    next();
    quoted(name);
    write(": ");
    afterKey_ = true;
}

void JsonWriter::value(std::string_view text) {
    next();
    quoted(text);
}

void JsonWriter::value(const QString& text) {
    value(viewOf(text.toUtf8()));
}

void JsonWriter::value(double number) {
    if (!std::isfinite(number)) {
        null();
        return;
    }
    if (std::abs(number) < mostExact && std::trunc(number) == number) {
        value(static_cast<qlonglong>(number));
        return;
    }
    next();
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    write({digits.data(), static_cast<std::size_t>(result.ptr - digits.data())});
}

void JsonWriter::value(qlonglong number) {
    next();
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    write({digits.data(), static_cast<std::size_t>(result.ptr - digits.data())});
}

void JsonWriter::value(bool flag) {
    next();
    write(flag ? "true" : "false");
}

void JsonWriter::null() {
    next();
    write("null");
}

void JsonWriter::value(const QVariant& variant) {
    switch (variant.typeId()) {
        case QMetaType::QVariantMap:
        case QMetaType::QVariantHash:
            object(variant.toMap());
            break;
        case QMetaType::QVariantList:
        case QMetaType::QStringList:
            array(variant.toList());
            break;
        case QMetaType::QString:
            value(variant.toString());
            break;
        case QMetaType::Bool:
            value(variant.toBool());
            break;
        case QMetaType::Int:
        case QMetaType::LongLong:
            value(variant.toLongLong());
            break;
        case QMetaType::Float:
        case QMetaType::Double:
            value(variant.toDouble());
            break;
        default:
            other(variant);
    }
}

bool JsonWriter::finish() {
    write("\n");
    flush();
    return whole_;
}

void JsonWriter::begin(char bracket) {
    next();
    write({&bracket, 1});
    filled_.push_back(false);
}

void JsonWriter::end(char bracket) {
    const bool filled = filled_.back();
    filled_.pop_back();
    if (filled) {
        newLine();
    }
    write({&bracket, 1});
}

/// What stands before a value or a key.
void JsonWriter::next() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (filled_.empty()) {
        return;
    }
    if (filled_.back()) {
        write(",");
    }
    filled_.back() = true;
    newLine();
}

void JsonWriter::newLine() {
    write("\n");
    for (std::size_t blanks = 4 * filled_.size(); blanks > 0;) {
        constexpr std::string_view line = "                                ";
        const std::size_t some = std::min(blanks, line.size());
        write(line.substr(0, some));
        blanks -= some;
    }
}

void JsonWriter::write(std::string_view bytes) {
    buffer_ += bytes;
    if (buffer_.size() >= bufferBytes) {
        flush();
    }
}

void JsonWriter::flush() {
    sink_(buffer_);
    buffer_.clear();
}

void JsonWriter::quoted(std::string_view text) {
    write("\"");
    while (!text.empty()) {
        const auto special = std::ranges::find_if(text, [](char byte) {
            return byte == '"' || byte == '\\' || static_cast<unsigned char>(byte) < 0x20;
        });
        const auto length = static_cast<std::size_t>(special - text.begin());
        write(text.substr(0, length));
        text.remove_prefix(length);
        if (!text.empty()) {
            escaped(static_cast<unsigned char>(text.front()));
            text.remove_prefix(1);
        }
    }
    write("\"");
}

void JsonWriter::escaped(unsigned char byte) {
    if (byte == '"' || byte == '\\') {
        const char both[] = {'\\', static_cast<char>(byte)};
        write({both, sizeof both});
        return;
    }
    constexpr char hex[] = "0123456789abcdef";
    const char code[] = {'\\', 'u', '0', '0', hex[byte >> 4], hex[byte & 15]};
    write({code, sizeof code});
}

void JsonWriter::object(const QVariantMap& map) {
    if (tooDeep()) {
        return;
    }
    beginObject();
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        key(viewOf(entry.key().toUtf8()));
        value(entry.value());
    }
    endObject();
}

void JsonWriter::array(const QVariantList& list) {
    if (tooDeep()) {
        return;
    }
    beginArray();
    for (const QVariant& element : list) {
        value(element);
    }
    endArray();
}

void JsonWriter::other(const QVariant& variant) {
    const QJsonValue json = QJsonValue::fromVariant(variant);
    if (json.isNull() || json.isUndefined()) {
        null();
    } else {
        value(json.toVariant());
    }
}

bool JsonWriter::tooDeep() {
    if (filled_.size() < deepestJson) {
        return false;
    }
    null();
    whole_ = false;
    return true;
}

}  // namespace tidewell
