#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace welvane {

/// A number with the digits in which it was given: a null of -999.2500 is written so.
class GivenNumber {
  public:
    /// In the shortest text that reads back the same.
    GivenNumber(double value);
    /// A field that is a number and nothing else; nothing for another one.
    static std::optional<GivenNumber> read(std::string_view text);

    double value() const { return value_; }
    const std::string& text() const { return text_; }
    bool operator==(const GivenNumber&) const = default;

  private:
    double value_;
    std::string text_;
};

}  // namespace welvane
