#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "session/session.h"

/// The tables of a session at their defaults, and the operations that add, remove and reset columns.
namespace welvane {

/// The two captions of prd and of parg.
inline constexpr std::string_view settingsCaption = "Settings", filterSettingsCaption = "Settings (from Filter)";
inline constexpr std::string_view parametersCaption = "~Parameters",
                                  filterParametersCaption = "~Parameters (from Filter)";

/// Builds all tables anew at their defaults; slots keep their paths but count as not opened.
void openSession(App& app, Session& session);
/// Makes a run available or takes it away.
void allowStuff(Session& session, bool available);

/// prd with all its rows at their defaults; `renamedups` comes from the settings store.
void fillPrd(App& app, Session& session);
/// frd, its path from the setting `filFile`, which goes to session.filterFile too.
void setupFrd(App& app, Session& session);
/// ord with its six default columns; all included but ~Other.
void resetOrd(Session& session);
/// Moves a section to another place; false, with nothing changed, for the label column and for the data section.
bool moveSection(Session& session, int from, int to);
/// Heads of a ~Well or ~Parameter table, and no rows.
void setupFieldTable(Table& table);

/// "File 2 :" and the file's name; `slot` from 0.
std::string fileLabel(int slot, std::string_view path = {});
/// Depth as the link cells hold it: nine decimals, trailing zeros removed.
std::string depthText(double depth, int decimals = 9);

/// Defaults of one column of srd(4).
void fillColDefaults(Session& session, int column);
/// srd(4) derived from srd(0) to srd(3): one output channel per column, linked to every loaded slot that has a channel
/// there.
void fillNewGrid(Session& session);
/// Row 6 of every column: checked where at least one of its four slots feeds it. `byCurve` looks at the index rows,
/// else at the mnemonics.
void recalculateUse(Session& session, bool byCurve);
/// For the command ID_AddChannel: a new column behind `currentColumn` of srd(4). Returns its
/// number, which becomes the current column. RunTimeFailure at the limit of 16-bit columns.
int AddChannel(Session& session, int currentColumn);
/// New columns with their defaults at the end of all five tables; returns the number of the first. RunTimeFailure at
/// the limit.
int appendChannels(Session& session, int count);
/// For the command ID_DeleteChannel: takes the current column out of srd(4); false when there is none to take.
bool DeleteChannel(Session& session, int currentColumn);
/// Undoes a function: rows 1 to 5 return to what they were before.
void clearFunction(Session& session, int column);
/// Marks the first format value that cannot work (or looks narrow) by its colour. Refuses nothing.
void checkFormatSpec(const App& app, Session& session);
/// Stores one of the six format rows (PrdRow::FormatDot to DataDecimals) in the cell and in the shared settings at
/// once.
void setFormatRow(App& app, Session& session, PrdRow row, std::int16_t value);
/// The six rows from the shared settings.
void showFormat(const App& app, Session& session);
/// Width for the columns of the srd tables: -1 (fit the contents) for column -1, else the setting `gridFontWidth`
/// (default 600), which is stored again with the size in use.
std::int32_t setGridColWid(App& app, int column);

}  // namespace welvane
