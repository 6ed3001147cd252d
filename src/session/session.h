#pragma once

#include <array>
#include <string>
#include <vector>

#include "las/input_slot.h"
#include "platform/platform.h"
#include "reference/reference_tables.h"
#include "session/session_tables.h"
#include "shared/figure_rules.h"
#include "shared/prompts.h"
#include "shared/run_state.h"
#include "shared/settings.h"

/// The two long-lived states of the program, handed down by reference: the process (App) and one manipulation session
/// (Session).
namespace welvane {

/// The process. Two of them can live side by side without knowing each other.
struct App {
    App(UserInterface& userInterface, Platform& system) : user(userInterface), platform(system) {}
    StartupSettings settings;
    ReferenceTables reference;
    RunState run;
    UserInterface& user;
    Platform& platform;
};

/// The survey table behind trd, in feet, single precision. Row 0 is the tie point.
struct SurveyRow {
    float md = 0, tvd = 0, deviation = 0, azimuth = 0;
};
struct InclinometryTable {
    static constexpr std::size_t capacity = 5000;
    std::vector<SurveyRow> rows;
};

struct Session {
    std::array<InputSlot, slotCount> slots;
    std::array<SlotChannels, slotCount> channels;  ///< element 0 of each is the index line
    std::array<bool, slotCount> opened{};
    SessionTables tables;
    InclinometryTable inclinometry;
    std::string filterFile;            ///< path of the filter last named
    bool filterApplied = false;        ///< the tables stand as it made them, with what was edited since
    std::string tvdFile;               ///< path of the survey last named
    FormatDefaults userFormat;         ///< the six format values as the user has them, behind the choice "User"
    bool available = false;            ///< a run can be started (allowStuff)
    bool multipleConnections = false;  ///< one input channel may feed several output channels
    /// How files are opened into the slots; what a pass over them follows too.
    FigureRules rules = FigureRules::asLaidDown;
    bool loose = false;          ///< data of no regular shape is read line by line instead of being refused
    bool decimalComma = false;   ///< "123,42" is a number (FigureRules::trueFigures)
    bool decimalsAsked = false;  ///< a person or a filter said with how many decimals samples are written
    bool sectionsNamed = false;  ///< a person named the sections to write: one that ord has no column for is none
    std::string indexUnit;       ///< unit of every input's index, "" for what its header says (the same rules)

    /// A slot counts as loaded once its file was opened, be it with channels or without.
    bool loaded(int slot) const { return opened[slot] && !slots[slot].path.empty(); }
    /// The first slot that is loaded; -1 while none is.
    int firstSlot() const {
        for (int slot = 0; slot < slotCount; ++slot)
            if (loaded(slot)) return slot;
        return -1;
    }
    /// Channels of a slot without its index line.
    int channelCount(int slot) const {
        const auto size = channels[slot].size();
        return size == 0 ? 0 : static_cast<int>(size) - 1;
    }
    /// Sum of the channel counts of the slots before it: channel i of the slot stands in column columnBase(slot) + i of
    /// the srd tables.
    int columnBase(int slot) const {
        int base = 0;
        for (int before = 0; before < slot; ++before) base += channelCount(before);
        return base;
    }
};

}  // namespace welvane
