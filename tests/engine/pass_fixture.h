#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "engine/driver.h"
#include "engine/pass.h"
#include "session/loading.h"
#include "session/session_setup.h"
#include "shared/field_splitter.h"
#include "shared/line_reader.h"
#include "shared/numbers.h"
#include "support/memory_platform.h"
#include "support/temp_folder.h"

namespace welvane::test {

/// A small LAS 2.0 file; `data` holds its records, one a line.
inline std::string lasText(const std::string& curves, const std::string& data, const std::string& start,
                           const std::string& stop, const std::string& step, const std::string& wrap = "NO",
                           const std::string& extra = "") {
    return "~VERSION\nVERS.   2.0 : CWLS LOG ASCII STANDARD\nWRAP.   " + wrap + " : WRAP MODE\n~WELL\nSTRT.M   " +
           start + " : START\nSTOP.M   " + stop + " : STOP\nSTEP.M   " + step +
           " : STEP\nNULL.   -999.25 : NULL VALUE\nCOMP.   ACME OIL : COMPANY\n~CURVE\nDEPT.M   : DEPTH\n" + curves +
           extra + "~ASCII\n" + data;
}

/// A process and a session in command mode on files of a folder of their own.
class PassTest : public ::testing::Test {
  protected:
    TempFolder folder;
    MemoryPlatform platform;
    SilentInterface silent;
    App app{silent, platform};
    Session session;

    void SetUp() override {
        app.run.commandMode = true;
        openSession(app, session);
    }
    void load(int slot, const std::string& path) {
        session.slots[static_cast<std::size_t>(slot)].path = path;
        Open4Files(app, session, slot);
    }
    RunOutcome run(const std::string& name = "out.las") {
        app.run.targetFile = folder.path(name);
        return processMMM(app, session, {});
    }
    /// The data records of a written file as numbers.
    std::vector<std::vector<double>> rows(const std::string& name = "out.las") const {
        std::vector<std::vector<double>> result;
        const std::string bytes = folder.read(name);
        LineReader reader(bytes);
        bool data = false;
        FieldSplitter fields;
        for (std::string_view line; reader.next(line);) {
            if (data) {
                fields.setText(line);
                std::vector<double> row;
                for (std::size_t field = 1; field <= fields.count(); ++field) row.push_back(val(fields.field(field)));
                result.push_back(row);
            }
            data = data || line.substr(0, 2) == "~A";
        }
        return result;
    }
};

}  // namespace welvane::test
