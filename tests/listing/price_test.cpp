#include "listing/price.h"

#include "listing/listing_options.h"
#include "support/app_fixture.h"

namespace welvane {
namespace {

using Price = test::AppTest;

TEST_F(Price, totalFollowsTheCells) {
    struct Case {
        const char *name, *feet, *price, *other, *discount, *minimum, *total;
    };
    for (const Case& row : {
             Case{"extras empty", "10000", "0.042", "", "", "150.00", "$420.00"},
             Case{"taken up to the minimum", "1000", "0.042", "", "", "150.00", "$150.00"},
             Case{"no floor", "1000", "0.042", "", "", "0", "$42.00"},
             Case{"other and discount", "10000", "0.042", "80", "10", "150", "$450.00"},
             Case{"discount 100 with a minimum", "10000", "0.042", "80", "100", "150", "$150.00"},
             Case{"discount 100 without", "10000", "0.042", "80", "100", "", "$0.00"},
             Case{"half a cent as a person reads it", "1", "10.005", "", "", "", "$10.01"},
             Case{"single precision", "16777217", "1", "", "", "", "$16777216.00"},
             Case{"credit", "0", "1", "-5", "", "", "-$5.00"},
             Case{"no numbers", "x", "", "", "", "", "$0.00"},
             Case{"beyond a single", "1E39", "1", "", "", "", ""},
             Case{"product beyond a single", "1E38", "100", "", "", "", ""},
         }) {
        SCOPED_TRACE(row.name);
        Table ord = makeListingOrd(app);
        setPriceValue(ord, PriceRow::CurveFeet, row.feet);
        setPriceValue(ord, PriceRow::PricePerFoot, row.price);
        setPriceValue(ord, PriceRow::Other, row.other);
        setPriceValue(ord, PriceRow::Discount, row.discount);
        setPriceValue(ord, PriceRow::Minimum, row.minimum);
        CalcPrice(ord);
        EXPECT_EQ(priceValue(ord, PriceRow::Total), row.total);
    }
}

TEST_F(Price, ofAWellFollowsItsUnitAndThePricesUnit) {
    struct Case {
        const char* name;
        bool perMetre;
        double factor, total;
        float minimum;
        const char* price;
    };
    for (const Case& row : {
             Case{"feet by the foot", false, 1, 1000, 0, "$100.00"},
             Case{"metres by the foot", false, 1 / 0.3048, 304.8, 0, "$100.00"},
             Case{"metres by the metre", true, 1 / 0.3048, 1000, 0, "$100.00"},
             Case{"feet by the metre", true, 1, 1000, 0, "$30.48"},
             Case{"floor", true, 1, 1000, 150, "$150.00"},
         }) {
        SCOPED_TRACE(row.name);
        PriceInput input;
        input.pricePerUnit = 0.1F;
        input.perMetre = row.perMetre;
        input.minimum = row.minimum;
        EXPECT_EQ(dollars(wellPrice(input, row.factor, row.total)), row.price);
    }
    PriceInput input;
    input.other = 50;
    input.discount = 10;
    EXPECT_EQ(dollars(estimateTotal(input, 150)), "$180.00");
    EXPECT_EQ(percent(input.discount), "%10.00");
}

TEST_F(Price, isKeptInTheSettingsWhenEdited) {
    Table ord = makeListingOrd(app);
    EXPECT_EQ(priceValue(ord, PriceRow::PricePerFoot), "0.042");
    EXPECT_EQ(ord.text(2, 5), "0.0420");
    EXPECT_EQ(priceValue(ord, PriceRow::Minimum), "150.00");
    EXPECT_EQ(ord.text(2, 4), "$/Curve-Ft");
    EXPECT_EQ(totalCurveLabel("Other"), "Total Curve-Ft");
    editPriceValue(app, ord, PriceRow::PricePerFoot, "0.5");
    editPriceValue(app, ord, PriceRow::Minimum, "");
    editPriceValue(app, ord, PriceRow::Other, "7");
    EXPECT_EQ(ord.text(6, 5), "$7.00") << "the total follows each edit";
    EXPECT_EQ(platform.settings().get("pricepercurvefoot", "-"), "0.5");
    EXPECT_EQ(platform.settings().get("minPrice", "-"), "");

    app.settings.country = "canada";
    ord = makeListingOrd(app);
    EXPECT_EQ(priceValue(ord, PriceRow::PricePerFoot), "0.5");
    EXPECT_EQ(ord.text(2, 4), "$/Curve-M");
    EXPECT_EQ(totalCurveLabel("CANADA"), "Total Curve-M");
}

TEST_F(Price, gridCarriesTheOptions) {
    Table ord = makeListingOrd(app);
    EXPECT_EQ(ord.text(0, 0), "Statistics");
    EXPECT_EQ(ord.text(0, 5), "Settings");
    EXPECT_EQ(ord.text(5, 0), "Over Top Named...");
    EXPECT_EQ(ord.text(8, 4), "Pricing Comments");
    EXPECT_EQ(listedMnemonics(ord), (std::vector<std::string>{"COMP", "WELL", "STRT", "STOP", "STEP"}));
    ord.text(7, 1) = "API| UWI ||";
    EXPECT_EQ(listedMnemonics(ord).front(), "API");
    setListedMnemonics(ord, {"LOC", "API"});
    EXPECT_EQ(listedMnemonics(ord), (std::vector<std::string>{"LOC", "API"}));
    setOption(ord, OptionRow::Intervals, true);
    EXPECT_EQ(optionsText(ord), "1|1|1|1|1|0|||LOC|API");
}

}  // namespace
}  // namespace welvane
