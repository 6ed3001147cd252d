#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "las/data_refusal.h"
#include "shared/notes.h"

/// What came of putting a file into a slot.
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
    std::string why{};  ///< empty for Loaded
    /// For data of no regular shape: 1-based numbers of the first data line and of the first that differs in its words;
    /// else 0.
    std::size_t firstLineNumber = 0, differingLineNumber = 0;
    /// Units of the channels that the unit table does not know; a note only.
    std::vector<std::string> unknownUnits{};
    /// By FigureRules::trueFigures: what was seen, under the file's path, and what would help where it was refused.
    std::vector<Note> notes{};
    DataRefusal::Help help = DataRefusal::Help::None;
    bool done() const { return status == LoadStatus::Loaded || status == LoadStatus::WithoutChannels; }
};

}  // namespace welvane
