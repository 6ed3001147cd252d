#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "las/rebuild.h"
#include "shared/prompts.h"
#include "shared/run_state.h"

namespace welvane {

/// What the file browser shows and knows, without any window.
struct BrowserState {
    std::string folder;                 ///< of the file list, with a separator at its end
    std::vector<std::string> selected;  ///< names in that folder
    std::string inDir, outDir;          ///< source and destination folder
    std::string sourceFolderLabel;
    bool editEnabled = false;  ///< command ID_EditLAS
    bool editAfter = false;    ///< toggle ID_EditAfter
    bool tvdTabOpen = false;   ///< the session shows its survey tab
    std::string tvdFile;       ///< the last file offered as a survey
    std::string statusText;
    bool statusRed = false;
};

/// What a selection sets off outside this room; each may be empty.
struct BrowserActions {
    std::function<void(const std::string& path)> saveLastFile;  ///< the setting "lasfile"
    std::function<void(const std::string& path)> offerSurvey;
    std::function<void(const std::string& path)> openFileWithShell;
    std::function<void(const std::string& path)> showFile;  ///< byte view and file details
};

/// Judges what is selected, offers the repairs and sets run.lasFile, "" where there is no single usable file.
void classifySelection(BrowserState& browser, const BrowserActions& actions, const RebuildSettings& rebuild,
                       RunState& run, UserInterface& user);

}  // namespace welvane
