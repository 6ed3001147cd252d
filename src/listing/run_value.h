#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"
#include "shared/table.h"

/// vrd, the files of a listing session, and the edit of their RUN value.
namespace welvane {

/// Columns of vrd.
enum class VrdColumn { File = 0, Run };

/// vrd for these files: the path and the VALUE of RUN in the file's ~Parameter section, "" where it has none.
Table makeVrd(const std::vector<std::string>& files);

enum class RunEdit { Done, Declined, NoRunLine, Failed };
/// Gives the file of a row of vrd (from 1) a new RUN value: asks "Update LAS file with this run value?" and rewrites
/// the RUN line of ~Parameter. The cell keeps the new text only when that succeeded. Boxes tell a failure.
RunEdit editRun(App& app, Table& vrd, int row, std::string_view newValue);
/// The same for a file alone.
RunEdit editRun(App& app, std::string_view path, std::string_view newValue);

}  // namespace welvane
