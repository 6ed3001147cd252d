#include "app/startup.h"

#include <array>

#include "shared/failure.h"
#include "shared/field_splitter.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr float smallestFontSize = 6.0F;
constexpr std::int32_t smallestColumnWidth = 200;
constexpr std::int32_t fitsContents = -1;

/// Smallest legal density or slowness at an index of the matrix table; below it the stock value holds.
struct MatrixBound {
    std::size_t index;
    float smallest;
};
/// In the order of the stored fields: fluid, sand, lime, dolomite density, then the three slownesses.
constexpr std::array<MatrixBound, 7> matrixFields = {
    {{0, 0.9F}, {1, 2.5F}, {2, 2.5F}, {3, 2.5F}, {10, 55.0F}, {11, 47.0F}, {12, 43.0F}}};

const Prompt parametersMissing = {
    "PARA.INI File Missing!",
    "The pararameter file (para.ini or para_ZQ.ini) is missing from the program directory. Replace it from the install "
    "diskettes. Without it, you will not be able to fill standard Parameters.",
    Buttons::Ok, Icon::Warning, Answer::Ok};

std::vector<std::string> fieldsOf(std::string_view text, std::size_t count) {
    std::vector<std::string> fields = split(text, '|');
    fields.resize(count);
    return fields;
}

bool flagOf(const std::string& text) {
    return val(text) != 0;
}

void readToggles(App& app) {
    const SettingsStore& store = app.platform.settings();
    app.settings.certifyAfter = flagOf(store.get("certafter", "1"));
    app.settings.editAfter = flagOf(store.get("editafter", "1"));
    app.settings.multipleSelection = flagOf(store.get("multButState", "1"));
}

/// The steps in their order: where one fails, those behind it keep their defaults.
void readSettings(App& app) {
    SettingsStore& store = app.platform.settings();
    StartupSettings& settings = app.settings;
    const std::string folder = app.platform.programFolder();
    settings.unitsPath = locateReferenceFile(folder, "units");
    settings.paraPath = locateReferenceFile(folder, "para");
    settings.curvesPath = locateReferenceFile(folder, "curves");
    if (app.run.lasFile.empty()) app.run.lasFile = store.get("lasfile", "");
    if (!fileExists(app.run.lasFile)) app.run.lasFile.clear();
    settings.inDir = store.get("inDir", folder);
    settings.outDir = store.get("outDir", folder);
    settings.gridFont = parseGridSize(store.get("gridSize", stockGridSize));
    readToggles(app);
    settings.country = store.get("country", "Other");
    setCountryUnits(settings);
    settings.logProgram = store.get("log_prog", "");
    settings.certProgram = store.get("cert_prog", "C:\\Program Files\\Ostrandmeyer\\Toolbox\\Corvant.exe");
    settings.format = parseFormatDefaults(store.get("formatdef", stockFormatText));
    settings.matrix = parseMatrixTable(store.get("mdenDef", stockMatrixText));
    settings.porosityUnits = store.get("poro_units", "PU");
    if (settings.porosityUnits.empty()) settings.porosityUnits = "V/V";
    settings.fillCurveValue = flagOf(store.get("fillCVal", "0"));
    settings.fillCurveDescription = flagOf(store.get("fillCDESC", "0"));
    settings.keepBadLines = flagOf(store.get("headComF", "0"));
    // Kept: the key that is read has no writer, so every start empties the list of the listing run.
    // Test: everyStartEmptiesTheListingList
    const std::string lists = store.get("listDefs", "");
    if (store.get("listdef", "") != lists) store.put("listdef", lists);
}

}  // namespace

int failureNumber(std::string_view text) {
    if (sameText(text, "overflow")) return 6;
    if (sameText(text, "subscript out of range")) return 9;
    return 13;
}

GridFontSetting parseGridSize(std::string_view text) {
    const std::vector<std::string> fields = fieldsOf(text, 4);
    GridFontSetting font;
    font.name = fields[0].empty() ? "Arial" : fields[0];
    font.size = toSingle(val(fields[1]));
    if (font.size < smallestFontSize) font.size = smallestFontSize;
    font.bold = flagOf(fields[2]);
    font.columnWidth = roundToEven(val(fields[3]));
    if (font.columnWidth < smallestColumnWidth && font.columnWidth != fitsContents)
        font.columnWidth = smallestColumnWidth;
    return font;
}

FormatDefaults parseFormatDefaults(std::string_view text) {
    const std::vector<std::string> fields = fieldsOf(text, 6);
    const auto number = [&](std::size_t field, std::int16_t ifZero) {
        const std::int16_t value = toInt16(val(fields[field]));
        return value == 0 ? ifZero : value;
    };
    FormatDefaults format;
    format.dotColumn = number(0, 6);
    format.valueColumn = number(1, 15);
    // Kept: a colon column of 0 becomes 50 and a further indent of 0 becomes 10, though a missing setting gives 60
    // and 50. Test: StoredFormat
    format.colonColumn = number(2, 50);
    format.wellExtraColon = number(3, 10);
    format.dataWidth = number(4, 13);
    format.dataDecimals = number(5, 5);
    if (format.dataWidth <= format.dataDecimals) {
        format.dataWidth = 13;
        format.dataDecimals = 5;
    }
    return format;
}

MatrixTable parseMatrixTable(std::string_view text) {
    const std::vector<std::string> fields = fieldsOf(text, matrixFields.size());
    MatrixTable matrix = stockMatrixTable;
    for (std::size_t field = 0; field < matrixFields.size(); ++field) {
        const float value = toSingle(val(fields[field]));
        if (value >= matrixFields[field].smallest) matrix[matrixFields[field].index] = value;
    }
    return matrix;
}

std::string gridSizeText(const GridFontSetting& font) {
    return join({font.name, plainNumber(font.size), font.bold ? "1" : "0", std::to_string(font.columnWidth)}, "|");
}

std::string formatDefaultsText(const FormatDefaults& format) {
    std::vector<std::string> fields;
    for (const std::int16_t value : {format.dotColumn, format.valueColumn, format.colonColumn, format.wellExtraColon,
                                     format.dataWidth, format.dataDecimals}) {
        fields.push_back(std::to_string(value));
    }
    return join(fields, "|");
}

std::string matrixTableText(const MatrixTable& matrix) {
    std::vector<std::string> fields;
    // By way of its shortest text: 2.65 as a single is a little more than 2.65 as a double.
    for (const MatrixBound& field : matrixFields)
        fields.push_back(formatMask(val(plainNumber(matrix[field.index])), 3));
    return join(fields, "|");
}

void setCountryUnits(StartupSettings& settings) {
    if (sameText(settings.country, "Canada")) {
        settings.units = {1, "K/M3", 1 / 0.3048, "us/m", "M", 0.3048};
    } else {
        settings.units = {0.001, "G/C3", 1, "us/f", "F", 1};
    }
}

std::string locateReferenceFile(std::string_view programFolder, std::string_view name) {
    const std::string stem = withBackslash(programFolder).append(name);
    for (const char* ending : {"_ZQ.ini", ".ini"}) {
        if (fileExists(stem + ending)) return stem + ending;
    }
    return {};
}

void startup(App& app) {
    app.settings.porosityUnits = "V/V";
    try {
        readSettings(app);
    } catch (const FileFailure&) {
        throw;
    } catch (const std::exception& error) {
        const std::string text = error.what();
        app.user.ask({"", "Error in startup was " + text + "err =" + std::to_string(failureNumber(text)), Buttons::Ok,
                      Icon::None, Answer::Ok});
    }
}

bool loadProcess(App& app) {
    startup(app);
    try {
        if (app.reference.curves.empty()) readCurves(app.reference, app.settings.curvesPath);
        if (app.reference.units.empty()) readUnits(app.reference, app.settings.unitsPath);
        if (!readParameters(app.reference, app.settings.paraPath) && app.settings.paraPath.empty()) {
            app.user.ask(parametersMissing);
        }
    } catch (const FileFailure&) {
        throw;
    } catch (const std::exception& error) {
        if (app.run.commandMode) return true;
        const std::string text = error.what();
        app.user.ask(
            {"Error Initializing Welvane.",
             "Last resort error trap. The error was " + text + " , number " + std::to_string(failureNumber(text)),
             Buttons::Ok, Icon::Stop, Answer::Ok});
        return false;
    }
    return true;
}

}  // namespace welvane
