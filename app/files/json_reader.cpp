#include "app/files/json_reader.h"

#include <QVariantList>
#include <QVariantMap>
#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <istream>
#include <nlohmann/json.hpp>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include "app/files/json_writer.h"

namespace tidewell {
namespace {

using nlohmann::json;

/// A device as the source of a standard stream.
class DeviceBuffer : public std::streambuf {
  public:
    DeviceBuffer(QIODevice& device, const std::function<void(qint64)>& onBytes)
        : device_(device), onBytes_(onBytes) {}

    /// Bytes that the parser has taken.
    qint64 taken() const { return bytes_ - (egptr() - gptr()); }

  protected:
    int_type underflow() override {
        const qint64 count = device_.read(buffer_.data(), buffer_.size());
        if (count <= 0) {
            return traits_type::eof();
        }
        bytes_ += count;
        onBytes_(bytes_);
        char* const end = buffer_.data() + count;
        // The parser takes a zero for the end of the text. Any other control byte it refuses.
        std::replace(buffer_.data(), end, '\0', '\1');
        setg(buffer_.data(), buffer_.data(), end);
        return traits_type::to_int_type(*gptr());
    }

  private:
    QIODevice& device_;
    const std::function<void(qint64)>& onBytes_;
    qint64 bytes_ = 0;
    std::array<char, 1 << 16> buffer_{};
};

/// Texts that were read lately. Keys and labels come back by the million: kept once each, the
/// answers of a project take a quarter less memory.
class KnownTexts {
  public:
    QString text(const std::string& utf8) {
        if (utf8.size() > longest) {
            return QString::fromStdString(utf8);
        }
        Known& known = known_[std::hash<std::string>()(utf8) % known_.size()];
        if (known.utf8 != utf8) {
            known = {utf8, QString::fromStdString(utf8)};
        }
        return known.text;
    }

  private:
    static constexpr std::size_t longest = 31;  // bytes

    struct Known {
        std::string utf8;
        QString text;
    };
    std::vector<Known> known_{512};
};

/// Builds the document from the parser's events.
class DocumentBuilder : public nlohmann::json_sax<json> {
  public:
    explicit DocumentBuilder(const QHash<QStringList, JsonStream>& streams) : streams_(streams) {}

    /// An object or a list stood outside, and is whole.
    bool complete() const { return complete_; }
    QVariantMap takeObject() { return std::move(document_); }

    bool null() override { return add(QVariant::fromValue(nullptr)); }
    bool boolean(bool flag) override { return add(flag); }
    bool number_integer(number_integer_t number) override {
        return add(static_cast<qlonglong>(number));
    }
    bool number_unsigned(number_unsigned_t number) override {
        return std::in_range<qlonglong>(number) ? add(static_cast<qlonglong>(number))
                                                : add(static_cast<double>(number));
    }
    bool number_float(number_float_t number, const string_t&) override { return add(number); }
    bool string(string_t& text) override { return add(texts_.text(text)); }
    bool binary(binary_t&) override { return false; }  // not in JSON text

    bool start_object(std::size_t) override { return open(true); }
    bool key(string_t& name) override {
        open_.back().key = texts_.text(name);
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(false); }
    bool end_array() override { return close(); }

    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        return false;
    }

  private:
    struct Open {
        bool isObject = false;
        QString key;  // of the member that comes
        QVariantMap map;
        QVariantList list;
        const JsonStream* stream = nullptr;
    };

    bool add(const QVariant& value) {
        if (open_.empty()) {
            return true;  // a bare value
        }
        Open& parent = open_.back();
        if (parent.isObject) {
            parent.map.insert(parent.map.cend(), parent.key, value);  // mostly they are in order
        } else if (parent.stream != nullptr) {
            parent.stream->element(value);
        } else {
            parent.list.append(value);
        }
        return true;
    }

    bool open(bool isObject) {
        if (open_.size() == deepestJson) {
            return false;
        }
        Open next;
        next.isObject = isObject;
        if (!isObject) {
            next.stream = streamHere();
            if (next.stream != nullptr) {
                next.stream->begin();
            }
        }
        open_.push_back(std::move(next));
        return true;
    }

    /// The stream of the list that opens inside what is open now.
    const JsonStream* streamHere() const {
        constexpr std::size_t deepestStream = 2;
        if (open_.size() > deepestStream) {
            return nullptr;
        }
        QStringList path;
        for (const Open& parent : open_) {
            if (!parent.isObject) {
                return nullptr;
            }
            path.append(parent.key);
        }
        const auto found = streams_.find(path);
        return found == streams_.end() ? nullptr : &*found;
    }

    bool close() {
        Open done = std::move(open_.back());
        open_.pop_back();
        if (open_.empty()) {
            document_ = std::move(done.map);
            complete_ = true;
            return true;
        }
        return add(done.isObject ? QVariant(std::move(done.map)) : QVariant(std::move(done.list)));
    }

    const QHash<QStringList, JsonStream>& streams_;
    KnownTexts texts_;
    std::vector<Open> open_;
    QVariantMap document_;
    bool complete_ = false;
};

}  // namespace

JsonDocument readJson(QIODevice& device, const QHash<QStringList, JsonStream>& streams,
                      const std::function<void(qint64)>& onBytes) {
    DeviceBuffer buffer(device, onBytes);
    std::istream text(&buffer);
    DocumentBuilder builder(streams);
    if (!json::sax_parse(text, &builder) || !builder.complete()) {
        return {false, {}, buffer.taken()};
    }
    return {true, builder.takeObject(), buffer.taken()};
}

}  // namespace tidewell
