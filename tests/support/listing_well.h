#pragma once

#include <string>

namespace welvane::test {

/// A small well. GR has a gap, DT is null all over, RHOB has one sample.
inline std::string listingWell(const std::string& unit, const std::string& top = "") {
    return "~Version\n VERS.   2.0 : CWLS\n WRAP.   NO  : One line\n"
           "~Well\n STRT." +
           unit + "  100.0 : Start\n STOP." + unit + "  104.0 : Stop\n STEP." + unit +
           "  1.0 : Step\n NULL.  -999.25 : Null\n COMP.  Some Company : COMPANY\n WELL.  Well 1 : WELL NAME\n" + top +
           "~Curve\n DEPT." + unit +
           " : Depth\n GR.GAPI : Gamma\n DT.US/F : Sonic\n RHOB.G/C3 : Density\n"
           "~Parameter\n RUN.               1          : Run number of this file\n"
           "~A\n 100.0    10.0 -999.25 -999.25\n 101.0    20.0 -999.25 -999.25\n 102.0 -999.25 -999.25   2.5\n"
           " 103.0    30.0 -999.25 -999.25\n 104.0    60.0 -999.25 -999.25\n";
}

}  // namespace welvane::test
