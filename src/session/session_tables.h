#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "shared/table.h"

/// The tables that hold a manipulation session. They are its data model, not a view of it: the pass reads them cell by
/// cell.
namespace welvane {

inline constexpr int slotCount = 4;
/// Columns are counted in 16 bits, the label column among them.
inline constexpr int maxColumns = 32767;
inline constexpr int newChannels = 4;  ///< index of the output channels' table in srd

/// Text of a row 7 cell of srd(4) without a function, and of a link without a channel.
inline constexpr std::string_view noneText = "<none>";

/// Rows of srd(0) to srd(3): the channels of one input slot. Column 0 holds labels; column c is channel number c of all
/// slots together.
enum class SlotRow { File = 0, Mnem, Unit, Value, Desc, Index };
inline constexpr int slotRowCount = 6;

/// Rows of srd(4), one output channel per column from 1. The data of rows 1 to 5 keep what came from the file.
enum class SrdRow { Number = 0, Mnem, InputUnit, Unit, Value, Description, Use, Function, FirstLink };
inline constexpr int srdRowCount = 24;
/// Parts of the four rows in which slot k feeds a channel: the input's mnemonic, its 1-based index in the slot, top and
/// bottom depth.
enum class Link { Mnem = 0, Curve, From, To };
constexpr int linkRow(int slot, Link part) {
    return at(SrdRow::FirstLink) + 4 * slot + at(part);
}

/// Rows of prd: properties of the new file.
enum class PrdRow {
    Head = 0,
    From,
    To,
    SampleRate,
    DepthUnits,
    DepthOffset,
    Direction,
    Wrap,
    Vers,
    Null,
    HeaderFile,
    FormatDot,
    FormatValue,
    FormatColon,
    WellPlus,
    DataWidth,
    DataDecimals,
    Blank,
    ProcessingHead,
    ApplyTvd,
    NullFill,
    RenameDuplicates,
    ParsingOptions,
    OpenedFile,
    DivideFile,
    FillEmpty,
    MergeParameters,
    PlainAscii,
    KeepInputDetails,
    DovranFilter
};
inline constexpr int prdRowCount = 30;
/// Columns of prd.
enum class PrdColumn { Label = 0, Setting, Option, SecondOption };

/// Columns of frd, whose row 1 is the filter in use.
enum class FrdColumn { Apply = 0, Path, UseCurve, UseParameter };
/// Rows of ord, whose columns 1 to 6 are the sections in output order.
enum class OrdRow { Order = 0, Name, Include };
/// Columns of wrd and parg.
enum class FieldColumn { Mnem = 0, Dot, Unit, Value, Colon, Desc };

/// Colours of cells: markings only. Slots 0 to 3 band their link rows with theirs.
namespace colours {
inline constexpr std::uint32_t editable = 0xFFFFFF, fixed = 0xC0C0C0, error = 255, warning = 0x80FFFF;
inline constexpr std::array<std::uint32_t, slotCount> slots = {0xFFFFC0, 0xC0FFC0, 0xFFC0C0, 0xC0E0FF};
}  // namespace colours

/// Each table lives as long as the session window and is built anew as told.
struct SessionTables {
    /// srd: the channels. 0 to 3 are those of the inputs (rows SlotRow), 4 those of the output (rows SrdRow). Column 0
    /// labels, column c from 1 one channel; all five share one column numbering. Made by every load.
    std::array<Table, 5> srd;
    /// prd: the properties of the new file. Row one option (PrdRow), column 0 its label, 1 the setting, 2 and 3 what
    /// stands beside it (PrdColumn); session/properties.h tells each. A load changes what comes from the file.
    Table prd;
    /// frd: the filter. Row 0 heads, row 1 the filter in use and what of it is taken (FrdColumn).
    Table frd;
    /// ord: the sections of the new header. Column 0 labels, 1 to 6 one section each in output order; rows OrdRow. The
    /// last column is the data section. Made by every load.
    Table ord;
    /// wrd: the ~Well section of slot 0. Row 0 heads, then a row per line, columns FieldColumn; the rows
    /// of a filter's own lines are hidden, the last row is a spare one.
    Table wrd;
    /// trd: the survey as shown. Rows TrdRow: heads, units, the tie point, then a station each; columns TrdColumn. It
    /// outlives the loads; InclinometryTable is what the pass reads of it.
    Table trd;
    /// parg: the ~Parameter section of each slot, rows and columns as wrd without the spare row. It counts only while
    /// it is visible.
    std::array<Table, slotCount> parg;
    std::string otherText;                           ///< OText: the ~Other section of the new file
    std::array<std::vector<std::string>, 2> parLst;  ///< parameter mnemonics offered for splice depths (from, to)
    std::array<std::string, 8> fsL;                  ///< splice depth boxes: 2k From, 2k+1 To of slot k

    std::string& setting(PrdRow row) { return prd.text(row, PrdColumn::Setting); }
    const std::string& setting(PrdRow row) const { return prd.text(row, PrdColumn::Setting); }
    std::string& option(PrdRow row) { return prd.text(row, PrdColumn::Option); }
    const std::string& option(PrdRow row) const { return prd.text(row, PrdColumn::Option); }
    std::string& secondOption(PrdRow row) { return prd.text(row, PrdColumn::SecondOption); }
    const std::string& secondOption(PrdRow row) const { return prd.text(row, PrdColumn::SecondOption); }
    bool checked(PrdRow row) const { return prd.checked(row, PrdColumn::Setting); }
    void setChecked(PrdRow row, bool on) {
        prd.setCheck(row, PrdColumn::Setting, on ? Check::Checked : Check::Unchecked);
    }

    bool operator==(const SessionTables&) const = default;

    Table& outputs() { return srd[newChannels]; }
    const Table& outputs() const { return srd[newChannels]; }
    /// Text of an output channel's cell; columns from 1.
    std::string& output(SrdRow row, int column) { return outputs().text(row, column); }
    const std::string& output(SrdRow row, int column) const { return outputs().text(row, column); }
    /// True when frd names a filter and its check is set: the filter is in use.
    bool filterInUse() const {
        return frd.rows() > 1 && frd.checked(1, FrdColumn::Apply) && !frd.text(1, FrdColumn::Path).empty();
    }
};

}  // namespace welvane
