#include "models/channels_tab.h"

#include <algorithm>

#include "functions/functions.h"
#include "jobs/after_process.h"
#include "models/command_effects.h"
#include "session/filters.h"
#include "session/loading.h"
#include "session/matching.h"
#include "session/session_setup.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// An input channel: a slot, and its place in that slot's array.
struct LinkedChannel {
    int slot = -1, channel = 0;
};

std::optional<LinkedChannel> linkedChannel(const Session& session, TableIndex row, TableIndex column) {
    const int slot = slotOfChannelRow(row);
    const Table& table = session.tables.outputs();
    if (slot < 0 || column <= 0 || column >= table.columns()) return std::nullopt;
    const double number = val(table.text(linkRow(slot, Link::Curve), column));
    if (number < 1 || number > session.channelCount(slot)) return std::nullopt;
    return LinkedChannel{slot, static_cast<int>(number)};
}

std::optional<double> readLimit(const std::string& text) {
    if (trim(text).empty()) return std::nullopt;
    return strictDouble(text);
}

/// Where a column stands after another one was moved.
int placeAfterMove(int column, int from, int to) {
    if (column == from) return to;
    if (from < column && column <= to) return column - 1;
    if (to <= column && column < from) return column + 1;
    return column;
}

/// Functions that read a channel by its place read it at its new one.
void followMove(Table& table, int from, int to) {
    for (int column = 1; column < table.columns(); ++column) {
        std::string& text = table.data(SrdRow::Function, column);
        if (text.empty() || readsOwnColumn(table, column)) continue;
        FunctionDescriptor descriptor = FunctionDescriptor::parse(text);
        if (!isNumeric(descriptor.sourcePosition)) continue;
        const double position = val(descriptor.sourcePosition);
        if (position < 1 || position >= table.columns()) continue;
        descriptor.sourcePosition = std::to_string(placeAfterMove(static_cast<int>(position), from, to));
        text = descriptor.text();
    }
}

int freeSlots(const Session& session) {
    int count = 0;
    for (int slot = 0; slot < slotCount; ++slot) count += session.loaded(slot) ? 0 : 1;
    return count;
}

bool openInSlot(Frame& frame, const std::string& path, int slot) {
    const int before = frame.currentSlot;
    frame.currentSlot = slot;
    const bool opened = openInSession(frame, path);
    frame.currentSlot = before;
    return opened;
}

void emptySlot(Frame& frame, int slot) {
    const std::string path = frame.session.slots[slot].path;
    closeSlot(frame.app, frame.session, slot);
    fileClosed(frame, path);
    frame.currentChannel = std::min(frame.currentChannel, frame.session.tables.outputs().columns() - 1);
}

}  // namespace

std::array<ChannelBand, slotCount> channelBands(const Session& session) {
    std::array<ChannelBand, slotCount> bands;
    for (int slot = 0; slot < slotCount; ++slot) {
        const std::string& path = session.slots[slot].path;
        bands[slot] = {session.loaded(slot), fileLabel(slot, path), path, colours::slots[slot],
                       session.columnBase(slot) + 1};
    }
    return bands;
}

void makeCurrent(Frame& frame, TableIndex row, TableIndex column) {
    frame.currentChannel = column;
    frame.currentSlot = slotOfChannelRow(row);
}

std::vector<MenuEntry> openChannelMenu(Frame& frame, TableIndex row, TableIndex column) {
    makeCurrent(frame, row, column);
    return channelMenu(frame.session, row, column);
}

void runChannelCommand(Frame& frame, ChannelCommand command) {
    const int slot = frame.currentSlot;
    const bool onFile = slot >= 0 && slot < slotCount && frame.session.loaded(slot);
    switch (command) {
        case ChannelCommand::UseAll:
        case ChannelCommand::UseNone:
            return useAllChannels(frame.session, command == ChannelCommand::UseAll);
        case ChannelCommand::FillValue:
            return fillEmptyFromLibrary(frame.app, frame.session, SrdRow::Value);
        case ChannelCommand::FillDescription:
            return fillEmptyFromLibrary(frame.app, frame.session, SrdRow::Description);
        case ChannelCommand::Add:
            return addChannel(frame);
        case ChannelCommand::Delete:
            return deleteChannel(frame);
        case ChannelCommand::DeleteFile:
            if (onFile) emptySlot(frame, slot);
            return;
        case ChannelCommand::ViewLog:
            if (onFile) viewAsLog(frame.app, frame.session.slots[slot].path);
            return;
        case ChannelCommand::Adjust:
            return;
    }
}

bool moveNewChannel(Session& session, int from, int to) {
    Table& table = session.tables.outputs();
    const auto isPlace = [&](int column) { return column > 0 && column < table.columns(); };
    if (!isPlace(from) || !isPlace(to) || from == to) return false;
    table.moveColumn(from, to);
    followMove(table, from, to);
    return true;
}

bool browseSlotFile(Frame& frame, int slot) {
    if (slot < 0 || slot >= slotCount) return false;
    const std::string chosen =
        frame.app.user.askFile({"Open LAS File", "las", dirOf(frame.app.run.lasFile), "", false});
    return !chosen.empty() && openInSlot(frame, chosen, slot);
}

std::size_t dropFiles(Frame& frame, std::vector<std::string> paths, TableIndex row) {
    if (paths.size() == 1) return openInSlot(frame, paths.front(), slotOfChannelRow(row)) ? 1 : 0;
    const int room = freeSlots(frame.session);
    if (paths.size() > static_cast<std::size_t>(room)) {
        showWarning(frame.app.user, "Too Many Files",
                    counted(static_cast<std::int64_t>(paths.size()), "file") + " were dropped, and there is room for " +
                        std::to_string(room) + ". None was opened.");
        return 0;
    }
    std::sort(paths.begin(), paths.end(), [](const std::string& one, const std::string& other) {
        return lessText(fileNameOf(one), fileNameOf(other));
    });
    std::size_t opened = 0;
    for (const std::string& path : paths) opened += openInSlot(frame, path, -1) ? 1 : 0;
    return opened;
}

std::optional<ChannelAdjustment> channelAdjustment(const Session& session, TableIndex row, TableIndex column) {
    const auto linked = linkedChannel(session, row, column);
    if (!linked) return std::nullopt;
    const SlotChannel& channel = session.channels[linked->slot][linked->channel];
    const auto limit = [](float depth) { return depth == 0 ? std::nullopt : std::optional<double>(depth); };
    return ChannelAdjustment{channel.field.mnem, channel.channelOffset, limit(channel.channelTop),
                             limit(channel.channelBottom)};
}

EditOutcome adjustChannel(Session& session, TableIndex row, TableIndex column, const std::string& shift,
                          const std::string& top, const std::string& bottom) {
    const auto linked = linkedChannel(session, row, column);
    if (!linked) return {false, "no channel is linked here"};
    try {
        const double offset = readLimit(shift).value_or(0);
        const std::optional<double> from = readLimit(top), to = readLimit(bottom);
        if (from && to && *from >= *to) return {false, "the top, " + top + ", is not above the bottom, " + bottom};
        toSingle(offset);
        toSingle(from.value_or(0));
        toSingle(to.value_or(0));
        setChannelShift(session, linked->slot, linked->channel, offset);
        setChannelClip(session, linked->slot, linked->channel, from.value_or(0), to.value_or(0));
    } catch (const RunTimeFailure& failure) {
        return {false, failure.what()};
    }
    return {};
}

}  // namespace welvane
