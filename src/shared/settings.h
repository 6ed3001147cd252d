#pragma once

#include <array>
#include <cstdint>
#include <string>

/// The settings as the program holds them at run time. Reading and correcting them at start is the work of app/.
namespace welvane {

inline constexpr double lasNull = -999.25;
/// Metres in a foot, held in single precision wherever depths pass between the two.
inline constexpr float metresPerFoot = 0.3048F;

/// Columns of header lines (1-based) and the format of data values.
struct FormatDefaults {
    std::int16_t dotColumn = 6;
    std::int16_t valueColumn = 15;
    std::int16_t colonColumn = 60;
    std::int16_t wellExtraColon = 50;
    std::int16_t dataWidth = 13;
    std::int16_t dataDecimals = 5;
    bool operator==(const FormatDefaults&) const = default;
};

/// Densities in G/C3 and slownesses in us/f. Index 0 fluid density; 1, 2, 3 sand, lime, dolomite density; 4 to 6 and 7
/// to 9 the same three again (matrix in, matrix out); 10, 11, 12 sand, lime, dolomite slowness.
using MatrixTable = std::array<float, 13>;
inline constexpr MatrixTable stockMatrixTable = {1.0F,  2.65F, 2.71F, 2.87F, 2.65F, 2.71F, 2.87F,
                                                 2.65F, 2.71F, 2.87F, 55.5F, 47.6F, 43.5F};

/// Unit bases of a region. Factors take the base unit (G/C3... see below) to the shown one.
struct CountryUnits {
    double densityFactor = 1;
    std::string densityUnit = "kg/m3";
    double sonicFactor = 1;
    std::string sonicUnit = "us/f";
    std::string depthUnit = "F";
    double depthFactor = 1;
};

/// Font of the grids and their column width (-1: fit the contents).
struct GridFontSetting {
    std::string name = "Arial";
    float size = 10.0F;
    bool bold = false;
    std::int32_t columnWidth = 800;
};

/// All that start-up takes from the settings store, corrected as told there.
struct StartupSettings {
    std::string inDir, outDir;
    GridFontSetting gridFont;
    bool certifyAfter = true;       ///< ID_certAfter
    bool editAfter = true;          ///< ID_EditAfter
    bool viewAfter = false;         ///< ID_ViewAfter, kept for the process only
    bool multipleSelection = true;  ///< ID_Multiple of the browser
    std::string country = "Other";
    CountryUnits units;
    std::string logProgram;
    std::string certProgram;
    FormatDefaults format;
    MatrixTable matrix = stockMatrixTable;
    std::string porosityUnits = "PU";
    bool fillCurveValue = false;        ///< fillCVal
    bool fillCurveDescription = false;  ///< fillCDESC
    bool keepBadLines = false;          ///< headComF
    std::string unitsPath, paraPath, curvesPath;
};

}  // namespace welvane
