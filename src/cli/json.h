#pragma once

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Results as JSON. The library behind it is known to json.cpp alone, which costs half a minute to compile.
namespace welvane {

/// A JSON value. An object keeps its members in the order in which they were added.
class Json {
  public:
    using Member = std::pair<std::string_view, Json>;

    Json() = default;  ///< null
    Json(bool value) : kind_(Kind::Truth), integer_(value ? 1 : 0) {}
    template <std::signed_integral Number>
    Json(Number value) : kind_(Kind::Signed), integer_(value) {}
    template <std::unsigned_integral Number>
    Json(Number value) : kind_(Kind::Unsigned), integer_(static_cast<std::int64_t>(value)) {}
    Json(double value) : kind_(Kind::Number), number_(value) {}
    /// Has to be UTF-8.
    Json(std::string value) : kind_(Kind::Text), text_(std::move(value)) {}
    Json(std::string_view value) : Json(std::string(value)) {}
    Json(const char* value) : Json(std::string(value)) {}

    static Json array() { return Json(Kind::Array); }
    static Json object(std::initializer_list<Member> members = {});

    /// Another element of an array.
    void push(Json value) { items_.push_back(std::move(value)); }
    /// Another member of an object.
    void add(std::string_view key, Json value);
    void add(std::initializer_list<Member> members);

    bool empty() const { return items_.empty(); }
    std::size_t size() const { return items_.size(); }
    const Json& front() const { return items_.front(); }

    /// As text: on one line, or with each level set in by `indent` blanks; the first line is not, and stands at
    /// `level`.
    std::string dump(int indent = -1, int level = 0) const;

  private:
    enum class Kind { Null, Truth, Signed, Unsigned, Number, Text, Array, Object };

    explicit Json(Kind kind) : kind_(kind) {}
    void write(std::string& text, int indent, int level) const;
    void writeItems(std::string& text, int indent, int level) const;

    Kind kind_ = Kind::Null;
    std::int64_t integer_ = 0;
    double number_ = 0;
    std::string text_;
    std::vector<std::string> keys_;  ///< of an object, beside its items
    std::vector<Json> items_;
};

}  // namespace welvane
