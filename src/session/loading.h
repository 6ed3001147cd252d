#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "las/las_file.h"
#include "session/load_result.h"
#include "session/session.h"

/// LAS files into slots, and the tables derived anew from all four slots.
namespace welvane {

/// How its depths and its channels are read is told by `session.rules`. By
/// FigureRules::trueFigures all of it is read here, a channel is a column of the data, and first depth, last depth and
/// step are those of the data; the unit and the null of the output are the first input's, its step the finest.
/// Puts the file that `session.slots[slot].path` names into its slot and rebuilds the tables for all four slots.
/// Outside command mode a slot without a path takes the file that is current in the browser. With `session.loose`, data
/// of no regular shape counts as one line per step.
SlotLoadResult Open4Files(App& app, Session& session, int slot);
/// For the menu entry "Delete File": the slot is emptied and the tables are rebuilt from the others.
void closeSlot(App& app, Session& session, int slot);

/// The file of this path: the one that a slot holds, else opened anew; FileFailure where that cannot be done.
LasFilePointer fileNamed(const Session& session, const std::string& path);

/// Facts of the file, then its channels. False, with `why` and the line numbers in `result`, when a step fails; what
/// was found stays.
bool readHeader(const App& app, const Session& session, const LasFile& file, InputSlot& slot, SlotChannels& channels,
                SlotLoadResult& result);
/// prd and the splice boxes take the slot's values.
void showSlot(App& app, Session& session, int slot);
/// srd(slot): `total` columns behind the labels, the slot's channels from column `offset` + 1 on.
void fillSlotTable(Session& session, int slot, int total, int offset);
/// parg(slot) from the lines of a ~Parameter section; lines without a mnemonic are left out.
void fillParaGrid(Session& session, const std::vector<HeaderField>& lines, int slot);
/// wrd from the lines of a ~Well section, with one spare row at its end; the three lines that only a filter reads are
/// hidden.
void fillWellGrid(Session& session, const std::vector<HeaderField>& lines);
/// Both lists of splice depth parameters take the mnemonics of these lines.
void fillParaList(Session& session, const std::vector<HeaderField>& lines);

struct DepthRange {
    double shallowest = 1E12, deepest = -1E12;
};
/// Over all loaded slots, in their files' units.
DepthRange depthRange(const Session& session);
/// ord with the sections of a file in their order; its default columns where the file has none, or there is no file.
/// Column 6 stays the data section's.
void sectionOrder(Session& session, const LasFile* file);

}  // namespace welvane
