#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "shared/table.h"

/// The tables that hold a manipulation session. They are its data model, not a view of it: the pass reads them cell by
/// cell.
namespace welvane {

inline constexpr int slotCount = 4;
/// Columns are counted in 16 bits, the label column among them.
inline constexpr int maxColumns = 32767;
inline constexpr int newChannels = 4;  ///< index of the output channels' table in srd

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
    return 8 + 4 * slot + static_cast<int>(part);
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

/// Number of a row or column that an enum names.
template <class Name>
constexpr int at(Name name) {
    return static_cast<int>(name);
}

/// Colours of cells: markings only. Slots 0 to 3 band their link rows with theirs.
namespace colours {
inline constexpr std::uint32_t editable = 0xFFFFFF, fixed = 0xC0C0C0, error = 255, warning = 0x80FFFF;
inline constexpr std::array<std::uint32_t, slotCount> slots = {0xFFFFC0, 0xC0FFC0, 0xFFC0C0, 0xC0E0FF};
}  // namespace colours

struct SessionTables {
    std::array<Table, 5> srd;  ///< inputs 0 to 3, output channels 4; all five share one column numbering
    Table prd, frd, ord, wrd, grd, trd;
    std::array<Table, slotCount> parg;  ///< ~Parameter of each slot, columns as wrd; counts only while visible
    std::string otherText;              ///< OText: the ~Other section of the new file
    std::array<std::vector<std::string>, 2> parLst;  ///< parameter mnemonics offered for splice depths (from, to)
    std::array<std::string, 8> fsL;                  ///< splice depth boxes: 2k From, 2k+1 To of slot k

    std::string& setting(PrdRow row) { return prd.text(static_cast<int>(row), static_cast<int>(PrdColumn::Setting)); }
    const std::string& setting(PrdRow row) const {
        return prd.text(static_cast<int>(row), static_cast<int>(PrdColumn::Setting));
    }
    std::string& option(PrdRow row) { return prd.text(static_cast<int>(row), static_cast<int>(PrdColumn::Option)); }
    const std::string& option(PrdRow row) const {
        return prd.text(static_cast<int>(row), static_cast<int>(PrdColumn::Option));
    }
    std::string& secondOption(PrdRow row) {
        return prd.text(static_cast<int>(row), static_cast<int>(PrdColumn::SecondOption));
    }
    const std::string& secondOption(PrdRow row) const {
        return prd.text(static_cast<int>(row), static_cast<int>(PrdColumn::SecondOption));
    }
    bool checked(PrdRow row) const { return prd.checked(static_cast<int>(row), static_cast<int>(PrdColumn::Setting)); }
    void setChecked(PrdRow row, bool on) {
        prd.setCheck(static_cast<int>(row), static_cast<int>(PrdColumn::Setting),
                     on ? Check::Checked : Check::Unchecked);
    }

    Table& outputs() { return srd[newChannels]; }
    const Table& outputs() const { return srd[newChannels]; }
    /// Text of an output channel's cell; columns from 1.
    std::string& output(SrdRow row, int column) { return outputs().text(static_cast<int>(row), column); }
    const std::string& output(SrdRow row, int column) const { return outputs().text(static_cast<int>(row), column); }
    /// True when frd names a filter and its check is set: the filter is in use.
    bool filterInUse() const {
        return frd.rows() > 1 && frd.checked(1, 0) && !frd.text(1, static_cast<int>(FrdColumn::Path)).empty();
    }
};

}  // namespace welvane
