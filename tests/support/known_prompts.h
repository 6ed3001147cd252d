#pragma once

#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include "shared/prompts.h"

/// Every box that the program shows, word for word: each one that a test meets is held to this table.
namespace welvane::test {

struct KnownPrompt {
    std::string_view title, text;  ///< "*" stands for what changes
    Buttons buttons;
    Icon icon;
};

inline constexpr KnownPrompt knownPrompts[] = {
    {"", "Error in doitmastnew was , #=0", Buttons::Ok, Icon::None},
    {"", "Error in startup was *err =*", Buttons::Ok, Icon::None},
    {"", "processMMM error=*, #=*", Buttons::Ok, Icon::None},
    {"",
     "LAS found to have a common Plexmore error (XWELL/YWELL/~Curve all on same line). Do you want to repair it now?",
     Buttons::YesNo, Icon::Question},
    {"Bad Lines found and Discarding",
     "* bad lines were discarded during processing! Visually inspect and repair the original and try again!",
     Buttons::Ok, Icon::Warning},
    {"Bad Termination Found",
     "Isolated Line Feed (ASCII 10) found at byte *. Move grid to this position? (look for red cells)", Buttons::YesNo,
     Icon::Stop},
    {"Can't Continue",
     "Source and Destination Folders are the same. They must be different to process multiple files. Change "
     "Destination folder and try again.",
     Buttons::Ok, Icon::Stop},
    {"Can't Delete File!", "Unable to delete *", Buttons::Ok, Icon::Warning},
    {"Can't Open File", "* could not be started for *", Buttons::Ok, Icon::Warning},
    {"Can't Open File", "No program could be started for *", Buttons::Ok, Icon::Warning},
    {"Can't Open Folder", "*", Buttons::Ok, Icon::Warning},
    {"Can't Undo", "*.", Buttons::Ok, Icon::Information},
    {"Can't Save Library", "*", Buttons::Ok, Icon::Warning},
    {"Cancel Pressed", "Multi-well listing cancelled by user. Listing file may be incomplete.", Buttons::Ok,
     Icon::Information},
    {"Cancel Process?", "User has selected to CANCEL this process. Please Confirm. ", Buttons::OkCancel,
     Icon::Question},
    {"Caution!", "Unix repair attempt of * was NOT successful. Use this file with caution.", Buttons::Ok, Icon::Stop},
    {"Certify Not Possible", "Error while running, or unable to run Corvant. No results for *  are available.",
     Buttons::Ok, Icon::Stop},
    {"Delete File??", "Please confirm your wish to delete *", Buttons::YesNo, Icon::Question},
    {"Delete File??", "Please confirm your wish to delete these * file(s).", Buttons::YesNo, Icon::Question},
    {"Delete Group?", "The group \"*\" has * curves. Delete them too?", Buttons::YesNo, Icon::Question},
    {"Depth Is No Number", "The depth \"*\" in line * is not a number.", Buttons::Ok, Icon::Stop},
    {"Depth Units Absent!", "Depth Units not specifed in header of this LAS. Assuming FT.", Buttons::Ok, Icon::Warning},
    {"Duplicate File Name!",
     "Input and output files cannot be the same file! Change the new file name or write it to a different directory!",
     Buttons::Ok, Icon::Stop},
    {"Duplicate Filename", "Must supply different file name or different path for new file. Try again.", Buttons::Ok,
     Icon::Stop},
    {"Empty Depth Sample",
     "One or more of the depth entries (column 1) are empty. All Depths must have numeric values. Remove empty rows, "
     "and fill in missing depths, then try again.",
     Buttons::Ok, Icon::Stop},
    {"Error Initializing Welvane.", "Last resort error trap. The error was * , number *", Buttons::Ok, Icon::Stop},
    {"Error", "Error doing Statistics listing", Buttons::Ok, Icon::None},
    {"Example Wells", "*", Buttons::Ok, Icon::Warning},
    {"Extension Error", "Invalid extension. Using only valid file name characters. (*)", Buttons::Ok, Icon::Warning},
    {"File Failed Corvant!", "The Corvant check run on * after the processing indicated these error(s).\n\n*",
     Buttons::Ok, Icon::Stop},
    {"File Not Loaded", "*", Buttons::Ok, Icon::Warning},
    {"Fill in Samples?",
     "* has a non-constant sample rate. Do you want to linearly fill any possible NULL gaps between non-null data "
     "(using the specified Null Fill technique), * (Yes), or leave discrete values, moved to closest sample depth? "
     "(No)",
     Buttons::YesNo, Icon::Question},
    {"Format Too Narrow!",
     "The format specified for the channels is not wide enough to contain the depth numbers. Please increase the Total "
     "Width to accomodate the depth range and precision of the STEP to at least * total width and * decimals. Press OK "
     "to make this change and continue.",
     Buttons::OkCancel, Icon::Stop},
    {"Format Too Narrow!",
     "The specified number of decimal places (*), cannot display the full precision of the specified STEP (*).  Press "
     "OK to make this change and continue.",
     Buttons::OkCancel, Icon::Stop},
    {"Header Line Too Short to edit",
     "*\r\n\r\nis too short for reliable editing. Increase the Format positions for the Dot, Value and Colon on the "
     "properties tab (try 6, 15 and 50) and try again. ",
     Buttons::Ok, Icon::Stop},
    {"INVALID ASCII CODES", "All ASCII code numbers must be between 1-255", Buttons::Ok, Icon::Warning},
    {"INVALID CHARACTERS", "Only the space and numbers (0-9) are legal characters when using ASCII codes", Buttons::Ok,
     Icon::Warning},
    {"Insufficient Data to Convert", "You must have at least 2 columns and one row of data to create a new LAS file. ",
     Buttons::Ok, Icon::Stop},
    {"Invalid Court Rate Values", "Count rates must not be equal and High must be greater than Low", Buttons::Ok,
     Icon::Stop},
    {"Invalid Porosity Values",
     "Porosities must not be equal and High must be greater than Low, and neither can be less than 0. ", Buttons::Ok,
     Icon::Stop},
    {"Invalid STEP Value",
     "Please enter a STEP that is not zero. Welvane can only produce LAS files with a non-zero step.", Buttons::Ok,
     Icon::Stop},
    {"Just Wondering...", "You have selected nore than 10 files for editing. Are you sure?", Buttons::YesNo,
     Icon::Question},
    {"LAS Name Not Appropriate!",
     "Extension must NOT be LAS for a non-LAS file! Click Okay to proceed anyway or Cancel to supply a new filename.",
     Buttons::OkCancel, Icon::Warning},
    {"Lines Skipped!",
     "A total of * lines were skipped because the number of columns was different from the one specified as the "
     "starting line. Do not trust this file!",
     Buttons::Ok, Icon::Warning},
    {"No Channels", "*", Buttons::Ok, Icon::Warning},
    {"No Free File", "All four files are loaded. Go to the row of the file to replace and open again.", Buttons::Ok,
     Icon::Warning},
    {"No Log Viewer", "The preferences name no LAS viewer. Give the path of one there.", Buttons::Ok, Icon::Warning},
    {"Not Added", "*", Buttons::Ok, Icon::Warning},
    {"Nothing to Do!",
     "There is nothing specifed to search for and/or replace. Specify something then click replace again.", Buttons::Ok,
     Icon::Warning},
    {"Null Value Absent!", "Null Value not specified in header of this LAS. Assuming -999.25.", Buttons::Ok,
     Icon::Warning},
    {"PARA.INI File Missing!",
     "The pararameter file (para.ini or para_ZQ.ini) is missing from the program directory. Replace it from the "
     "install diskettes. Without it, you will not be able to fill standard Parameters.",
     Buttons::Ok, Icon::Warning},
    {"Please Confirm!", "Are you sure you want to clear the selected area of the grid?", Buttons::YesNo,
     Icon::Question},
    {"Please Confirm", "Are you sure you want to apply this filter to the currently loaded file(s)?", Buttons::OkCancel,
     Icon::Question},
    {"Please Confirm", "Do you want to re-load the file?", Buttons::YesNo, Icon::Question},
    {"Please Confirm", "are you sure you want to remove the filter? All current file settings will be lost. ",
     Buttons::OkCancel, Icon::Question},
    {"Plexmore 2.5 LAS (Bad LAS, Bad!)", "Plexmore 2.5 LAS found. * is not usable as is. Repair Now? ", Buttons::YesNo,
     Icon::Stop},
    {"Preferences Not Stored", "The preferences hold until the program ends, but could not be stored.", Buttons::Ok,
     Icon::Warning},
    {"Print Certify Results",
     "Do you want to print the certify results of all * files (Yes), or the currently selected file (No) ?",
     Buttons::YesNo, Icon::Question},
    {"Problem Replacing Value",
     "Unable to replace RUN Value, as no RUN parameter exists in the ~P section. Edit manually and add RUN to the "
     "~Parameter section",
     Buttons::Ok, Icon::Stop},
    {"Problem Replacing Value", "Unable to replace RUN Value. Edit manually. ", Buttons::Ok, Icon::Stop},
    {"Problem writing the OutPut File!",
     "An Error occured while writing the new file. Do not use this file without careful checking! ", Buttons::Ok,
     Icon::Warning},
    {"Replace File is Same as Search File", "Do not replace your original file! Specify a different name!", Buttons::Ok,
     Icon::Warning},
    {"Run Changed!", "Update LAS file with this run value?", Buttons::YesNo, Icon::Question},
    {"STEP Not Constant!",
     "The depth interval between depths is not constant. If you don't expect this, try sorting the depth. The STEP "
     "will be written as 0 (= variable STEP) for now. ",
     Buttons::Ok, Icon::Warning},
    {"Save Changes?",
     "Changes were made to either Channels or Units that should saved. Do you want to save them before quitting this "
     "window?",
     Buttons::YesNo, Icon::Question},
    {"Save", "*", Buttons::Ok, Icon::Stop},
    {"Some Data Changed to Fit Format Width!",
     "One or more data values were changed due to the numbers being too large to fit the format width. You might want "
     "to re-do the manipulation with a wider Data width. Changes were made to* data value(s).",
     Buttons::Ok, Icon::Information},
    {"TVD Data Table Incomplete!",
     "Incomplete data found at row *. You must have a Measured depth and Deviation for every row you want to use.",
     Buttons::Ok, Icon::Stop},
    {"Tavir TVD Data File Detected!",
     "\r\nFile was detected as a TAVIR inclinometry data file. Compute TVD depths now?\r\n(If you select No, review "
     "the "
     "data, then click 'Compute TVD' button before leaving the window)",
     Buttons::YesNo, Icon::Question},
    {"Termination Okay", "No Isolated Line Feeds (ASCII 10) found.", Buttons::Ok, Icon::Information},
    {"Tie Point Data Incomplete!", "You must enter a tie point MD, TVD and Deviation angle in first Tie Point row.",
     Buttons::Ok, Icon::None},
    {"Too Many Files", "* files were dropped, and there is room for *. None was opened.", Buttons::Ok, Icon::Warning},
    {"Too Many Lines!",
     "There are more lines in the inclinometry data file than the TVD table can handle. Reduce the file to a max of "
     "450 lines and try again. ",
     Buttons::Ok, Icon::None},
    {"Un-expected Error",
     "An unknown error has occured while converting the file. The file conversion is likely incomplete. The system "
     "error message was: \r\nLines * and * differ in their number of values.",
     Buttons::Ok, Icon::Stop},
    {"Unable to Create Folder", "Illegal folder name or unable to create the folder \"*\". Try again. Error was :*",
     Buttons::Ok, Icon::Warning},
    {"Unable to Run Corvant",
     "Unable to locate Corvant.exe. Path to Corvant Not Set, or path is incorrect. Please check Preferences and try "
     "again",
     Buttons::Ok, Icon::Stop},
    {"Unix Repair Successful", "Unix repair successful. Original file renamed to*", Buttons::Ok, Icon::Information},
    {"Unix Termination! ", "*Unix Termination.  is not usable as is. Repair Now? ", Buttons::YesNo, Icon::Stop},
    {"Unix Termination! ", "Unix Termination found. * is not usable as is. Repair Now? ", Buttons::YesNo, Icon::Stop},
    {"Unusual Depth Units", "Depth Units, *, are not as expected (F or M). Using FT", Buttons::Ok, Icon::Warning},
    {"WRAP Yes Mode Un-Necessary!",
     "The LAS file does not need to be in WRAP=YES mode for the number of requested channels (*), at the set width(*). "
     "Are you sure you want WRAP set to YES?",
     Buttons::YesNo, Icon::Question},
    {"Warning!", "Choosing not to include this section, *, will produce a LAS Certification error. Proceed?",
     Buttons::YesNo, Icon::Warning},
};

/// True where the pieces between the stars stand in the text in their order, the outer ones at its ends.
inline bool fitsPattern(std::string_view text, std::string_view pattern) {
    const std::size_t star = pattern.find('*');
    if (star == std::string_view::npos) return text == pattern;
    if (!text.starts_with(pattern.substr(0, star))) return false;
    text.remove_prefix(star);
    pattern.remove_prefix(star + 1);
    for (std::size_t place = 0; place <= text.size(); ++place)
        if (fitsPattern(text.substr(place), pattern)) return true;
    return false;
}

inline bool isBox(const KnownPrompt& known, const Prompt& prompt) {
    return known.title == prompt.title && fitsPattern(prompt.text, known.text) && known.buttons == prompt.buttons &&
           known.icon == prompt.icon;
}

/// Keeps in the file that WELVANE_MET_BOXES names which rows of the table a test has met: boxes_test.cpp reads it.
inline void noteMet(const Prompt& prompt) {
    const char* const file = std::getenv("WELVANE_MET_BOXES");
    if (file == nullptr) return;
    std::ofstream met(file, std::ios::app | std::ios::binary);
    for (const KnownPrompt& known : knownPrompts)
        if (isBox(known, prompt)) met << std::to_string(&known - knownPrompts) + "\n" << std::flush;
}

/// Why a box is none of the table's; "" when it is one.
inline std::string whyUnknown(const Prompt& prompt) {
    std::string why = "no box of tests/support/known_prompts.h has the title \"" + prompt.title + "\"";
    for (const KnownPrompt& known : knownPrompts) {
        if (known.title != prompt.title) continue;
        if (isBox(known, prompt)) return {};
        why = "the box \"" + prompt.title + "\" has another text, other buttons or another sign: " + prompt.text;
    }
    return why;
}

}  // namespace welvane::test
