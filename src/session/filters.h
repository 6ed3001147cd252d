#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"
#include "shared/failure.h"
#include "shared/figure_rules.h"

/// Filter files: a LAS header that prescribes what a session is to produce.
namespace welvane {

/// What became of a filter. `skipped` names what could not be followed and why: an unknown function, a source that does
/// not exist, too few arguments, an unresolved reference, a value that cannot be read, a line that no channel took.
struct FilterReport {
    bool applied = false;
    std::string why;  ///< why it was not applied
    bool unreadable =
        false;  ///< it, or a table that it refers to, is there but cannot be read: no run goes on without it
    FailureList skipped;
    std::vector<std::string> tables;  ///< files that its references named
};

/// Applies session.filterFile to the session's tables. A file that is not there, or that holds no section a filter can
/// have, changes nothing. A filter whose lines end in LF only is read through a scratch copy.
FilterReport openFilter(App& app, Session& session, FigureRules rules);
/// Names the filter in frd as the one in use, with its ~Curve and ~Parameter taken and the merge of ~Parameter off, as
/// a run by command does before openFilter.
void setFilterInUse(Session& session, const std::string& path);

/// Lines in the form of a filter's ~Curve lines: each renames, describes and selects channels as a filter of just these
/// lines would, its channels in front in this order; channels that no line names stay in use behind them. By true
/// figures a function takes the place of the channel that had its name.
FilterReport applyCurveLines(Session& session, const std::vector<std::string>& lines, FigureRules rules);

/// One line of a filter's ~Curve section.
struct FilterCurve {
    HeaderField field;   ///< `desc` is the part in front of "|", trimmed
    std::string source;  ///< the part behind it, trimmed; "" without one
    std::string name;    ///< what a report calls the line
};
FilterCurve parseFilterCurve(const HeaderField& line);
/// The ~Curve lines put on srd(4). `dropOthers` takes the channels that no line names out of use. By true
/// figures a function of another function's result reads that result, else what the other one reads; and where
/// nothing is dropped a function takes the place of the channel that had its name.
void applyFilterCurves(Session& session, const std::vector<FilterCurve>& lines, bool dropOthers, FigureRules rules,
                       FailureList& skipped);
/// Whether a line made the function of a column of srd(4). Such a function reads its own column, into which the links
/// of its input were copied, wherever columns have moved since; any other reads the channel of its descriptor.
bool readsOwnColumn(const Table& outputs, int column);
/// The column whose function comes before that of `column`, since that one reads its result; 0 for none. Its channel
/// need not be in use.
int functionInFront(const Table& outputs, int column);

/// Resolves one reference, the text between "[" and "]": "File=table.csv Key=LAS(~W:UWI) Col=Operator". "" when it
/// leads nowhere. `filterFolder` is where a file is looked for that is not found from the current folder. FileFailure
/// for a file that is there but cannot be read.
/// `tables`, when given, takes the path of that file.
std::string applyFilterSpecial(const Session& session, std::string_view text, int slot,
                               std::string_view filterFolder = {}, std::vector<std::string>* tables = nullptr);

}  // namespace welvane
