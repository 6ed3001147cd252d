#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "las/las_file.h"
#include "session/session.h"

/// LAS files into slots, and the tables derived anew from all four slots.
namespace welvane {

enum class LoadStatus {
    Loaded,
    NoFile,           ///< the path names no file: the slot is free now
    Declined,         ///< its line ends are LF only and the user would not have them repaired
    WithoutChannels,  ///< opened, but its data could not be made out; the slot keeps its path and has no channels
    Unreadable,       ///< it is there, but could not be opened or read; the tables stand as they were before
    Failed            ///< the same, for any other reason
};

struct SlotLoadResult {
    LoadStatus status = LoadStatus::Loaded;
    std::string why;  ///< empty for Loaded
    /// For data of no regular shape: 1-based numbers of the first data line and of the first that differs in its words;
    /// else 0.
    std::size_t firstLineNumber = 0, differingLineNumber = 0;
    /// Units of the channels that the unit table does not know; a note only.
    std::vector<std::string> unknownUnits;
    bool done() const { return status == LoadStatus::Loaded || status == LoadStatus::WithoutChannels; }
};

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
