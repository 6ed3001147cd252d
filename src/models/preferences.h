#pragma once

#include "app/preference_rows.h"
#include "models/frame.h"
#include "models/table_model.h"

/// The window of the command ID_Preferences: a table of 21 named values over the settings of the process.
namespace welvane {

/// What is edited is a copy of the settings; the country alone takes effect at once, and stays when the rest is
/// dismissed. A value that was not edited is kept to its last digit, however few of them are shown.
class Preferences {
  public:
    explicit Preferences(App& app);
    Preferences(const Preferences&) = delete;
    Preferences& operator=(const Preferences&) = delete;

    /// prd: row 0 heads, rows PreferenceRow; column 0 the name, 1 the value.
    const Table& prd() const { return prd_; }
    /// The grid. An edit that cannot be says why in its outcome; rows 6 and 7 have a browse button too.
    CellTableModel model();
    /// The browse button of row 6 or 7: asks for a program. False when cancelled, and for any other row.
    bool browseProgram(int row);
    /// Takes the values over: they are stored, and hold at once. Nothing is corrected before the next start. A box
    /// tells when they could not be stored.
    bool accept();

  private:
    void show();
    void edit(const CellEdit& edit);

    App& app_;
    StartupSettings edited_;
    Table prd_;
};

/// The button OK: as accept. What was chosen holds whatever is undone in the session.
bool acceptPreferences(Frame& frame, Preferences& preferences);

}  // namespace welvane
