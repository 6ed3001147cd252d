#include "listing/listing.h"

#include "support/app_fixture.h"
#include "support/listing_well.h"

namespace welvane {
namespace {

using test::listingWell;

struct Listing : test::AppTest {
    ListingOptions options;
    StatisticsGrid grid;
    ListingRequest request;

    Listing() {
        request.reportPath = folder.path("report.txt");
        request.today = std::chrono::year_month_day{std::chrono::year{2024}, std::chrono::June, std::chrono::day{7}};
        options.price.pricePerUnit = 0.5F;
    }
    void all() {
        options.curveList = options.footageStats = options.intervals = options.minMaxStats = options.mnemonicsList =
            options.includePrice = true;
        options.mnemonics = {"WELL", "NOT"};
    }
    ListingResult run() { return propertyListing(app, options, request, grid); }
    std::string listing() { return withoutReturns(platform.scratchFolder() + "~~list.~~"); }
    std::string summary() { return withoutReturns(request.reportPath); }
    static std::string withoutReturns(const std::string& path) {
        std::string text = test::TempFolder::readFile(path);
        std::erase(text, '\r');
        return text;
    }
};

TEST_F(Listing, ofOneFileWithEveryOption) {
    all();
    const std::string path = folder.writeLines("a.las", listingWell("F"));
    request.files = {path};
    EXPECT_TRUE(run().done());
    EXPECT_EQ(listing(),
              std::string(80, '_') + "\nLISTING for : " + path +
                  "\n\n\n"
                  "Mnemonics\n\nWELL: Well 1 WELL NAME\nNOT:  \n\n"
                  "\nCurves      Non-Null Curve F        Non-null Intervals\n\n"
                  "DEPT  .F            0.0 c-F : ()\n"
                  "GR    .GAPI         2.0 c-F : (100.0- 101.0 /103.0- 104.0)\n"
                  "DT    .US/F         0.0 c-F : ()\n"
                  "RHOB  .G/C3         0.0 c-F : (102.0- 102.0)\n"
                  "Total C-F :        2.0\n\n"
                  "Statistics:    Minimum     (@Depth)    Maximum     (@Depth)    Average  Standard Deviation\n" +
                  std::string(30, ' ') + "F" + std::string(24, ' ') +
                  "F\n"
                  "GR    .GAPI    10.0000     100.0000    60.0000     104.0000    30.0000     21.6025   \n"
                  "DT    .US/F    0.0000      0.0000      0.0000      0.0000      0.0000      0.0000    \n"
                  "RHOB  .G/C3    2.5000      102.0000    2.5000      102.0000    2.5000      0.0000    \n"
                  "\nPrice Estimate this well: $1.00\n\n");
    EXPECT_EQ(grid.asText(),
              "WellName\tChannel\tMin\tMax\tAverage\tSTD\tNNCF\tMin @\tMax @\r\n"
              "Well 1 (a.las)\tGR.GAPI\t10.0000\t60.0000\t30.0000\t21.6025\t2.0000\t100.0000\t104.0000\r\n"
              "Well 1 (a.las)\tDT.US/F\t0.0000\t0.0000\t0.0000\t0.0000\t0.0000\t0.0000\t0.0000\r\n"
              "Well 1 (a.las)\tRHOB.G/C3\t2.5000\t2.5000\t2.5000\t0.0000\t0.0000\t102.0000\t102.0000\r\n");
}

TEST_F(Listing, leavesOutWhatIsSwitchedOff) {
    struct Case {
        const char* name;
        bool ListingOptions::*option;
        const char* text;
    };
    request.files = {folder.writeLines("a.las", listingWell("M"))};
    for (const Case& row : {Case{"curves", &ListingOptions::curveList,
                                 "\n\nCurves      Non-Null Curve M    \n\nDEPT  .M       \nGR    .GAPI    \n"},
                            Case{"footage", &ListingOptions::footageStats, "Total C-M :        2.0\n"},
                            Case{"statistics", &ListingOptions::minMaxStats, "Statistics:"},
                            Case{"mnemonics", &ListingOptions::mnemonicsList, "Mnemonics\n\n\n"},
                            Case{"price", &ListingOptions::includePrice, "Price Estimate this well: $3.28\n"}}) {
        SCOPED_TRACE(row.name);
        options = {};
        options.price.pricePerUnit = 0.5F;
        EXPECT_TRUE(run().done());
        EXPECT_EQ(listing().find(row.text), std::string::npos);
        options.*row.option = true;
        EXPECT_TRUE(run().done());
        EXPECT_NE(listing().find(row.text), std::string::npos) << listing();
    }
}

TEST_F(Listing, summaryWithItsCostEstimate) {
    all();
    options.comment = "A comment";
    options.price.other = 50;
    options.price.discount = 10;
    options.pricingComment = "net 30 days";
    // The second well in metres counts in the unit of the first one.
    request.files = {folder.writeLines("a.las", listingWell("F")), folder.writeLines("b.las", listingWell("M")),
                     folder.writeLines("c.las", listingWell("F"))};
    const ListingResult result = run();
    EXPECT_TRUE(result.done());
    EXPECT_NEAR(result.totals.nonNullCurve, 4 + 2 / 0.3048, 1e-9);
    EXPECT_EQ(summary(), "Multi LAS Listing Report from Welvane:          Date : 07-Jun-2024\n\n" +
                             std::string(80, '-') +
                             "\nSUMMARY LISTINGS\n\n\nA comment\n\n"
                             "STATISTICS\n\nTotal Curve-F = 63.4\n\nTotal Non-Null Curve-F = 10.6\n\n"
                             "UNIQUE CHANNEL LISTING\n\n"
                             "#     Curve Units Non-Null F          \n"
                             " - DEPT.F   DEPTH\n\n"
                             "3     GR    GAPI  10.5617             \n"
                             "3     DT    US/F  0.0000              \n"
                             "3     RHOB  G/C3  0.0000              \n"
                             "COST ESTIMATE\n\n"
                             "       10.6 cu-F @ $0.50000/cu-F\n\n"
                             "  *Other Charges                  =       $50.00\n\n"
                             "   Discount                       -       %10.00\n\n"
                             "   TOTAL                          =       $49.75\n\n"
                             "PRICING COMMENTS*\n\nnet 30 days\n\n");

    options.price.perMetre = true;
    options.price.other = options.price.discount = 0;
    request.files = {folder.path("b.las")};
    EXPECT_TRUE(run().done());
    EXPECT_NE(
        summary().find("        2.0 cu-M @ $1.64042/cu-M\n\n\n\n   TOTAL                          =        $1.00\n\n"),
        std::string::npos)
        << summary();
    EXPECT_EQ(summary().find("PRICING COMMENTS"), std::string::npos);
}

TEST_F(Listing, usesATopOrTellsThatItIsAbsent) {
    options.footageStats = true;
    request.files = {folder.writeLines("a.las", listingWell("F", "[TOPS]\n 101.0 | Viking\n 103.5 | Base\n"))};
    options.topName = "viking";
    EXPECT_TRUE(run().done());
    EXPECT_NE(listing().find("\nUsing TOP interval: viking from 101.00 to 103.50F\n"), std::string::npos) << listing();
    options.topName = "Lower";
    EXPECT_TRUE(run().done());
    EXPECT_NE(listing().find("\nTOP, Lower not found. Using entire LAS interval\n"), std::string::npos) << listing();
}

TEST_F(Listing, skipsFilesThatCannotBeRead) {
    for (const bool data : {false, true}) {
        SCOPED_TRACE(data);
        all();
        if (!data) options = {};
        request.files = {folder.path("absent.las"), folder.writeLines("a.las", listingWell("F")),
                         folder.write("binary.las", std::string("\0\1\2", 3)), folder.path()};
        std::size_t seen = 0;
        request.onFile = [&seen](const FileListing&) { ++seen; };
        for (int box = 0; data && box < 2; ++box)
            user.willAnswer(Answer::Ok);  // null and depth unit absent in the binary file
        const ListingResult result = run();
        EXPECT_TRUE(result.done());
        EXPECT_EQ(result.skipped, (std::vector<std::string>{request.files[0], request.files[2], request.files[3]}));
        EXPECT_EQ(result.listed, 1U);
        EXPECT_EQ(seen, 1U);
    }
    request.reportPath = folder.path("no/such/folder/report.txt");
    request.files.clear();
    EXPECT_FALSE(run().why.empty());
}

TEST_F(Listing, gridAsCsvQuotesWhatNeedsIt) {
    grid.rows = {"Smith, \"A\"\tGR.GAPI\t1.0000"};
    EXPECT_EQ(grid.asCsv(),
              "WellName,Channel,Min,Max,Average,STD,NNCF,Min @,Max @\r\n\"Smith, \"\"A\"\"\",GR.GAPI,1.0000\r\n");
}

TEST_F(Listing, uniqueChannelsIgnoreCase) {
    UniqueChannels unique;
    unique.add("GR", "GAPI", 1);
    unique.add("gr", "gapi", 2);
    unique.add("GR", "API", 4);
    unique.add("G", "RGAPI", 8);
    ASSERT_EQ(unique.all().size(), 3U);
    EXPECT_EQ(unique.all()[0].files, 2U);
    EXPECT_EQ(unique.all()[0].footage, 3);
}

}  // namespace
}  // namespace welvane
