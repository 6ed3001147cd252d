#include "cli/json.h"

#include <nlohmann/json.hpp>

namespace welvane {

Json Json::object(std::initializer_list<Member> members) {
    Json object(Kind::Object);
    object.add(members);
    return object;
}

void Json::add(std::string_view key, Json value) {
    keys_.emplace_back(key);
    items_.push_back(std::move(value));
}

void Json::add(std::initializer_list<Member> members) {
    for (const Member& member : members) add(member.first, member.second);
}

std::string Json::dump(int indent, int level) const {
    std::string text;
    write(text, indent, level);
    return text;
}

void Json::write(std::string& text, int indent, int level) const {
    switch (kind_) {
        case Kind::Null:
            text += "null";
            break;
        case Kind::Truth:
            text += integer_ != 0 ? "true" : "false";
            break;
        case Kind::Signed:
            text += std::to_string(integer_);
            break;
        case Kind::Unsigned:
            text += std::to_string(static_cast<std::uint64_t>(integer_));
            break;
        case Kind::Number:
            text += nlohmann::json(number_).dump();
            break;
        case Kind::Text:
            text += nlohmann::json(text_).dump();
            break;
        case Kind::Array:
        case Kind::Object:
            writeItems(text, indent, level);
            break;
    }
}

void Json::writeItems(std::string& text, int indent, int level) const {
    const bool named = kind_ == Kind::Object;
    const auto breakLine = [&](int depth) {
        if (indent < 0) return;
        text += '\n';
        text.append(static_cast<std::size_t>(indent) * static_cast<std::size_t>(depth), ' ');
    };
    text += named ? '{' : '[';
    for (std::size_t place = 0; place < items_.size(); ++place) {
        if (place != 0) text += ',';
        breakLine(level + 1);
        if (named) text += nlohmann::json(keys_[place]).dump() + (indent < 0 ? ":" : ": ");
        items_[place].write(text, indent, level + 1);
    }
    if (!items_.empty()) breakLine(level);
    text += named ? '}' : ']';
}

}  // namespace welvane
