#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "models/file_list.h"
#include "models/frame.h"

/// The file browser as a window shows it: folders, the list of files with its pattern, the selection and its texts.
namespace welvane {

class FileBrowser {
  public:
    /// Lists the frame's folder with the pattern of the settings.
    explicit FileBrowser(Frame& frame);

    const std::vector<std::string>& folders() const { return listing_.folders; }  ///< Dir2
    const std::vector<std::string>& files() const { return listing_.files; }      ///< File1
    const std::vector<std::string>& selected() const { return frame_.browser.selected; }
    const std::string& pattern() const { return pattern_; }
    std::string heading() const { return "File List (" + pattern_ + ")"; }
    const std::string& sourceLabel() const { return frame_.browser.folder; }       ///< SF_LAB
    const std::string& destinationLabel() const { return frame_.browser.outDir; }  ///< DF_LAB
    const std::string& status() const { return frame_.browser.statusText; }        ///< checkL
    bool statusRed() const { return frame_.browser.statusRed; }
    const std::string& sizeText() const { return sizeText_; }  ///< fSizL
    /// What is to be known of the one selected file, by name and value; nothing for any other selection.
    std::vector<std::pair<std::string, std::string>> details() const;

    /// The list anew. Names that were selected stay selected, as they are written now; nothing is judged again.
    void refresh();
    /// Selects files of the list, with all that follows; without multiple selection the last one alone.
    void select(std::vector<std::string> names);

    /// Asks for the source folder, or for the destination; stored at once. False when cancelled or not a folder.
    bool chooseSource();
    bool chooseDestination();
    /// A double click on a folder of the list; ".." goes up. False, with a box, when it cannot be read.
    bool enterFolder(std::string_view name);
    /// Asks for the extension of the files to list.
    bool chooseExtension();
    /// The Delete key: after a question, the selected files.
    void deleteSelected();
    /// Asks for a name, makes the folder in the current one and goes there.
    bool makeFolder();

  private:
    bool goTo(const std::string& folder);
    void showSize();

    Frame& frame_;
    std::string pattern_, sizeText_;
    FolderListing listing_;
};

}  // namespace welvane
