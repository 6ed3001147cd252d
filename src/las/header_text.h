#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace welvane {

/// Header lines gathered as one text, each with its CR LF.
class HeaderText {
  public:
    void line(std::string_view text) { text_.append(text).append("\r\n"); }
    std::string take() { return std::move(text_); }

  private:
    std::string text_;
};

}  // namespace welvane
