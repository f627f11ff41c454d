// JSON documents on standard output. nlohmann-json writes them, which only Json.cpp includes.
#pragma once

#include <chrono>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace cabslot {

/// The version of the layout of every document, its first field. Adding fields does not change it;
/// removing one or changing its meaning does.
inline constexpr int jsonVersion = 1;

/// A JSON value: null, a boolean, a number, a text, a list, or fields in a given order. Most
/// constructors convert implicitly, so that `{{"slot", 1}, {"name", "Cab"}}` is a value.
class Json {
public:
    using Field = std::pair<std::string, Json>; ///< its name and its value
    using List = std::vector<Json>;
    using Fields = std::vector<Field>;
    using Value =
        std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, List, Fields>;

    Json() = default; ///< null
    Json(bool value) : value_(value) {}
    Json(double value) : value_(value) {}
    Json(std::integral auto value) : value_(static_cast<std::int64_t>(value)) {}
    Json(const char* text) : value_(text) {}
    Json(std::string text) : value_(std::move(text)) {}
    Json(std::string_view text) : value_(std::string(text)) {}
    Json(List list) : value_(std::move(list)) {}
    Json(const std::vector<std::string>& texts) : value_(List(texts.begin(), texts.end())) {}
    Json(std::initializer_list<Field> fields);

    /// A value, or null for none.
    template<typename T>
    Json(const std::optional<T>& value) : Json(value ? Json(*value) : Json()) {}

    /// Appends a field to fields.
    void add(const std::string& name, Json value);
    /// Appends the fields of another value.
    void addAll(const Json& fields);

    const Value& value() const { return value_; }

private:
    Value value_ = nullptr;
};

/// Formats a part of a document. Replaces bytes that are not UTF-8, as in some file names, and
/// escapes every control character.
std::string documentText(const Json& part);
void printDocument(const Json& fields); ///< prints the version, then the fields

/// A time in ISO 8601, UTC, such as "2026-05-03T18:30:00Z".
std::string isoTime(std::chrono::sys_seconds time);

} // namespace cabslot
