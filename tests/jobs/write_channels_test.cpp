#include "jobs/write_channels.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "app/startup.h"
#include "support/app_fixture.h"

namespace welvane::test {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

using Columns = std::vector<std::pair<std::string, std::vector<double>>>;

class WriteChannels : public AppTest {
  protected:
    WriteReport write(const Columns& columns, GivenNumber null = -999.25) {
        WriteRequest request{.output = folder.path("made.las"), .null = null};
        for (const auto& [name, values] : columns) request.channels.push_back({{name, "", "", ""}, values});
        Workbench bench(app, {.force = true});
        return writeChannels(bench, request);
    }
    WellData readBack() {
        Workbench bench(app, {});
        return readWell(bench, folder.path("made.las"), {});
    }
    static std::string told(const JobReport& report) {
        std::string text;
        for (const Note& note : report.notes) text += textOf(note) + "\n";
        return text;
    }
};

bool sameValue(double one, double other) {
    return (std::isnan(one) && std::isnan(other)) ||
           std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other);
}

TEST_F(WriteChannels, everyBitComesBack) {
    std::mt19937_64 random(11);
    Columns columns = {{"DEPT", {}}, {"BITS", {}}, {"SHORT", {}}, {"EDGE", {}}};
    const std::vector<double> edges = {nan,
                                       5e-324,
                                       -5e-324,
                                       1.7976931348623155e308,
                                       -0.0,
                                       0.1 + 0.2,
                                       9007199254740993.0,
                                       -999.2498,
                                       1e-300,
                                       123456789012345680000.0};
    for (int record = 0; record < 3000; ++record) {
        columns[0].second.push_back(1000 + record * 0.125);
        double bits = 0;
        do bits = std::bit_cast<double>(random());
        while (!std::isfinite(bits));
        columns[1].second.push_back(bits);
        columns[2].second.push_back(static_cast<double>(static_cast<int>(random() % 200000) - 100000) / 1000);
        columns[3].second.push_back(edges[static_cast<std::size_t>(record) % edges.size()]);
    }
    EXPECT_EQ(told(write(columns)), "");
    const WellData well = readBack();
    ASSERT_EQ(well.channels.size(), columns.size());
    EXPECT_EQ(told(well), "the index has no unit; nothing is converted\n");
    for (std::size_t column = 0; column < columns.size(); ++column) {
        EXPECT_EQ(well.channels[column].field.mnem, columns[column].first);
        EXPECT_TRUE(std::equal(columns[column].second.begin(), columns[column].second.end(),
                               well.channels[column].values.begin(), well.channels[column].values.end(), sameValue))
            << columns[column].first;
    }
}

TEST_F(WriteChannels, aWellIsWrittenWithItsHeader) {
    const std::string example = WELVANE_SOURCE_DIR "/examples/plover-state-1.las";
    Workbench bench(app, {.force = true});
    const WellData well = readWell(bench, example, {});
    WriteRequest request{.output = folder.path("made.las"),
                         .sections = well.sections,
                         .well = {{"COMP", "", "Another", ""}},
                         .null = well.nullValue};
    for (const WellChannel& channel : well.channels) request.channels.push_back({channel.field, channel.values});
    request.channels.front().field.unit = well.indexUnit;
    writeChannels(bench, request);
    const WellData again = readBack();
    EXPECT_EQ(again.version, "2.0");
    ASSERT_EQ(again.sections.size(), well.sections.size());
    std::size_t compared = 0;
    for (std::size_t section = 0; section < well.sections.size(); ++section)
        for (const HeaderField& field : well.sections[section].lines) {
            const auto& lines = again.sections[section].lines;
            const auto stands = std::find_if(lines.begin(), lines.end(),
                                             [&](const HeaderField& line) { return line.mnem == field.mnem; });
            ASSERT_NE(stands, lines.end()) << field.mnem;
            if (well.sections[section].letter == 'V' || ++compared == 0) continue;
            if (field.mnem == "STRT" || field.mnem == "STOP" || field.mnem == "STEP") continue;
            EXPECT_EQ(stands->value, field.mnem == "COMP" ? "Another" : field.value) << field.mnem;
        }
    EXPECT_GT(compared, 5U);
}

TEST_F(WriteChannels, whatIsNotWrittenAsItIsIsTold) {
    const struct {
        Columns columns;
        std::vector<std::string> names;
        std::string notes;
    } cases[] = {
        {{{"DEPT", {1, 2, 3}}, {"GR", {largest, infinity, -infinity}}},
         {"DEPT", "GR"},
         "GR: infinite; null is written (3)\n"},
        {{{"DEPT", {1, 2, 3}}, {"GR", {1, -999.25, 2}}},
         {"DEPT", "GR"},
         "GR: figures that are the null value -999.25 and read back as null (1)\n"},
        {{{"DEPT", {1, 2, 4}}, {"GR", {1, 2, 3}}},
         {"DEPT", "GR"},
         "the depth interval is not constant; STEP is written as 0\n"},
        {{{"DEPT", {1, 2}}, {"GR", {1, 2}}, {"GR", {3, 4}}},
         {"DEPT", "GR", "GR_1"},
         "GR_1: written so in place of \"GR\"\n"},
        {{{"DEPT", {3, 2}}, {"Deep Res.", {1, 2}}},
         {"DEPT", "Deep_Res_"},
         "Deep_Res_: written so in place of \"Deep Res.\"\n"},
    };
    for (const auto& row : cases) {
        const WriteReport report = write(row.columns);
        EXPECT_EQ(report.names, row.names);
        EXPECT_EQ(told(report), row.notes);
        EXPECT_EQ(readBack().channels.back().values.size(), row.columns.back().second.size());
    }
}

TEST_F(WriteChannels, whatCannotBeALogLeavesTheFileAsItWas) {
    folder.write("made.las", "before");
    const struct {
        Columns columns;
        double null;
        std::string why;
    } cases[] = {
        {{{"DEPT", {1, 2}}}, -999.25, "a LAS file needs an index and a channel"},
        {{{"DEPT", {}}, {"GR", {}}}, -999.25, "there are no values to write"},
        {{{"DEPT", {1, 2}}, {"GR", {1}}}, -999.25, "GR has 1 value, the index 2"},
        {{{"DEPT", {1, nan}}, {"GR", {1, 2}}}, -999.25, "the index is no number in record 1 (counted from 0)"},
        {{{"DEPT", {1, infinity}}, {"GR", {1, 2}}}, -999.25, "the index is no number in record 1 (counted from 0)"},
        {{{"DEPT", {0, 1}}, {"GR", {1, 2}}},
         0,
         "the index is the null value in record 0 (counted from 0); choose another null"},
    };
    for (const auto& row : cases) {
        try {
            write(row.columns, row.null);
            ADD_FAILURE() << row.why;
        } catch (const Refusal& refused) {
            EXPECT_EQ(refused.fault.reason.text, row.why);
        }
        EXPECT_EQ(folder.read("made.las"), "before") << row.why;
    }
}

}  // namespace
}  // namespace welvane::test
