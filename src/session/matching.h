#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"
#include "shared/figure_rules.h"

/// Connecting channels of several inputs into output channels: automatic alignment of columns, links by hand, and the
/// depth interval of each link.
namespace welvane {

/// Automatic matching: moves the columns of srd(1) to srd(3) so that channels of one mnemonic, or of one curve group,
/// stand in one column, closes the gaps and rebuilds srd(4). The channels that come to share a column are marked as
/// `spliced`.
void spliceGuess(App& app, Session& session);
/// The same with a wider search: every column of srd(0) is a place to match, and every column of the other tables a
/// candidate. Nothing calls it at present; it is kept as the other choice for a splice.
void spliceGuessNew(App& app, Session& session);

/// Pick list of a slot's channels: "<none>|GR|RHOB", so that index n is the n-th channel; "" for no such slot. `units`,
/// when given, takes the units joined by "|".
std::string CurveString(const Session& session, int slot, std::string* units = nullptr);

/// A link by hand: row 8 + 4 * slot of `column` was set to entry `comboIndex` of CurveString. 0 empties the link, -1
/// changes nothing. False when the slot has no such channel or srd(4) no such column. As laid down the header comes
/// from the column where the channel stood when it was loaded, and every column that is fed comes into use; by true
/// figures it is the channel's own, but for a column with a function, and only the columns that are touched change
/// their use.
bool linkChannel(Session& session, int slot, int comboIndex, int column, FigureRules rules);

/// The depth snapped to the slot's sample grid and limited to its top and bottom.
double computeNearestDepth(const Session& session, double depth, int slot);
/// The splice boxes are the fields fsL of the coverage tab; the next three are its keys and buttons.
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
