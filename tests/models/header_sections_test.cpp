#include <filesystem>

#include "jobs/process.h"
#include "models/section_rules.h"
#include "models/table_models.h"
#include "shared/text.h"
#include "support/session_fixture.h"

namespace welvane::test {

class HeaderSections : public SessionTest {
  protected:
    HeaderSections() {
        session.rules = FigureRules::trueFigures;
        app.settings.certifyAfter = app.settings.editAfter = false;
    }

    void open(int slot, const std::string& sections) {
        session.slots[slot].path = folder.writeLines(
            "file" + std::to_string(slot) + ".las",
            "~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 1 :\nSTOP.M 3 :\nSTEP.M 1 :\nNULL. -999.25 :\n~C\nDEPT.M :\nGR. "
            ":\n" +
                sections + "~A\n1 10\n2 20\n3 30\n");
        ASSERT_TRUE(Open4Files(app, session, slot).done());
    }
    /// The lines of a run's header behind its curves.
    Texts written() {
        app.run.targetFile = folder.path("out.las");
        ProcessRequest request;
        request.sessionOpen = true;
        EXPECT_TRUE(process(app, session, request).completed);
        const std::string text = replaceAll(folder.read("out.las"), "\r", "");
        std::filesystem::remove(folder.path("out.las"));
        const std::size_t from = text.find('~', text.find("~C") + 1), to = text.find("~A");
        Texts lines = split(text.substr(from, to - from), '\n');
        lines.pop_back();
        return lines;
    }
    EditOutcome rename(int column, const char* name) {
        return sectionsModel(app, session).edit(at(OrdRow::Name), column, name);
    }
};

TEST_F(HeaderSections, OfTheirOwnAreRenamedAndLeftOutAlone) {
    open(0, "~O\nother text\n~Core\ncore 1\n~Tops\ntop 1\n~Tops\ntop 2\n");
    EXPECT_EQ(written(), (Texts{"~O", "other text", "~Core", "core 1", "~Tops", "top 1", "~Tops", "top 2"}));
    EXPECT_EQ(sectionList(session, 5), "") << "no ~Curve";
    EXPECT_FALSE(includeSection(app, session, 5, false)) << "and nothing that is asked about";
    EXPECT_TRUE(includeSection(app, session, 5, true));
    EXPECT_EQ(rename(5, "~Curves too").why, "\"~Curves too\" is the name of a section of the standard");
    EXPECT_TRUE(rename(5, "~Cores").done);
    EXPECT_TRUE(rename(5, "~Kernel").done);
    EXPECT_EQ(written(), (Texts{"~O", "other text", "~Kernel", "core 1", "~Tops", "top 1", "~Tops", "top 2"}));
    EXPECT_FALSE(includeSection(app, session, 4, false));
    EXPECT_EQ(written(), (Texts{"~Kernel", "core 1", "~Tops", "top 1", "~Tops", "top 2"}))
        << "what the table does not show stays";
}

TEST_F(HeaderSections, OfAnotherFilesHeaderComeAlong) {
    open(0, "");
    open(1, "~Other\nother text\n~Core\ncore 1\n");
    EXPECT_EQ(written(), (Texts{"~Other Information", "other text", "~Core", "core 1"}));
    EXPECT_FALSE(includeSection(app, session, 5, false));
    EXPECT_EQ(written(), (Texts{"~Core", "core 1"}));
}

}  // namespace welvane::test
