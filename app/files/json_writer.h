#pragma once

#include <QString>
#include <QVariant>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tidewell {

/// Levels of lists and objects that a document may have: as many as Qt's own reader takes.
inline constexpr std::size_t deepestJson = 1024;

/// Writes one JSON document, indented by four blanks, piece by piece, so that it never stands in
/// memory as a whole. Inside a list or an object, values follow each other; in an object each
/// behind its key. Texts of bytes are UTF-8.
class JsonWriter {
  public:
    using Sink = std::function<void(std::string_view)>;

    explicit JsonWriter(Sink sink);

    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }
    void key(std::string_view name);

    void value(std::string_view text);
    void value(const char* text) { value(std::string_view(text)); }
    void value(const QString& text);  ///< half a surrogate pair becomes a question mark
    void value(double number);        ///< null where JSON has no such number
    void value(qlonglong number);
    void value(int number) { value(static_cast<qlonglong>(number)); }
    void value(bool flag);
    void null();
    /// Any depth of maps and lists, and in them whatever `QJsonValue::fromVariant` knows; null for
    /// the rest.
    void value(const QVariant& variant);

    template <class Value>
    void member(std::string_view name, const Value& content) {
        key(name);
        value(content);
    }

    /// Hands the last piece to the sink. False when something was too deep to be written.
    bool finish();

  private:
    void begin(char bracket);
    void end(char bracket);
    void next();
    void newLine();
    void write(std::string_view bytes);
    void flush();
    void quoted(std::string_view text);
    void escaped(unsigned char byte);
    void object(const QVariantMap& map);
    void array(const QVariantList& list);
    void other(const QVariant& variant);
    bool tooDeep();

    Sink sink_;
    std::string buffer_;
    std::vector<bool> filled_;  // per open bracket: has content
    bool afterKey_ = false;
    bool whole_ = true;
};

}  // namespace tidewell
