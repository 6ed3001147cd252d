#pragma once

#include <string>
#include <vector>

#include "session/loading.h"
#include "session/session_setup.h"
#include "shared/numbers.h"
#include "support/app_fixture.h"

namespace welvane::test {

/// Facts of a small LAS file; data rows are made from start, stop and step.
struct LasText {
    double start = 1000, stop = 1001, step = 0.5;
    std::string curves = "GR.GAPI : GAMMA\n";  ///< ~C lines behind the index
    int channels = 1;
    std::string unit = "M", vers = "2.0", null = "-999.25", well = "WELL. X-1 : WELL NAME\n",
                parameters = "BHT.DEGC 85 : TEMP\n";

    std::string text() const {
        std::string all = "~VERSION\nVERS. " + vers + " : LAS\nWRAP. NO : ONE LINE\n~WELL\nSTRT." + unit + " " +
                          plainNumber(start) + " : START\nSTOP." + unit + " " + plainNumber(stop) + " : STOP\nSTEP." +
                          unit + " " + plainNumber(step) + " : STEP\nNULL. " + null + " : NULL\n" + well +
                          "~CURVE\nDEPT." + unit + " : DEPTH\n" + curves + "~PARAMETER\n" + parameters + "~ASCII\n";
        const int rows = step == 0 ? 4 : static_cast<int>((stop - start) / step + 0.5) + 1;
        for (int row = 0; row < rows; ++row) {
            all += "  " + formatMask(start + row * (step == 0 ? 0.5 : step), 2);
            for (int channel = 0; channel < channels; ++channel)
                all += "  " + std::to_string(row + 10 * channel) + ".5";
            all += "\n";
        }
        return all;
    }
};

/// One process and one session over a scripted user, with a folder for files.
class SessionTest : public AppTest {
  protected:
    SessionTest() { openSession(app, session); }

    std::string writeLas(const std::string& name, const LasText& las) { return folder.writeLines(name, las.text()); }
    /// A file with one channel per mnemonic, loaded into the slot.
    SlotLoadResult load(int slot, const std::vector<std::string>& mnems, LasText las = {}) {
        las.curves.clear();
        for (const std::string& mnem : mnems) las.curves += mnem + ". : CURVE " + mnem + "\n";
        las.channels = static_cast<int>(mnems.size());
        return load(slot, las);
    }
    SlotLoadResult load(int slot, const LasText& las) {
        session.slots[slot].path = writeLas("file" + std::to_string(slot + 1) + ".las", las);
        return Open4Files(app, session, slot);
    }
    void addGroup(const std::string& group, const std::vector<std::string>& mnems, const std::string& code = "",
                  const std::string& canada = "", const std::string& other = "") {
        app.reference.curveGroups.push_back({group, code, canada, other});
        for (const std::string& mnem : mnems) app.reference.curves.push_back({group, mnem, mnem + " CURVE"});
    }

    /// Output mnemonics in column order; those out of use in brackets.
    std::vector<std::string> outputs() const {
        std::vector<std::string> names;
        const Table& table = session.tables.outputs();
        for (int column = 1; column < table.columns(); ++column) {
            const std::string& mnem = table.text(SrdRow::Mnem, column);
            names.push_back(table.checked(SrdRow::Use, column) ? mnem : "(" + mnem + ")");
        }
        return names;
    }
    const std::string& cell(TableIndex row, TableIndex column) const {
        return session.tables.outputs().text(row, column);
    }
    /// Mnemonic, index, top and bottom of a slot's link.
    std::vector<std::string> link(int slot, int column) const {
        return {cell(linkRow(slot, Link::Mnem), column), cell(linkRow(slot, Link::Curve), column),
                cell(linkRow(slot, Link::From), column), cell(linkRow(slot, Link::To), column)};
    }
    const std::string& setting(PrdRow row) const { return session.tables.setting(row); }

    Session session;
};

using Texts = std::vector<std::string>;

}  // namespace welvane::test
