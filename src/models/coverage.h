#pragma once

#include <array>
#include <string>
#include <vector>

#include "picture/coverage.h"
#include "session/session.h"

/// The tab "&Visualization": the coverage picture, its labels, and the boxes and buttons of the splice depths beside
/// it.
namespace welvane {

/// A label of the tab (dLab): what it shows, what it tells under the pointer, and the colour of its slot.
struct CoverageLabel {
    bool visible = false;  ///< while its file is loaded
    std::string text;      ///< a depth, "1000.0488"
    std::string caption;   ///< "File 1 Top"
    std::string tip;       ///< what it is, and the file's path
    Ink back = Ink::None;
};
/// A splice box (fsL).
struct SpliceBox {
    bool visible = false;
    std::string text;
    std::string caption;  ///< "File 1 From +" or "To +"
    Ink back = Ink::None;
};

class CoverageTab {
  public:
    static constexpr int tabIndex = 1;
    explicit CoverageTab(Session& session) : session_(session) {}

    /// The lines and boxes for the picture, made anew: to be asked for each time the tab is shown.
    Coverage picture() const { return drawVisual(coverageFiles(session_)); }
    /// The same as a drawing with axis and labels.
    Drawing drawing(double width, double height) const;

    /// Labels 2k and 2k + 1 are top and bottom of slot k.
    std::array<CoverageLabel, 2 * slotCount> labels() const;
    /// "Min Top" with the tip "Shallowest", and "Max Bottom" with "Deepest"; not visible while no file is loaded.
    CoverageLabel minTop() const;
    CoverageLabel maxBottom() const;

    /// Boxes 2k and 2k + 1 are From and To of slot k.
    std::array<SpliceBox, 2 * slotCount> boxes() const;
    /// A person types into a box.
    void type(int box, const std::string& text);
    /// Enter in a box: its depth goes to the slot's grid, and behind a To box the next file begins one step lower. A
    /// box of a slot without a file stays as it is.
    void enter(int box);

    /// "Apply to all channels of file 1" to "file 4" (but).
    static std::string applyCaption(int slot);
    bool canApply(int slot) const { return session_.loaded(slot); }
    void apply(int slot);

    /// The mnemonics offered in "From Parameter" and "To Parameter" (parLst).
    const std::vector<std::string>& fromParameters() const { return session_.tables.parLst[0]; }
    const std::vector<std::string>& toParameters() const { return session_.tables.parLst[1]; }
    static constexpr std::string_view applyParametersCaption = "Apply depths from parameters to all files";
    /// The button: a number counts as it stands, another text is a mnemonic of ~Parameter; a blank one changes nothing.
    void applyParameters(const std::string& from, const std::string& to);

  private:
    std::string depthUnit() const;

    Session& session_;
};

}  // namespace welvane
