#pragma once

#include <string>
#include <string_view>

#include "jobs/refusal.h"
#include "las/las_file.h"

/// Whether a file can be worked on at all: the first reason against it, in words for a person.
namespace welvane {

/// "" for text that can be read (whatever ends its lines), else why not.
std::string whyUnreadable(std::string_view path);
/// The same for a file that could be opened.
std::string whyNoText(std::string_view bytes);
/// No reason for a LAS file that a session can load, else why not. With `loose`, data of no regular shape is accepted.
/// Of a file opened by FigureRules::trueFigures neither the STEP nor the shape of the data is asked for.
Reason whyNoLas(const LasFile& file, bool loose);
/// True when some line ends in LF alone.
bool hasLoneLineFeed(std::string_view bytes);

}  // namespace welvane
