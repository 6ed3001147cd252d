#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"

/// Connecting channels of several inputs into output channels: automatic alignment of columns, links by hand, and the
/// depth interval of each link.
namespace welvane {

/// Automatic matching: moves the columns of srd(1) to srd(3) so that channels of one mnemonic, or of one curve group,
/// stand in one column, closes the gaps and rebuilds srd(4). The channels that come to share a column are marked as
/// `spliced`.
void spliceGuess(App& app, Session& session);
/// The same with a wider search: every column of srd(0) is a place to match, and every column of the other tables a
/// candidate.
void spliceGuessNew(App& app, Session& session);

/// Columns of the four slots as lists of mnemonics by place (place 0 is not used), and where each column came from: the
/// working form of the alignment, open to tests.
struct ColumnOrder {
    std::array<std::vector<std::string>, slotCount> mnems;
    std::array<std::vector<int>, slotCount> origin;
};
ColumnOrder columnOrder(const Session& session);
/// The alignment and compaction as told, by plain scans over the lists: what the fast one is compared with.
void alignPlainly(const ReferenceTables& reference, const Session& session, bool wide, ColumnOrder& order);
/// The same result by upper-casing once and looking groups up by hash.
void alignFast(const ReferenceTables& reference, const Session& session, bool wide, ColumnOrder& order);

/// Pick list of a slot's channels: "<none>|GR|RHOB", so that index n is the n-th channel; "" for no such slot. `units`,
/// when given, takes the units joined by "|".
std::string CurveString(const Session& session, int slot, std::string* units = nullptr);

/// A link by hand: row 8 + 4 * slot of `column` was set to entry `comboIndex` of CurveString. 0 empties the link, -1
/// changes nothing. False when the slot has no such channel or srd(4) no such column.
bool linkChannel(Session& session, int slot, int comboIndex, int column);

/// The depth snapped to the slot's sample grid and limited to its top and bottom.
double computeNearestDepth(const Session& session, double depth, int slot);
/// Enter in splice box `box` (2k From, 2k+1 To of slot k): snaps the number; a To box sets the next slot's From box one
/// step behind it.
void enterSpliceDepth(Session& session, int box, std::string_view text);
/// "Apply to all channels of file ...": both boxes of the slot go to every link of it.
void applySpliceDepths(Session& session, int slot);
/// "Apply depths from parameters to all files": numbers stand as they are, other texts are mnemonics of ~Parameter of
/// the first loaded file.
void applyParameterDepths(Session& session, std::string_view from, std::string_view to);

/// Index from 1 of a slot's channel by its mnemonic; 0 when there is none.
int findSlotChannel(const Session& session, int slot, std::string_view mnem);
/// Depth shift of one input channel in its file's unit, positive moves down; the channel is marked so that the pass
/// acts on it. False when there is no such channel.
bool setChannelShift(Session& session, int slot, int channel, double offset);
/// Clip limits of one input channel, 0 for not set; marked in the same way.
bool setChannelClip(Session& session, int slot, int channel, double top, double bottom);

/// Keeps the output channels of these names in this order and takes the others out of use. Returns the names that no
/// channel has.
std::vector<std::string> selectChannels(Session& session, const std::vector<std::string>& names);
/// Columns 1 and up of srd(4) by ascending data of row 6, equal ones in their order.
void sortByUse(Session& session);

}  // namespace welvane
