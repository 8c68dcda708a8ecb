// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qor::cli {

/// Writes one JSON document piece by piece, keys in the order of the calls. Output is always valid JSON in UTF-8 that a
/// terminal may show: control characters and marks that turn the reading direction are escaped, bytes that are no UTF-8
/// become U+FFFD. The caller sees to it that values stand in lists and behind keys.
class JsonWriter {
public:
    using Target = std::function<void(std::string_view)>;

    explicit JsonWriter(Target target) : _target(std::move(target)) {}

    /// How a list or object is laid out: one entry a line, or all on one line.
    enum class Layout : std::uint8_t { Lines, Line };

    JsonWriter& beginObject(Layout layout = Layout::Lines);
    JsonWriter& endObject();
    JsonWriter& beginList(Layout layout = Layout::Lines);
    JsonWriter& endList();
    JsonWriter& key(std::string_view name);

    JsonWriter& value(std::string_view text);
    JsonWriter& value(const char* text) { return value(std::string_view(text)); }
    JsonWriter& value(std::int64_t number);
    JsonWriter& value(bool truth);
    JsonWriter& seconds(double number);
    JsonWriter& null();

    template <class Value>
    JsonWriter& field(std::string_view name, const Value& content) {
        return key(name).value(content);
    }
    /// Null for nothing.
    JsonWriter& field(std::string_view name, const std::optional<std::string>& text);

private:
    struct Level {
        Layout layout;
        bool empty = true;
    };
    void begin(char bracket, Layout layout);
    void end(char bracket);
    void separate();
    void breakLine();
    void write(std::string_view text) { _target(text); }
    void writeString(std::string_view text);

    Target _target;
    std::vector<Level> _levels;
    bool _afterKey = false;
};

}  // namespace qor::cli
