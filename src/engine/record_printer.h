#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/pass_context.h"
#include "session/tvd.h"

/// The records of a pass as text.
namespace welvane {

/// The depths as they are written.
class DepthPrinter {
  public:
    explicit DepthPrinter(const PassContext& context);

    int decimals() const { return decimals_; }
    double depth(std::int32_t index) const;
    /// The depth cut to the step's precision and shown at the data's decimals; its length. `target` holds
    /// formatMaskCapacity characters and 16 more.
    std::size_t print(char* target, std::int32_t index) const;
    std::string text(std::int32_t index) const;

  private:
    const PassContext& context_;
    int decimals_, cut_;  ///< shown, and those of them that are figures
    DepthMapper toTvd_;
};

/// Some records as text, and what was seen of them. Used again it keeps its memory.
class PrintedRecords {
  public:
    void clear();
    /// Room for at least `size` characters behind what there is; then call advance with what was used.
    char* reserve(std::size_t size);
    void advance(std::size_t used) { used_ += used; }
    /// A line and its CR LF.
    void writeLine(std::string_view line);
    std::string_view text() const { return {text_.get(), used_}; }

    std::size_t overflows = 0;     ///< values too wide for their column
    std::string scratch, wrapped;  ///< of whoever prints

  private:
    std::unique_ptr<char[]> text_;
    std::size_t used_ = 0, capacity_ = 0;
};

/// The samples of the columns that are written: each by the one of grid index `first`.
struct PrintedSamples {
    std::span<const double* const> columns;
    std::int64_t first = 1;
};

/// Prints records of one pass, by as many threads as wish to: nothing changes once it is made. Each takes and gives a
/// PrintedRecords of its own.
class RecordPrinter {
  public:
    explicit RecordPrinter(const PassContext& context);

    /// Adds `count` records to `to`, from grid index `begin` on in the direction of the writing.
    void print(const PrintedSamples& samples, std::int32_t begin, std::int32_t count, PrintedRecords& to) const;
    /// Characters of a record, near enough.
    std::size_t recordLength() const { return length_ + 2; }

  private:
    void printFixed(const PrintedSamples& samples, std::int32_t index, PrintedRecords& to) const;
    void printDelimited(const PrintedSamples& samples, std::int32_t index, PrintedRecords& to) const;
    void putValue(char* place, std::size_t number, double sample, PrintedRecords& to) const;
    void putText(char* column, std::size_t width, std::string_view text, PrintedRecords& to) const;
    void putOverflow(char* column, std::size_t width, PrintedRecords& to) const;

    const PassContext& context_;
    const std::vector<OutputColumn>& columns_;
    DepthPrinter depths_;
    bool fixed_;  ///< columns of one width; otherwise the delimiter stands between values
    char delimiter_;
    std::size_t depthWidth_, length_ = 0;  ///< of the index column and of a record, in characters
    int decimals_;                         ///< the most of any column
    double null_;
    std::vector<std::size_t> widths_;     ///< by column
    std::vector<std::string> nullTexts_;  ///< by column
    std::string overflow_;
};

/// True for columns of one width each.
bool fixedLayout(const SessionTables& tables);

}  // namespace welvane
