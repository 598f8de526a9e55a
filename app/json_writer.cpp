#include "app/json_writer.h"

#include <QVariantHash>
#include <QVariantList>
#include <QVariantMap>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace tidewell {
namespace {

constexpr qsizetype bufferBytes = 1 << 16;

}  // namespace

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
    const QByteArray utf8 = text.toUtf8();
    value(std::string_view(utf8.data(), static_cast<std::size_t>(utf8.size())));
}

void JsonWriter::value(double number) {
    next();
    if (!std::isfinite(number)) {
        write("null");
        return;
    }
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    write({digits.data(), static_cast<std::size_t>(result.ptr - digits.data())});
}

void JsonWriter::value(bool flag) {
    next();
    write(flag ? "true" : "false");
}

void JsonWriter::value(const QVariant& variant) {
    switch (variant.typeId()) {
        case QMetaType::QVariantMap:
        case QMetaType::QVariantHash: {
            const QVariantMap map = variant.toMap();
            beginObject();
            for (auto entry = map.begin(); entry != map.end(); ++entry) {
                member(entry.key().toStdString(), entry.value());
            }
            endObject();
            break;
        }
        case QMetaType::QVariantList:
        case QMetaType::QStringList: {
            beginArray();
            for (const QVariant& element : variant.toList()) {
                value(element);
            }
            endArray();
            break;
        }
        case QMetaType::QString:
            value(variant.toString());
            break;
        case QMetaType::Bool:
            value(variant.toBool());
            break;
        default:
            value(variant.canConvert<double>() ? variant.toDouble() : std::nan(""));
    }
}

bool JsonWriter::finish() {
    write("\n");
    failed_ = device_.write(buffer_) != buffer_.size() || failed_;
    buffer_.clear();
    return !failed_;
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
    for (std::size_t depth = 0; depth < filled_.size(); ++depth) {
        write("    ");
    }
}

void JsonWriter::write(std::string_view bytes) {
    buffer_.append(bytes.data(), static_cast<qsizetype>(bytes.size()));
    if (buffer_.size() >= bufferBytes) {
        failed_ = device_.write(buffer_) != buffer_.size() || failed_;
        buffer_.clear();
    }
}

void JsonWriter::quoted(std::string_view text) {
    write("\"");
    while (!text.empty()) {
        const auto plain = std::ranges::find_if(text, [](char character) {
            return character == '"' || character == '\\' ||
                   static_cast<unsigned char>(character) < 0x20;
        });
        const auto length = static_cast<std::size_t>(plain - text.begin());
        write(text.substr(0, length));
        text.remove_prefix(length);
        if (!text.empty()) {
            escaped(text.front());
            text.remove_prefix(1);
        }
    }
    write("\"");
}

void JsonWriter::escaped(char character) {
    if (character == '"' || character == '\\') {
        write(std::string{'\\', character});
        return;
    }
    constexpr char hex[] = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(character);
    write(std::string("\\u00") + hex[code >> 4] + hex[code & 15]);
}

}  // namespace tidewell
