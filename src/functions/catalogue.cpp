#include <algorithm>
#include <cmath>
#include <utility>

#include "functions/functions.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

std::array<FunctionEntry, functionCount> makeCatalogue() {
    using enum FunctionCode;
    const std::vector<FunctionArgument> density = {{"matrix density", "G/C3", "2.65"}, {"fluid density", "G/C3", "1"}};
    const std::vector<FunctionArgument> sonic = {{"matrix transit time", "US/F", "55.50"},
                                                 {"fluid transit time", "US/F", "189"}};
    const std::vector<FunctionArgument> matrices = {{"matrix in (SAND, LIME, DOLO)", "", "SAND"},
                                                    {"matrix out (SAND, LIME, DOLO)", "", "SAND"}};
    return {{
        {Res2Cond, "Create Conductivity from selected Resistivity", "CILD", "RES2COND", {}, "FUN=RES2COND,ILD"},
        {Cond2Res, "Create Resistivity from selected Conductivity", "ILD", "COND2RES", {}, "FUN=COND2RES,CILD"},
        {BulkDen2Poro, "Create Porosity from selected Bulk Density", "DPHI", "BULKDEN2PORO", density,
         "FUN=BULKDEN2PORO,RHOB,2.65,1.0"},
        {Poro2BulkDen, "Create Bulk Density from selected Porosity", "RHOB", "PORO2BULKDEN", density,
         "FUN=PORO2BULKDEN,DPHI,2.65,1.0"},
        {DenMatrix, "Change Density Porosity Matrix", "DPHI", "DENMATRIX", matrices, "FUN=DENMATRIX,DPHI,LIME,SAND", 4},
        {Dt2Poro, "Create Porosity from selected Sonic Transit Time", "SPHI", "DT2PORO", sonic,
         "FUN=DT2PORO,DT,55.5,189"},
        {Poro2Dt, "Create Sonic Transit Time from selected Porosity", "DT", "PORO2DT", sonic,
         "FUN=PORO2DT,SPHI,55.5,189"},
        {NporCp1e, "Change Neutron Porosity Matrix (TNPH CP 1e)", "NPHI", "NPORCP1E", matrices,
         "FUN=NPORCP1E,TNPH,LIME,SAND", 4},
        {NphiCp1c, "Change Neutron Porosity Matrix (NPHI CP 1c)", "NPHI", "NPHICP1c", matrices,
         "FUN=NPHICP1c,NPHI,LIME,SAND", 4},
        {NeutCr2Poro,
         "Create Neutron Porosity from Neutron Count Rates",
         "NPHI",
         "NEUTCR2PORO",
         {{"high count rate", "CPS", ""},
          {"low count rate", "CPS", ""},
          {"high porosity", "V/V", ""},
          {"low porosity", "V/V", ""}},
         "FUN=NEUTCR2PORO,NEUT,1900,850,0.26,0.019"},
        {Math,
         "Apply Math Function",
         "",
         "MATH",
         {{"A", "", "1"}, {"B", "", "0"}, {"C", "", "0"}, {"n", "", "1"}},
         "FUN=MATH,GR,1,0,0,1"},
        {MinMax, "Min/Max", "", "MINMAX", {{"minimum", "", "0"}, {"maximum", "", "100"}}, "FUN=MINMAX,GR,0,150"},
        {AvePoro,
         "Compute Porosity Average (PHIT)",
         "",
         "AVEPORO",
         {{"first porosity", "", ""}, {"second porosity", "", ""}},
         "FUN=AVEPORO,DPHI,DPHI,NPHI"},
        {Replace,
         "Replace one value with another",
         "",
         "REPLACE",
         {{"old value", "", ""}, {"new value", "", "-999.25"}},
         "FUN=REPLACE,GR,0,-999.25"},
        {Average,
         "Average the Data",
         "",
         "AVERAGE",
         {{"mode (1 three weighted points, 2 half-width)", "", "1"}, {"points before and behind", "", "1"}},
         "FUN=AVERAGE,GR,2,3"},
        {Scale,
         "Scale Conversions",
         "",
         "SCALE",
         {{"new left scale", "", "0.2"},
          {"new right scale", "", "2000"},
          {"old left track", "IN", "3.25"},
          {"old right track, negative for a logarithmic scale", "IN", "5.75"}},
         "FUN=SCALE,TRACK,0.2,2000,3.25,-5.75"},
    }};
}

}  // namespace

const std::array<FunctionEntry, functionCount>& functionCatalogue() {
    static const std::array<FunctionEntry, functionCount> catalogue = makeCatalogue();
    return catalogue;
}

std::size_t FunctionEntry::neededArguments() const {
    if (code == FunctionCode::AvePoro) return 0;
    return code == FunctionCode::MinMax ? 1 : arguments.size();
}

const FunctionEntry* findFunction(std::string_view key) {
    const auto& catalogue = functionCatalogue();
    const auto entry = std::find_if(catalogue.begin(), catalogue.end(),
                                    [&](const FunctionEntry& one) { return sameText(one.key, trim(key)); });
    return entry == catalogue.end() ? nullptr : &*entry;
}

std::string FunctionDescriptor::text() const {
    std::string result = codeText;
    for (const std::string& parameter : parameters) result.append("|").append(parameter);
    return result.append("|").append(sourcePosition).append("|").append(resultMnem).append("|").append(note);
}

FunctionDescriptor FunctionDescriptor::parse(std::string_view text) {
    std::vector<std::string> fields = split(text, '|');
    fields.resize(8);
    return {std::move(fields[0]),
            {std::move(fields[1]), std::move(fields[2]), std::move(fields[3]), std::move(fields[4])},
            std::move(fields[5]),
            std::move(fields[6]),
            std::move(fields[7])};
}

std::optional<FunctionCode> FunctionDescriptor::code() const {
    if (!isNumeric(codeText)) return std::nullopt;
    const double number = val(codeText);
    if (number < 0 || number >= functionCount || number != std::floor(number)) return std::nullopt;
    return static_cast<FunctionCode>(number);
}

}  // namespace welvane
