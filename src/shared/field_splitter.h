#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace welvane {

/// Cuts a text on one of its separators and hands out fields by number. With a blank among the separators, runs of
/// them count as one and blanks at both ends make no field; with another separator empty fields count.
/// The given text must outlive the splitter's use.
class FieldSplitter {
  public:
    explicit FieldSplitter(std::string separators = " ") : separators_(std::move(separators)) {}

    /// Cuts a new text; the storage of the fields is kept from call to call.
    void setText(std::string_view text);
    /// Number of fields; the empty text has none.
    std::size_t count() const { return fields_.size(); }
    /// Field n from 1; "" beyond the last.
    std::string_view field(std::size_t number) const;

  private:
    std::string separators_;
    std::vector<std::string_view> fields_;
};

}  // namespace welvane
