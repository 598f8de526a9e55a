#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QVariant>
#include <string_view>
#include <vector>

namespace tidewell {

/// Writes one JSON document, indented by four blanks, piece by piece to a device, so that it never
/// stands in memory as a whole. Inside a list or an object, values follow each other; in an object
/// each behind its key.
class JsonWriter {
  public:
    explicit JsonWriter(QIODevice& device) : device_(device) {}

    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }
    void key(std::string_view name);

    void value(std::string_view text);
    void value(const char* text) { value(std::string_view(text)); }
    void value(const QString& text);
    void value(double number);  ///< null where JSON has no such number
    void value(int number) { value(static_cast<double>(number)); }
    void value(bool flag);
    /// Maps, lists, texts, numbers and flags, at any depth; anything else is null.
    void value(const QVariant& variant);

    template <class Value>
    void member(std::string_view name, const Value& content) {
        key(name);
        value(content);
    }

    /// Hands everything to the device. False when it has refused something.
    bool finish();

  private:
    void begin(char bracket);
    void end(char bracket);
    void next();
    void newLine();
    void write(std::string_view bytes);
    void quoted(std::string_view text);
    void escaped(char character);

    QIODevice& device_;
    QByteArray buffer_;
    std::vector<bool> filled_;  // per open bracket: has content
    bool afterKey_ = false;
    bool failed_ = false;
};

}  // namespace tidewell
