#pragma once

#include "engine/driver.h"
#include "jobs/workbench.h"

namespace welvane {

/// What is to be told of a finished pass.
void noteLeftOut(Workbench& bench, const ItemReport& item);

}  // namespace welvane
