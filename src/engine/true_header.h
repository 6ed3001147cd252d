#pragma once

#include <string>

#include "engine/pass_context.h"

namespace welvane {

/// What writeHeader does behind the curve table, by FigureRules::trueFigures: every section of the header's file comes
/// along with its comments, no text is cut, a section is known by its name, and the lines that every header needs are
/// there.
std::string writeTrueHeader(PassContext& context);

}  // namespace welvane
