#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "conform/data_tokens.h"
#include "conform/judgement.h"
#include "conform/text_sink.h"

namespace welvane {

/// Writes the lines of ~A mended: cells spelled as numbers, blanks between them, and where the judgement asks for it
/// rows laid out anew. Nothing of a row is lost: a row that does not fit is written as it stands.
class DataMend {
  public:
    explicit DataMend(const Judgement& judged);

    /// Rows laid out anew need the widths of all columns first: every line goes through measure() before the first one
    /// goes through write().
    bool needsMeasure() const { return justify_ || wrap_; }
    /// Rows of one line each are wrapped.
    bool wraps() const { return wrap_ && judged_.data.layout != RowLayout::Wrapped; }
    void measure(std::string_view line);
    void write(std::string_view line, const TextSink& sink);
    /// What is still held of a wrapped step.
    void finish(const TextSink& sink);

  private:
    bool cut(std::string_view line);
    void mendCell(std::string_view text, std::vector<std::string>& cells) const;
    void writeSpaced(std::string_view line, const TextSink& sink);
    void writeRow(const TextSink& sink);
    void writeWrapped(const TextSink& sink);

    const Judgement& judged_;
    std::size_t columns_;
    bool comma_;  ///< commas part the columns, and all rows fit
    const std::array<std::uint8_t, 256>& kinds_;
    std::string null_;
    bool justify_ = false, wrap_ = false;  ///< rows on one line, and rows over several, are laid out anew
    std::vector<std::string> cells_;       ///< of the line or the step in hand
    std::vector<std::size_t> width_;
    std::size_t column_ = 0;  ///< while measuring wrapped steps
    std::string out_;
};

/// A number with an exponent written out in digits; "" for one of more than a hundred of them.
std::string writtenOut(std::string_view number);

}  // namespace welvane
