#pragma once

#include <string_view>

#include "shared/line_reader.h"

namespace welvane {

/// Lines of a text that people edit by hand on any system (a reference file, a survey): as LineReader, but a lone LF
/// ends a line too. Not for LAS files, whose line ends are judged.
class AnyLineReader {
  public:
    explicit AnyLineReader(std::string_view bytes) : reader_(bytes) {}

    /// The next line without its end; false at the end of the text.
    bool next(std::string_view& line) {
        if (!pending_ && !reader_.next(rest_)) return false;
        const std::size_t end = rest_.find('\n');
        line = rest_.substr(0, end);
        pending_ = end != std::string_view::npos && end + 1 < rest_.size();
        if (pending_) rest_.remove_prefix(end + 1);
        return true;
    }

  private:
    LineReader reader_;
    std::string_view rest_;
    bool pending_ = false;
};

}  // namespace welvane
