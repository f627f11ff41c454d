// JSON values: building, writing and reading them. nlohmann-json does the work, which only Json.cpp
// includes. Any thread.
#pragma once

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
    /// Appends an element to a list.
    void append(Json element);
    /// Appends the fields of another value.
    void addAll(const Json& fields);

    const Value& value() const { return value_; }

    /// The value if it has the type `T`, one of those of Value; else null.
    template<typename T>
    const T* as() const {
        return std::get_if<T>(&value_);
    }

    /// The field `name` of fields; null if there is none.
    const Json* field(std::string_view name) const;

private:
    Value value_ = nullptr;
};

/// Formats a value. Replaces bytes that are not UTF-8, as in some file names, and escapes every
/// control character.
std::string documentText(const Json& part);

struct ReadJson {
    Json value;
    std::string whyNot; ///< a clause for the user; empty: `value` was read
};

// The limits of what is read.
inline constexpr std::size_t deepestJson = 8;      ///< lists and fields inside each other
inline constexpr std::size_t mostJsonFields = 100; ///< of one value

/// Reads the one value in `text`, which is UTF-8. Refuses a field that is there twice and what is
/// beyond the limits, so that no text takes much stack or time. It takes some tens of bytes of
/// memory for each byte of the text, whose size the caller limits.
ReadJson readJson(std::string_view text);

} // namespace cabslot
