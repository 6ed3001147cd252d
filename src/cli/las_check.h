#pragma once

#include <string>
#include <string_view>

/// Whether a file can be worked on at all: the first reason against it, in words for a person.
namespace welvane {

/// "" for text that can be read (whatever ends its lines), else why not.
std::string whyUnreadable(std::string_view path);
/// "" for a LAS file that a session can load, else why not. With `loose`, data of no regular shape is accepted.
std::string whyNoLas(std::string_view path, bool loose);
/// True when some line of the file ends in LF alone.
bool hasLoneLineFeed(std::string_view path);

}  // namespace welvane
