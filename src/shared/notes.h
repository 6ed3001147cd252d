#pragma once

#include <cstddef>
#include <string>

/// What a person should know of what became of the figures: values that every report lists, verbs print and windows
/// show.
namespace welvane {

enum class NoteKind {
    LineEnds,    ///< the lines of an input end in a mixture, or it was read through a copy with other line ends
    Unit,        ///< a unit is unknown, or is another than was thought
    Skipped,     ///< something that was asked for could not be followed
    TooWide,     ///< values that do not fit into their column
    Survey,      ///< stations of a survey left out or put right
    Dropped,     ///< lines that are not in the output
    Repair,      ///< what a repair does to a file
    NoNumber,    ///< cells that are no numbers
    Nulls,       ///< an input's null: none, or other values that look like one
    Columns,     ///< columns and lines of ~Curve that do not fit each other
    Records,     ///< records of another length, cut short or without an index
    StepVaries,  ///< depths without one step
    DepthLines,  ///< STRT, STOP or STEP say other than the data, which are followed
    Setting,     ///< a setting that is kept other than it was given
    File         ///< anything else about a file
};

/// One thing to know. `file` and `channel` are empty, `line` (from 1) and `count` 0 where there are none.
struct Note {
    NoteKind kind = NoteKind::File;
    std::string file{}, channel{};
    std::size_t line = 0, count = 0;
    std::string text{};  ///< in words, without the file's name
};

/// The note without its file: "GR: line 12: what (3)". A text that begins with the count has told it.
inline std::string textOf(const Note& note) {
    std::string text = note.channel.empty() ? std::string() : note.channel + ": ";
    if (note.line != 0) text += "line " + std::to_string(note.line) + ": ";
    text += note.text;
    const std::string count = std::to_string(note.count);
    if (note.count != 0 && !note.text.starts_with(count + " ")) text += " (" + count + ")";
    return text;
}

}  // namespace welvane
