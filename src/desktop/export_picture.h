#pragma once

#include <QString>

#include "models/table_model.h"
#include "picture/drawing.h"
#include "picture/theme.h"
#include "shared/prompts.h"

namespace welvane {

/// Asks for a name and writes the drawing there, as SVG or, by its name, as PNG.
EditOutcome exportPicture(UserInterface& user, const Drawing& drawing, const char* name, Theme theme);

}  // namespace welvane
