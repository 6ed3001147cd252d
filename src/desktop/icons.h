#pragma once

#include <QIcon>

namespace welvane {

/// The program's own sign: two logs joined to one, drawn here.
QIcon programIcon();

}  // namespace welvane
