#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "functions/functions.h"
#include "platform/platform.h"
#include "session/session.h"
#include "shared/prompts.h"

/// Choosing a function for a channel: the values of the dialog's fields and the operations on them. No window is
/// needed.
namespace welvane {

/// Largest and smallest value of one channel of the first input file.
struct CountRateEnds {
    double maximum = 0, minimum = 0;
};
/// Statistics of a channel by its mnemonic; nothing when they failed. Filled in by whoever knows the input files.
using CountRateStatistics = std::function<std::optional<CountRateEnds>(std::string_view channel)>;

/// What the dialog is given. The settings are changed by an edit of a matrix value, for the session only.
struct FunctionDialogContext {
    const ReferenceTables& reference;
    StartupSettings& settings;
    SettingsStore& store;
    UserInterface& user;
    std::string programFolder;  ///< with its separator at the end
    CountRateStatistics statistics;
};

inline constexpr std::string_view fromLogText = "From_Log";
inline constexpr std::size_t countRateSize = 11;  ///< numbers kept under "CRPORO"; the first four are the boxes ncr

/// The fields of the dialog, named as their controls. Indices of lists count from 0, -1 is none.
struct FunctionDialog {
    int funLst = -1;                 ///< the function: its code
    std::vector<std::string> fNamT;  ///< mnemonics of the source channels
    int source = -1;                 ///< chosen in fNamT
    std::string conTL;               ///< result mnemonic
    std::vector<std::string> resultList;
    std::array<std::string, 2> parT, parTags;
    std::array<std::vector<std::string>, 2> matr;  ///< matrix in and out: "Sand: 2.650"
    std::array<int, 2> matrIndex = {-1, -1};
    std::array<std::string, 4> ncr;  ///< high and low count rate, high and low porosity
    std::array<float, countRateSize> countRates{};
    std::array<std::string, 4> fT = {"1", "0", "0", "1"};  ///< A, B, C, n
    std::string formula;                                   ///< of MATH, with the source's name
    int funOpt = 1;                                        ///< smoothing: 1 weighted, 2 half-width
    std::string aveT = "1";
    bool llChk = false;  ///< the scale is logarithmic
    std::array<std::string, 4> linlogT, linlogTags;
    std::array<std::vector<std::string>, 2> ttLst;  ///< tools; diameters with their heading
    bool toolListsVisible = false;
};

/// The pages of the dialog, in the order of their tabs.
enum class FunctionPage { Matrix, PorosityDensity, General, Neutron, Average, LinLog };
inline constexpr std::array<std::string_view, 6> functionPageNames = {"Matrix",  "P/d",     "General",
                                                                      "Neutron", "Average", "Lin/Log"};
/// The page that holds what a function takes; nothing for one that takes only its source.
std::optional<FunctionPage> pageOf(FunctionCode code);

/// Statistics of the channels of the file in the first slot, for filling count rates from the log.
CountRateStatistics countRateStatistics(App& app, const Session& session);

/// A dialog with its lists filled, opened at the old descriptor, or without one at the function chosen last.
FunctionDialog openFunctionDialog(FunctionDialogContext& context, std::vector<std::string> sources, int source,
                                  std::string_view oldDescriptor);

/// Fills the lists and sets the defaults of the function in funLst.
void fillFunStuff(FunctionDialog& dialog, FunctionDialogContext& context);
/// The user's choice of a function: kept as "funLstIndex", then as fillFunStuff.
void chooseFunction(FunctionDialog& dialog, FunctionDialogContext& context, int code);
/// The user's choice of a source: functions that rewrite their source follow in the result.
void chooseSource(FunctionDialog& dialog, int source);
/// The formula of MATH with the first four letters of the source's name.
void updateMFLab(FunctionDialog& dialog);
/// Puts a descriptor's values back into the fields; false, with everything as it was, when it cannot be read.
bool fillPreFunctions(FunctionDialog& dialog, FunctionDialogContext& context, std::string_view descriptor);

/// A row of a matrix list (0 in, 1 out) was chosen; one edited to "name: value" stores the value for the session.
void chooseMatrix(FunctionDialog& dialog, FunctionDialogContext& context, int list, int row, std::string_view text);
/// An edit of a box ncr (0 to 3): an emptied count rate becomes "From_Log"; the value is kept at once.
void setCountRate(FunctionDialog& dialog, FunctionDialogContext& context, std::size_t box, std::string_view text);
/// A tool, then one of its diameters, was chosen from crnphi.ini; row 0 of the diameters is their heading.
void chooseTool(FunctionDialog& dialog, FunctionDialogContext& context, std::size_t row);
void chooseDiameter(FunctionDialog& dialog, FunctionDialogContext& context, std::size_t row);
/// The source's largest and smallest value become the count rates; a failure of the statistics is told.
void fillCountRatesFromLog(FunctionDialog& dialog, FunctionDialogContext& context);

/// Checks the fields and returns the descriptor; nothing when a check failed (the user was told) or no function or
/// source is chosen.
std::optional<FunctionDescriptor> AddFunToList(const FunctionDialog& dialog, FunctionDialogContext& context);

}  // namespace welvane
