#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "models/frame.h"
#include "models/new_channels.h"

/// The tab "Channels": the channels of up to four files over those of the new one, and what its menu does.
namespace welvane {

/// What stands of one file over the new channels.
struct ChannelBand {
    bool visible = false;      ///< while its file is loaded
    std::string label;         ///< "File 2 :" and its name
    std::string path;          ///< for a tip
    std::uint32_t colour = 0;  ///< of its rows
    int firstColumn = 0;       ///< the first that its channels stand in, to be scrolled to after a load
};
std::array<ChannelBand, slotCount> channelBands(const Session& session);

/// A cell of srd(4) becomes the current one: commands act on its channel, a file that is opened goes to its slot.
void makeCurrent(Frame& frame, TableIndex row, TableIndex column);
/// A right press: the cell becomes the current one, and offers this.
std::vector<MenuEntry> openChannelMenu(Frame& frame, TableIndex row, TableIndex column);
/// Carries out an entry on the current cell. ChannelCommand::Adjust does nothing here: its dialog shows
/// channelAdjustment.
void runChannelCommand(Frame& frame, ChannelCommand command);

/// Moves a new channel to another place; those in between shift by one, and functions go on reading the channels that
/// they read. False, with nothing changed, for a place that is none.
bool moveNewChannel(Session& session, int from, int to);

/// The "..." of a file row: asks for a file and opens it in the row's slot. Boxes tell why it was not; false then, and
/// when cancelled.
bool browseSlotFile(Frame& frame, int slot);
/// Files dropped on the tab. One goes to the slot of the row it fell on, else to the next free one; several, by name,
/// to the free ones. More than there are free slots are opened by none. Returns how many were loaded; boxes tell why
/// one was not.
std::size_t dropFiles(Frame& frame, std::vector<std::string> paths, TableIndex row);

/// How an input channel is moved and cut, in its file's depth unit.
struct ChannelAdjustment {
    std::string channel;                ///< its mnemonic
    double shift = 0;                   ///< positive moves down
    std::optional<double> top, bottom;  ///< not set: not cut there
};
/// Of the channel that is linked in this row and column of srd(4); nothing where none is.
std::optional<ChannelAdjustment> channelAdjustment(const Session& session, TableIndex row, TableIndex column);
/// Sets it from the texts of a dialog; a blank text is no shift, or no cut. Refused, with nothing changed, for a text
/// that is no number, a top below the bottom, or a cell without a link.
EditOutcome adjustChannel(Session& session, TableIndex row, TableIndex column, const std::string& shift,
                          const std::string& top, const std::string& bottom);

}  // namespace welvane
