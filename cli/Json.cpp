#include "cli/Json.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cstdio>
#include <iostream>
#include <string_view>

namespace cabslot {

namespace {

using Node = nlohmann::ordered_json;

/// Converts a value for nlohmann-json.
struct Converter {
    Node operator()(const Json::List& list) const {
        Node node = Node::array();
        for (const Json& element : list)
            node.push_back(std::visit(*this, element.value()));
        return node;
    }
    Node operator()(const Json::Fields& fields) const {
        Node node = Node::object();
        for (const auto& [name, value] : fields)
            node[name] = std::visit(*this, value.value());
        return node;
    }
    Node operator()(const auto& value) const { return value; }
};

std::string text(const Node& node) {
    return node.dump(2, ' ', false, Node::error_handler_t::replace);
}

/// Escapes DEL and the control characters of C1 (two bytes in UTF-8), which nlohmann-json does not.
std::string withoutControls(std::string_view valid) {
    std::string safe;
    const auto escape = [&safe](unsigned code) {
        std::array<char, 8> escaped{};
        std::snprintf(escaped.data(), escaped.size(), "\\u%04x", code);
        safe += escaped.data();
    };
    for (std::size_t i = 0; i < valid.size(); ++i) {
        if (valid[i] == '\x7F')
            escape(0x7F);
        else if (valid[i] == '\xC2' && static_cast<unsigned char>(valid[i + 1]) < 0xA0)
            escape(static_cast<unsigned char>(valid[++i]));
        else
            safe += valid[i];
    }
    return safe;
}

} // namespace

Json::Json(std::initializer_list<Field> fields) : value_(Fields(fields)) {}

void Json::add(const std::string& name, Json value) {
    std::get<Fields>(value_).emplace_back(name, std::move(value));
}

void Json::addAll(const Json& fields) {
    for (const auto& [name, value] : std::get<Fields>(fields.value_))
        add(name, value);
}

std::string documentText(const Json& part) {
    return withoutControls(text(std::visit(Converter{}, part.value())));
}

void printDocument(const Json& fields) {
    Json document = {{"version", jsonVersion}};
    document.addAll(fields);
    std::cout << documentText(document) << '\n';
}

std::string isoTime(std::chrono::sys_seconds time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    return text.data();
}

} // namespace cabslot
