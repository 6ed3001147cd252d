#pragma once

#include <string>

#include "support/las_maker.h"
#include "support/temp_folder.h"

namespace welvane::test {

/// A small well of the given version: two channels besides the depth, six samples, a null in GR, a [TOPS] block. Lines
/// end in "\n": give it to writeLines.
inline std::string smallWell(const std::string& version = "2.0") {
    LasMaker maker;
    maker.version(version).depths("1670.0000", "1669.3750", "-0.1250");
    maker.well(" WELL.     BEECH 1 : ASH 2");
    maker.curve("GR", "GAPI", "30 310 01 00", "Gamma Ray").curve("DT", "US/M");
    maker.parameter(" BHT .DEGC     35.5   : Bottom Hole Temperature");
    maker.section("[TOPS]\n5478.0|Upper\n5478.6|Lower|spare");
    maker.row(1670, "  10.000  400.000").row(1669.875, "  20.000  410.000").row(1669.75, " -999.250  420.000");
    maker.row(1669.625, "  40.000  430.000").row(1669.5, "  50.000  440.000").row(1669.375, "  60.000  450.000");
    return maker.text();
}

}  // namespace welvane::test
