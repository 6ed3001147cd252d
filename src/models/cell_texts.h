#pragma once

#include <string_view>

#include "session/session.h"

/// What a text typed into a cell may be: a file made of it reads back as it was meant. Each is a RunTimeFailure with
/// why for a text that is none.
namespace welvane {

/// A field of a header line: one line.
void needOneLine(std::string_view text);
/// The name in front of a header line's dot; blank for no line.
void needMnem(std::string_view text);
/// The unit stuck to that dot.
void needUnit(std::string_view text);
/// A number, or blank.
void needNumberOrBlank(std::string_view text);
/// A depth, or a limit such as ">=1000"; blank for none.
void needDepthLimit(std::string_view text);
/// The name of the section in a column of ord; blank for none, but the data have one.
void needSectionName(const Session& session, int column, std::string_view text);
/// A setting of prd, by true figures: one of the words that its list offers, a number where it is one.
void needProperty(const Session& session, PrdRow row, PrdColumn column, std::string_view text);

}  // namespace welvane
