#pragma once

#include <string>

#include "support/temp_folder.h"

namespace welvane::test {

/// A small well of the given version: three channels besides the depth, six samples, a null in GR. Lines end in "\n":
/// give it to writeLines.
inline std::string smallWell(const std::string& version = "2.0") {
    return "~Version Information\n"
           " VERS.            " +
           version +
           ": CWLS LOG ASCII STANDARD\n"
           " WRAP.             NO: ONE LINE PER DEPTH STEP\n"
           "~Well Information\n"
           "#MNEM.UNIT     VALUE          : DESCRIPTION\n"
           " STRT.M        1670.0000      : START\n"
           " STOP.M        1669.3750      : STOP\n"
           " STEP.M          -0.1250      : STEP\n"
           " NULL.         -999.25        : NULL VALUE\n"
           " WELL.         BEECH 1        : ASH 2\n"
           "~Curve Information\n"
           " DEPT.M                       : DEPTH\n"
           " GR  .GAPI     30 310 01 00   : Gamma Ray\n"
           " DT  .US/M                    : Sonic\n"
           "~Parameter Information\n"
           " BHT .DEGC     35.5           : Bottom Hole Temperature\n"
           "[TOPS]\n"
           "5478.0|Upper\n"
           "5478.6|Lower|spare\n"
           "~A  DEPT      GR       DT\n"
           " 1670.000   10.000  400.000\n"
           " 1669.875   20.000  410.000\n"
           " 1669.750 -999.250  420.000\n"
           " 1669.625   40.000  430.000\n"
           " 1669.500   50.000  440.000\n"
           " 1669.375   60.000  450.000\n";
}

}  // namespace welvane::test
