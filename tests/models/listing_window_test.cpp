#include "models/listing_window.h"

#include "listing/listing_options.h"
#include "listing/price.h"
#include "support/app_fixture.h"
#include "support/listing_well.h"

namespace welvane {
namespace {

struct ListingWindow : test::AppTest {
    ListingRequest request;
};

TEST_F(ListingWindow, runPutsItsTotalIntoThePriceGrid) {
    struct Case {
        const char *country, *unit, *feet, *total;
    };
    for (const Case& row : {Case{"Other", "F", "2.0", "$1.00"}, Case{"Other", "M", "6.6", "$3.30"},
                            Case{"Canada", "M", "2.0", "$1.00"}, Case{"Canada", "FT", "0.6", "$0.30"}}) {
        SCOPED_TRACE(std::string(row.country) + row.unit);
        app.settings.country = row.country;
        ListingSession session(app);
        editPriceValue(app, session.ord, PriceRow::PricePerFoot, "0.5");
        setPriceValue(session.ord, PriceRow::Minimum, "");
        request.files = {folder.writeLines("a.las", test::listingWell(row.unit))};
        EXPECT_TRUE(runListing(app, session, request).done());
        EXPECT_EQ(priceValue(session.ord, PriceRow::CurveFeet), row.feet);
        EXPECT_EQ(priceValue(session.ord, PriceRow::Total), row.total);
    }
    EXPECT_EQ(platform.settings().get("listdef", ""), "1|1|0|1|1|0|||COMP|WELL|STRT|STOP|STEP");

    ListingSession session(app);
    app.run.cancelRequested = true;
    user.willAnswer(Answer::Ok);
    EXPECT_TRUE(runListing(app, session, request).cancelled);
    EXPECT_EQ(box(), "Cancel Pressed: Multi-well listing cancelled by user. Listing file may be incomplete.");
}

TEST_F(ListingWindow, runValueIsRewrittenInTheFile) {
    const std::string path = folder.writeLines("a.las", test::listingWell("F"));
    const std::string without = folder.writeLines("b.las", "~V\n VERS. 2.0 : x\n~P\n EKB.   5 : x\n~A\n 1 2\n");
    Table vrd = makeVrd({path, without, folder.path("absent.las")});
    EXPECT_EQ(vrd.text(1, 1), "1");
    EXPECT_EQ(vrd.text(2, 1), "");

    user.willAnswer(Answer::No);
    EXPECT_EQ(editRun(app, vrd, 1, "2"), RunEdit::Declined);
    EXPECT_EQ(box(), "Run Changed!: Update LAS file with this run value?");
    EXPECT_EQ(vrd.text(1, 1), "1");

    user.willAnswer(Answer::Yes);
    EXPECT_EQ(editRun(app, vrd, 1, "2"), RunEdit::Done);
    EXPECT_EQ(vrd.text(1, 1), "2");
    EXPECT_NE(folder.read("a.las").find(" 2 "), std::string::npos);

    user.willAnswer(Answer::Yes);
    user.willAnswer(Answer::Ok);
    EXPECT_EQ(editRun(app, vrd, 2, "2"), RunEdit::NoRunLine);
    EXPECT_EQ(box(),
              "Problem Replacing Value: Unable to replace RUN Value, as no RUN parameter exists in the ~P section. "
              "Edit manually and add RUN to the ~Parameter section");

    const std::string tooShort = folder.writeLines("c.las", "~P\n RUN. 1 : x\n~A\n 1 2\n");
    user.willAnswer(Answer::Yes);
    user.willAnswer(Answer::Ok);  // the line is too short to edit
    user.willAnswer(Answer::Ok);
    EXPECT_EQ(editRun(app, tooShort, "2"), RunEdit::Failed);
    EXPECT_EQ(user.asked().back().text, "Unable to replace RUN Value. Edit manually. ");
}

}  // namespace
}  // namespace welvane
