#pragma once

#include <string>
#include <vector>

#include "convert/load_table.h"
#include "jobs/process.h"
#include "models/table_model.h"
#include "session/filters.h"
#include "session/load_result.h"
#include "shared/notes.h"

/// What a person should know of what was loaded, followed and written: one list, with file and line.
namespace welvane {

/// What a problem came of. What comes of the same once more replaces what was known of it.
enum class ProblemSource { Load, Filter, Run, Table };

class ProblemList {
  public:
    /// A file that was opened into a slot, or was not.
    void loaded(const std::string& path, const SlotLoadResult& result);
    /// A file that no slot holds any more.
    void closed(const std::string& path) { forget(ProblemSource::Load, path); }
    void filtered(const std::string& path, const FilterReport& report);
    /// A run; what an earlier one told is gone.
    void ran(const ProcessOutcome& outcome);
    /// A table read for making LAS of it.
    void readTable(const std::string& path, const TableLoadResult& result);
    void clear() { problems_.clear(); }

    std::size_t size() const { return problems_.size(); }
    const Note& note(std::size_t place) const { return problems_.at(place).note; }
    ProblemSource source(std::size_t place) const { return problems_.at(place).source; }

  private:
    struct Problem {
        ProblemSource source;
        std::string about;  ///< the file it came of
        Note note;
    };
    void forget(ProblemSource source, const std::string& about);
    void add(ProblemSource source, const std::string& about, Note note);
    void addFailures(ProblemSource source, const std::string& about, const FailureList& failures);

    std::vector<Problem> problems_;
};

/// The list as a grid: file, line, channel, what. A double click leads to the place in the file.
class ProblemsModel : public TableModel {
  public:
    explicit ProblemsModel(const ProblemList& list) : list_(list) {}

    std::int64_t rows() const override { return static_cast<std::int64_t>(list_.size()) + 1; }
    int columns() const override { return 4; }
    int headColumns() const override { return 0; }
    std::string text(std::int64_t row, int column) const override;

    /// Where to look: a path and its line from 1, 0 for none; "" where a problem is about no file.
    struct Place {
        std::string path;
        std::size_t line = 0;
    };
    Place placeOf(std::int64_t row) const;

  private:
    const ProblemList& list_;
};

}  // namespace welvane
