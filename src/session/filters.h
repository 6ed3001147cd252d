#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"
#include "shared/failure.h"

/// Filter files: a LAS header that prescribes what a session is to produce.
namespace welvane {

/// What became of a filter. `skipped` names what could not be followed and why: an unknown function, a source that does
/// not exist, too few arguments, an unresolved reference, a value that cannot be read, a line that no channel took.
struct FilterReport {
    bool applied = false;
    std::string why;  ///< why it was not applied
    FailureList skipped;
};

/// Applies session.filterFile to the session's tables. A file that is not there, or that holds no section a filter can
/// have, changes nothing. A filter whose lines end in LF only is read through a scratch copy.
FilterReport openFilter(App& app, Session& session);
/// Names the filter in frd as the one in use, with its ~Curve and ~Parameter taken and the merge of ~Parameter off, as
/// a run by command does before openFilter.
void setFilterInUse(Session& session, const std::string& path);
/// Asks for a filter file and stores the choice; false when cancelled.
bool doOpenFilter(App& app, Session& session, const std::string& title = "Open Filter File");
/// The button that turns the filter of frd on or off for the loaded files, after a question. Returns the state that
/// holds now.
bool filBut(App& app, Session& session, bool on);
/// Opens every slot that holds a path, in order, and then applies the filter that frd has in use, once. An empty
/// `trigger` does nothing.
FilterReport loadAllSlots(App& app, Session& session, std::string_view trigger);

/// Lines in the form of a filter's ~Curve lines: each renames, describes and selects channels as a filter of just these
/// lines would, its channels in front in this order; channels that no line names stay in use behind them.
FilterReport applyCurveLines(App& app, Session& session, const std::vector<std::string>& lines);

/// One line of a filter's ~Curve section.
struct FilterCurve {
    HeaderField field;   ///< `desc` is the part in front of "|", trimmed
    std::string source;  ///< the part behind it, trimmed; "" without one
    std::string name;    ///< what a report calls the line
};
FilterCurve parseFilterCurve(const HeaderField& line);
/// The ~Curve lines put on srd(4). `dropOthers` takes the channels that no line names out of use.
void applyFilterCurves(App& app, Session& session, const std::vector<FilterCurve>& lines, bool dropOthers,
                       FailureList& skipped);

/// Resolves one reference, the text between "[" and "]": "File=table.csv Key=LAS(~W:UWI) Col=Operator". "" when it
/// leads nowhere. `filterFolder` is where a file is looked for that is not found from the current folder.
std::string applyFilterSpecial(const Session& session, std::string_view text, int slot,
                               std::string_view filterFolder = {});

/// Text of the Sample Rate row in the form of its list items, for a step in feet or (any unit but F and FT) in metres.
std::string stepItemText(double step, std::string_view depthUnit);

}  // namespace welvane
