#include "app/files/json_reader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <istream>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include "app/files/json_value.h"

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

/// Builds the document from the parser's events.
class DocumentBuilder : public nlohmann::json_sax<json> {
  public:
    explicit DocumentBuilder(const QHash<QStringList, JsonStream>& streams) : streams_(streams) {}

    /// An object or a list stood outside, and is whole.
    bool complete() const { return complete_; }
    json takeObject() { return std::move(document_); }

    bool null() override { return add(nullptr); }
    bool boolean(bool flag) override { return add(flag); }
    bool number_integer(number_integer_t number) override { return add(number); }
    bool number_unsigned(number_unsigned_t number) override { return add(number); }
    bool number_float(number_float_t number, const string_t&) override { return add(number); }
    bool string(string_t& text) override { return add(std::move(text)); }
    bool binary(binary_t&) override { return false; }  // not in JSON text

    bool start_object(std::size_t) override { return open(json::object()); }
    bool key(string_t& name) override {
        open_.back().key = std::move(name);
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(json::array()); }
    bool end_array() override { return close(); }

    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        return false;
    }

  private:
    struct Open {
        json value;
        std::string key = {};  // of the member that comes
        const JsonStream* stream = nullptr;
    };

    bool add(json value) {
        if (open_.empty()) {
            return true;  // a bare value
        }
        Open& parent = open_.back();
        if (parent.stream != nullptr) {
            (*parent.stream)(value);
        } else if (parent.value.is_object()) {
            parent.value[std::move(parent.key)] = std::move(value);
        } else {
            parent.value.push_back(std::move(value));
        }
        return true;
    }

    bool open(json value) {
        if (open_.size() == deepestJson) {
            return false;
        }
        const JsonStream* const stream = value.is_array() ? streamHere() : nullptr;
        open_.push_back({std::move(value), {}, stream});
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
            if (!parent.value.is_object()) {
                return nullptr;
            }
            path.append(QString::fromStdString(parent.key));
        }
        const auto found = streams_.find(path);
        return found == streams_.end() ? nullptr : &*found;
    }

    bool close() {
        json done = std::move(open_.back().value);
        open_.pop_back();
        if (!open_.empty()) {
            return add(std::move(done));
        }
        complete_ = true;
        if (done.is_object()) {
            document_ = std::move(done);
        }
        return true;
    }

    const QHash<QStringList, JsonStream>& streams_;
    std::vector<Open> open_;
    json document_ = json::object();
    bool complete_ = false;
};

}  // namespace

JsonDocument readJson(QIODevice& device, const QHash<QStringList, JsonStream>& streams,
                      const std::function<void(qint64)>& onBytes) {
    DeviceBuffer buffer(device, onBytes);
    std::istream text(&buffer);
    DocumentBuilder builder(streams);
    if (!json::sax_parse(text, &builder) || !builder.complete()) {
        return {.end = buffer.taken()};
    }
    return {true, builder.takeObject(), buffer.taken()};
}

}  // namespace tidewell
