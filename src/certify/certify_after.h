#pragma once

#include <string>
#include <string_view>

#include "session/session.h"

namespace welvane {

/// The check of a written file after processing. Only for a name that ends in ".las"; otherwise "" and false.
struct CertifyAfterResult {
    bool ran = false;
    std::string log;     ///< the log's text
    std::string faults;  ///< the lines with "Failed:" or "Error:", each with a line end
};
/// Deletes a log of an earlier run, runs the checker with the region's option alone, keeps its log, and shows a box
/// with the lines that tell a fault. The file itself is left as written.
CertifyAfterResult certifyAfter(App& app, std::string_view path, double timeoutSeconds = 0);

}  // namespace welvane
