#include "json/Json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <string_view>
#include <utility>

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

/// Takes a text's parts from nlohmann-json's parser, which calls the public functions and stops
/// when one returns false. Neither of them recurses.
class Builder {
public:
    Json root;
    std::string whyNot;

    bool null() { return place({}); }
    bool boolean(bool value) { return place(value); }
    bool number_integer(std::int64_t value) { return place(value); }
    bool number_unsigned(std::uint64_t value) {
        return std::in_range<std::int64_t>(value) ? place(value)
                                                  : place(static_cast<double>(value));
    }
    bool number_float(double value, const std::string&) { return place(value); }
    bool string(std::string& text) { return place(std::move(text)); }
    bool binary(Node::binary_t&) { return false; } // no part of a text
    bool start_object(std::size_t) { return open(std::initializer_list<Json::Field>()); }
    bool end_object() { return close(); }
    bool start_array(std::size_t) { return open(Json::List()); }
    bool end_array() { return close(); }
    bool key(std::string& name) {
        Open& fields = open_.back();
        if (fields.value.field(name) != nullptr)
            return refuse("a field is there twice");
        if (++fields.names > mostJsonFields)
            return refuse("it has too many fields");
        fields.name = std::move(name);
        return true;
    }
    bool parse_error(std::size_t position, const std::string&, const std::exception&) {
        return refuse("it is not JSON, or damaged, at byte " + std::to_string(position));
    }

private:
    /// A list or fields whose end has not come yet.
    struct Open {
        Json value;
        std::string name{}; ///< of the next field
        std::size_t names = 0;
    };

    bool refuse(std::string why) {
        whyNot = std::move(why);
        return false;
    }
    bool open(Json value) {
        if (open_.size() == deepestJson)
            return refuse("it is nested too deep");
        open_.push_back({std::move(value)});
        return true;
    }
    bool close() {
        Json done = std::move(open_.back().value);
        open_.pop_back();
        return place(std::move(done));
    }
    bool place(Json value) {
        if (open_.empty())
            root = std::move(value);
        else if (open_.back().value.as<Json::Fields>() != nullptr)
            open_.back().value.add(open_.back().name, std::move(value));
        else
            open_.back().value.append(std::move(value));
        return true;
    }

    std::vector<Open> open_;
};

} // namespace

Json::Json(std::initializer_list<Field> fields) : value_(Fields(fields)) {}

void Json::add(const std::string& name, Json value) {
    std::get<Fields>(value_).emplace_back(name, std::move(value));
}

void Json::append(Json element) {
    std::get<List>(value_).push_back(std::move(element));
}

void Json::addAll(const Json& fields) {
    for (const auto& [name, value] : std::get<Fields>(fields.value_))
        add(name, value);
}

const Json* Json::field(std::string_view name) const {
    const auto* const fields = as<Fields>();
    if (fields == nullptr)
        return nullptr;
    const auto found = std::ranges::find(*fields, name, &Field::first);
    return found == fields->end() ? nullptr : &found->second;
}

std::string documentText(const Json& part) {
    return withoutControls(text(std::visit(Converter{}, part.value())));
}

ReadJson readJson(std::string_view text) {
    Builder builder;
    if (Node::sax_parse(text, &builder))
        return {std::move(builder.root), {}};
    return {{}, builder.whyNot};
}

} // namespace cabslot
