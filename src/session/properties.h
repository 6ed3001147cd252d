#pragma once

#include <span>
#include <string>
#include <string_view>

#include "session/choices.h"
#include "session/session_tables.h"

/// The properties of the new file, each told once: where it stands in prd, what it may be, and by which option a verb
/// sets it. Grid, pick lists, edits, filters, the pass, the help of the verbs and docs/properties.md read this table.
namespace welvane {

/// The pick list that stands for a browse button.
inline constexpr std::string_view browseList = "...";

/// A word of an option and the text that it stands for.
struct PropertyWord {
    std::string_view word, text;
};

/// One cell of prd that a user may set.
struct Property {
    PrdRow row;
    PrdColumn column = PrdColumn::Setting;
    std::string_view label{};               ///< of the row; "" for a cell beside a setting
    bool isCheck = false;                   ///< its value is the cell's check
    std::string_view initial{};             ///< text of a fresh table; "" too where it comes from settings or inputs
    std::string (*list)() = nullptr;        ///< items that are always offered, "|"-joined
    std::string_view option{};              ///< of the verb that makes a file: "--wrap"; "" for none
    std::string_view form{};                ///< what the option takes: "yes|no"; "" for a flag
    std::string_view help{};                ///< one sentence; the same in help and tool tip
    std::span<const PropertyWord> words{};  ///< what the option may be, where it is one of some words
};

/// All properties in the order of their rows, the cells beside a setting behind it.
std::span<const Property> properties();
/// The property of a cell; nullptr for a cell that has none.
const Property* findProperty(PrdRow row, PrdColumn column = PrdColumn::Setting);

}  // namespace welvane
