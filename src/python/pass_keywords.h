#pragma once

#include <pybind11/pybind11.h>

#include "jobs/pass_request.h"

namespace welvane {

/// The request that the keywords of a pass make: texts, True and False, or lists of texts, under the names of the
/// options with "_" for "-". TypeError for a keyword that is none, or of another type; Refusal for a text that cannot
/// be read.
PassRequest passRequestOf(const pybind11::dict& keywords);

}  // namespace welvane
