#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "convert/generic_table.h"
#include "listing/listing.h"
#include "models/new_channels.h"
#include "models/table_model.h"
#include "models/undo.h"
#include "session/session.h"

/// The models of the grids that exist, each over what holds its cells; that must outlive the model.
namespace welvane {

/// srd(0) to srd(3): to be looked at.
CellTableModel inputChannelsModel(Session& session, int slot);
/// srd(4) by its edit rules. The browse button of a file row is not an edit: browseSlotFile of channels_tab.h.
CellTableModel newChannelsModel(App& app, Session& session, FunctionChooser chooseFunction);
/// prd by its edit rules.
CellTableModel propertiesModel(App& app, Session& session);
/// ord: the names by their lists, the checks after a question where they matter.
CellTableModel sectionsModel(App& app, Session& session);
/// frd: the filter's path and what of it is taken; filBut is the button that applies it.
CellTableModel filterModel(App& app, Session& session);
/// wrd and parg: all fields of a line but its dot and its colon.
CellTableModel fieldsModel(Table& table);
/// trd: every cell from the tie point on; an edit marks the table as changed.
CellTableModel surveyModel(Session& session);
/// ord of a listing: options and prices; an edit of a price works out the total anew.
CellTableModel listingOptionsModel(App& app, Table& ord);
/// vrd of a listing: an edit of RUN rewrites the file, after a question.
CellTableModel runValuesModel(App& app, Table& vrd);

/// grd. Names, units, checks and data take an edit; the checks stand in row GrdRow::Use. With a history each edit is a
/// step of it.
class GenericTableModel : public TableModel {
  public:
    explicit GenericTableModel(GenericTable& grd, UndoHistory* history = nullptr) : grd_(grd), history_(history) {}

    std::int64_t rows() const override { return grd_.rows(); }
    int columns() const override { return grd_.columns(); }
    // Names, units and checks are edited, so they are cells; the column numbers alone are heads.
    int headRows() const override { return 1; }
    std::string text(std::int64_t row, int column) const override;
    Check check(std::int64_t row, int column) const override;
    std::uint32_t backColour(std::int64_t row, int column) const override;
    bool mayEdit(std::int64_t row, int column) const override;
    void asOneStep(const std::string& text, const std::function<void()>& body) override;

  protected:
    void applyEdit(std::int64_t row, int column, const std::string& text, int item) override;
    void applyCheck(std::int64_t row, int column, bool on) override;

  private:
    GenericTable& grd_;
    UndoHistory* history_;
};

/// The statistics of a listing, to be looked at.
class StatisticsModel : public TableModel {
  public:
    explicit StatisticsModel(const StatisticsGrid& grid) : grid_(grid) {}

    std::int64_t rows() const override { return static_cast<std::int64_t>(grid_.rows.size()) + 1; }
    int columns() const override;
    int headColumns() const override { return 0; }
    std::string text(std::int64_t row, int column) const override;
    /// What a column means, for a tip.
    static std::string_view meaning(int column);

  private:
    const StatisticsGrid& grid_;
};

}  // namespace welvane
