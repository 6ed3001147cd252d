#pragma once

namespace welvane {

/// As convertNeutronCP1e, but a negative number under a root gives no number (NaN) in place of a failure: for loops
/// over samples.
double chartCP1e(float porosity, int code);

}  // namespace welvane
