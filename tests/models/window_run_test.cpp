#include "app/startup.h"
#include "jobs/process.h"
#include "jobs/run.h"
#include "models/channels_tab.h"
#include "models/coverage.h"
#include "models/header_rows.h"
#include "models/session_files.h"
#include "models/session_store.h"
#include "models/survey.h"
#include "models/table_models.h"
#include "session/matching.h"
#include "session/session_setup.h"
#include "support/app_fixture.h"
#include "support/memory_platform.h"

namespace welvane::test {
namespace {

class StockPlatform : public MemoryPlatform {
  public:
    std::string programFolder() const override { return WELVANE_SOURCE_DIR "/data/"; }
};

/// What a person does in the tables, and what a verb is asked for to make the same file.
struct Deed {
    const char* name;
    std::function<void(Frame& frame)> window;
    std::function<void(PassRequest& pass)> verb;
};

class WindowAndVerb : public testing::TestWithParam<Deed> {
  protected:
    WindowAndVerb() {
        platform.settings().put("inDir", folder.path());
        platform.settings().put("outDir", folder.path());
        EXPECT_TRUE(loadProcess(app));
        app.settings.certifyAfter = app.settings.editAfter = false;
    }
    static std::string example(const char* name) { return std::string(WELVANE_SOURCE_DIR "/examples/") + name; }
    /// Twice, since a run gives the window its session back; and kept in a file before.
    std::string byWindow() {
        Frame frame(app);
        openArea(frame, WorkArea::Session);
        dropFiles(frame, files, 0);
        spliceGuess(app, frame.session);
        GetParam().window(frame);
        keepSession(app, frame.session, folder.path("kept.wsn"));
        ProcessRequest request;
        request.sessionOpen = true;
        for (const char* name : {"window.las", "again.las"}) {
            app.run.targetFile = folder.path(name);
            const ProcessOutcome outcome = process(app, frame.session, request);
            EXPECT_TRUE(outcome.completed) << outcome.refusal;
        }
        return folder.read("window.las");
    }
    std::string byKeptSession() {
        Workbench bench(app, {.force = true});
        runFiles(bench, {.output = folder.path("kept.las"), .session = folder.path("kept.wsn")});
        return folder.read("kept.las");
    }
    std::string byVerb() {
        Workbench bench(app, {.force = true});
        RunFilesRequest request{.files = files, .output = folder.path("verb.las")};
        request.pass.splice = true;
        GetParam().verb(request.pass);
        runFiles(bench, request);
        return folder.read("verb.las");
    }
    TempFolder folder;
    StockPlatform platform;
    ScriptedInterface user;
    App app{user, platform};
    const std::vector<std::string> files = {example("kestrel-7-run1.las"), example("kestrel-7-run2.las")};
};

std::string firstDifference(const std::string& one, const std::string& other) {
    std::size_t place = 0;
    while (place < std::min(one.size(), other.size()) && one[place] == other[place]) ++place;
    const std::size_t start = one.rfind('\n', place) + 1;
    return place == std::max(one.size(), other.size())
               ? ""
               : one.substr(start, 150) + "\n--- in place of ---\n" + other.substr(start, 150);
}

TEST_P(WindowAndVerb, WriteTheSameFile) {
    const std::string window = byWindow();
    EXPECT_EQ(firstDifference(folder.read("again.las"), window), "") << "the second run";
    EXPECT_EQ(firstDifference(byKeptSession(), window), "") << "from the session's file";
    app.settings.format = FormatDefaults();
    EXPECT_EQ(firstDifference(byVerb(), window), "") << "by the verb's options";
}

void set(Frame& frame, PrdRow row, const char* text, PrdColumn column = PrdColumn::Setting) {
    CellTableModel table = propertiesModel(frame.app, frame.session);
    const std::vector<std::string> items = split(table.pickList(at(row), at(column)), '|');
    const auto found = std::ranges::find(items, text);
    const int item = found == items.end() ? -1 : static_cast<int>(found - items.begin());
    const EditOutcome outcome = table.edit(at(row), at(column), text, item);
    EXPECT_TRUE(outcome.done) << outcome.why;
}
class WellLines : public WindowAndVerb {
  protected:
    static std::string wellOf(const std::string& file) {
        const std::size_t from = file.find("~Well");
        return file.substr(from, file.find("~Curve") - from);
    }
    std::string written(Frame& frame, const char* name) {
        app.run.targetFile = folder.path(name);
        ProcessRequest request;
        request.sessionOpen = true;
        EXPECT_TRUE(process(app, frame.session, request).completed);
        return wellOf(folder.read(name));
    }
};

/// Of both files' headers, since the one opened last is what is written, and the first one's lines are shown.
TEST_P(WellLines, AreWrittenAsTheyWereEdited) {
    Frame frame(app);
    openArea(frame, WorkArea::Session);
    dropFiles(frame, files, 0);
    Table& wrd = frame.session.tables.wrd;
    std::array<std::string, 2> before, after;
    for (std::size_t slot : {1U, 0U}) {
        set(frame, PrdRow::HeaderFile, frame.session.slots[slot].path.c_str());
        before[slot] = written(frame, "before.las");
    }
    const auto rowOf = [&](const char* mnem) {
        int row = 1;
        while (wrd.text(row, FieldColumn::Mnem) != mnem) ++row;
        return row;
    };
    CellTableModel model = fieldsModel(wrd);
    EXPECT_TRUE(model.edit(rowOf("COMP"), at(FieldColumn::Value), "SOMEBODY ELSE").done);
    EXPECT_TRUE(model.edit(rowOf("STRT"), at(FieldColumn::Value), "1").done);
    EXPECT_TRUE(deleteHeaderLine(wrd, rowOf("FLD")).done);
    const int added = addHeaderLine(wrd, rowOf("COMP"));
    EXPECT_TRUE(model.edit(added, at(FieldColumn::Mnem), "RIG").done);
    EXPECT_TRUE(model.edit(added, at(FieldColumn::Value), "SEVEN").done);
    for (std::size_t slot : {1U, 0U}) {
        set(frame, PrdRow::HeaderFile, frame.session.slots[slot].path.c_str());
        after[slot] = written(frame, "after.las");
        std::string expected;
        for (const std::string& line : split(before[slot], '\n'))
            if (line.starts_with(" COMP."))
                expected += " RIG. SEVEN :\r\n" + replaceAll(line, "MARLSTONE PETROLEUM", "SOMEBODY ELSE      ") + "\n";
            else if (!line.starts_with("  FLD.") && !line.empty())
                expected += line + "\n";
        std::string told = after[slot];
        const std::size_t rig = told.rfind('\n', told.find("RIG.")) + 1, end = told.find('\n', rig);
        EXPECT_EQ(told.replace(rig, end - rig, " RIG. SEVEN :\r"), expected);
    }
    EXPECT_NE(after[0], after[1]);
    keepSession(app, frame.session, folder.path("kept.wsn"));
    EXPECT_EQ(wellOf(byKeptSession()), after[0]);
}

void check(Frame& frame, PrdRow row, bool on) {
    EXPECT_TRUE(propertiesModel(frame.app, frame.session).setCheck(at(row), at(PrdColumn::Setting), on).done);
}

constexpr const char* houseStandard = WELVANE_SOURCE_DIR "/examples/house-standard.fil";
void nameFilter(Frame& frame) {
    EXPECT_TRUE(filterModel(frame.app, frame.session).edit(1, at(FrdColumn::Path), houseStandard).done);
}

const Deed deeds[] = {
    {"plain", [](Frame&) {}, [](PassRequest&) {}},
    {"depths", [](Frame& f) { set(f, PrdRow::From, "1100.1"), set(f, PrdRow::To, "<=1300"); },
     [](PassRequest& p) { p.from = DepthLimit::read("1100.1"), p.to = DepthLimit::read("<=1300"); }},
    {"step", [](Frame& f) { set(f, PrdRow::SampleRate, "0.3048"); }, [](PassRequest& p) { p.step = "0.3048"; }},
    {"listedStep", [](Frame& f) { set(f, PrdRow::SampleRate, "\" 1.0    f ( 0.3048 m)"); },
     [](PassRequest& p) { p.step = "0.3048"; }},
    {"feet", [](Frame& f) { set(f, PrdRow::DepthUnits, "F"); }, [](PassRequest& p) { p.unit = DepthUnit::F; }},
    {"offset", [](Frame& f) { set(f, PrdRow::DepthOffset, "1.5"); },
     [](PassRequest& p) { p.offset = GivenNumber(1.5); }},
    {"direction", [](Frame& f) { set(f, PrdRow::Direction, "Deep to Shallow"); },
     [](PassRequest& p) { p.direction = Direction::DeepToShallow; }},
    {"version", [](Frame& f) { set(f, PrdRow::Vers, "1.2"); }, [](PassRequest& p) { p.version = LasVersion::V1_2; }},
    {"null", [](Frame& f) { set(f, PrdRow::Null, "-9999"); }, [](PassRequest& p) { p.null = GivenNumber(-9999); }},
    {"fill", [](Frame& f) { set(f, PrdRow::NullFill, "Linear"); }, [](PassRequest& p) { p.fill = NullFill::Linear; }},
    {"header", [](Frame& f) { set(f, PrdRow::HeaderFile, f.session.slots[1].path.c_str()); },
     [](PassRequest& p) { p.header = "2"; }},
    {"decimals", [](Frame& f) { set(f, PrdRow::DataDecimals, "2"); },
     [](PassRequest& p) { p.format[5] = GivenNumber(2); }},
    {"colon", [](Frame& f) { set(f, PrdRow::FormatColon, "70"); },
     [](PassRequest& p) { p.format[2] = GivenNumber(70); }},
    {"merge", [](Frame& f) { check(f, PrdRow::MergeParameters, false); },
     [](PassRequest& p) { p.mergeParameters = false; }},
    {"plainTable",
     [](Frame& f) {
         check(f, PrdRow::PlainAscii, true), set(f, PrdRow::PlainAscii, "MNEM", PrdColumn::Option),
             set(f, PrdRow::PlainAscii, "Tab", PrdColumn::SecondOption);
     },
     [](PassRequest& p) { p.plain = TitleStyle::Mnem, p.separator = Separator::Tab; }},
    {"fillEmpty", [](Frame& f) { check(f, PrdRow::FillEmpty, true); }, [](PassRequest& p) { p.fillEmpty = true; }},
    {"details", [](Frame& f) { check(f, PrdRow::KeepInputDetails, true); },
     [](PassRequest& p) { p.keepDetails = true; }},
    {"smooth", [](Frame& f) { check(f, PrdRow::DovranFilter, true); }, [](PassRequest& p) { p.smooth = true; }},
    {"sections",
     [](Frame& f) {
         check(f, PrdRow::MergeParameters, false);
         moveSection(f.session, 2, 1);
     },
     [](PassRequest& p) {
         p.mergeParameters = false;
         p.sections = "WVCPO";
     }},
    {"shift",
     [](Frame& f) { EXPECT_TRUE(adjustChannel(f.session, linkRow(1, Link::Mnem), 1, "0.5", "1200", "1300").done); },
     [](PassRequest& p) {
         p.shifts = {{1, "GRC", 0.5}};
         p.clips = {{1, "GRC", GivenNumber(1200), GivenNumber(1300)}};
     }},
    {"select",
     [](Frame& f) {
         useAllChannels(f.session, false);
         CellTableModel m = newChannelsModel(f.app, f.session, {});
         m.setCheck(at(SrdRow::Use), 3, true);
         m.setCheck(at(SrdRow::Use), 1, true);
     },
     [](PassRequest& p) {
         p.select = {"GR", "SP"};
     }},
    {"wrapped",
     [](Frame& f) {
         set(f, PrdRow::Wrap, "Yes");
         // The lines have room, so each run asks but the verb's, whose option has said so.
         for (int run = 0; run < 3; ++run) static_cast<ScriptedInterface&>(f.app.user).willAnswer(Answer::Yes);
     },
     [](PassRequest& p) { p.wrap = Wrap::Yes; }},
    {"columnWidth",
     [](Frame& f) {
         set(f, PrdRow::ParsingOptions, "Column width of:");
         set(f, PrdRow::ParsingOptions, "13", PrdColumn::Option);
     },
     [](PassRequest& p) { p.columnWidth = GivenNumber(13); }},
    {"duplicates",
     [](Frame& f) {
         check(f, PrdRow::RenameDuplicates, false);
         EXPECT_TRUE(newChannelsModel(f.app, f.session, {}).edit(at(SrdRow::Mnem), 2, "GR").done);
     },
     [](PassRequest& p) {
         p.renameDuplicates = false;
         p.curves = {"GR.GAPI 30 310 01 00 : GAMMA RAY | GR", "GR.IN 70 280 01 00 : CALIPER | CALI"};
     }},
    {"spliceDepths",
     [](Frame& f) {
         CoverageTab tab(f.session);
         tab.type(0, "1010"), tab.type(1, "1160.02");
         tab.apply(0);
     },
     [](PassRequest& p) {
         p.applyDepths = {{0, {GivenNumber(1010), GivenNumber(1160.02)}}};
     }},
    {"filterAtTheRun",
     [](Frame& f) {
         nameFilter(f);
         EXPECT_TRUE(filterModel(f.app, f.session).setCheck(1, at(FrdColumn::Apply), true).done);
     },
     [](PassRequest& p) { p.filter = houseStandard, p.mergeParameters = true; }},
    {"filterByItsButton",
     [](Frame& f) {
         nameFilter(f);
         static_cast<ScriptedInterface&>(f.app.user).willAnswer(Answer::Ok);
         EXPECT_TRUE(switchFilter(f, true).done);
     },
     [](PassRequest& p) { p.filter = houseStandard, p.mergeParameters = true; }},
    {"editsBehindAFilter",
     [](Frame& f) {
         nameFilter(f);
         static_cast<ScriptedInterface&>(f.app.user).willAnswer(Answer::Ok);
         EXPECT_TRUE(switchFilter(f, true).done);
         set(f, PrdRow::Null, "-7777");
     },
     [](PassRequest& p) {
         p.filter = houseStandard, p.mergeParameters = true;
         p.null = GivenNumber(-7777);
     }},
};

INSTANTIATE_TEST_SUITE_P(Plain, WellLines, testing::Values(deeds[0]),
                         [](const auto&) { return std::string("edited"); });
INSTANTIATE_TEST_SUITE_P(Deeds, WindowAndVerb, testing::ValuesIn(deeds),
                         [](const auto& deed) { return std::string(deed.param.name); });

}  // namespace
}  // namespace welvane::test
