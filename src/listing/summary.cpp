#include "listing/summary.h"

#include <array>
#include <ctime>
#include <mutex>

#include "listing/listing_text.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

constexpr std::size_t amountWidth = 13;
constexpr std::size_t curveTotalWidth = 11;
constexpr std::size_t uniqueColumn = 6;
constexpr std::size_t lengthColumn = 20;

void writeUniqueRow(std::string_view count, std::string_view mnem, std::string_view unit, std::string_view length,
                    OutputFile& output) {
    output.writeLine(columnText(count, uniqueColumn) + columnText(mnem, uniqueColumn) + columnText(unit, uniqueColumn) +
                     leftAligned(length, lengthColumn));
}

void writeTotals(const ListingTotals& totals, OutputFile& output) {
    output.writeLine("STATISTICS");
    output.writeLine("");
    output.writeLine("Total Curve-" + totals.depthUnit + " = " + formatMask(totals.fullCurve, 1));
    output.writeLine("");
    output.writeLine("Total Non-Null Curve-" + totals.depthUnit + " = " + formatMask(totals.nonNullCurve, 1));
    output.writeLine("");
}

/// By true figures lengths that nobody asked for, and that were perhaps not even counted, are left out.
void writeChannels(const ListingTotals& totals, const ListingOptions& options, OutputFile& output) {
    const bool lengths = options.footageStats || options.rules == FigureRules::asLaidDown;
    if (lengths) writeTotals(totals, output);
    output.writeLine("UNIQUE CHANNEL LISTING");
    output.writeLine("");
    writeUniqueRow("#", "Curve", "Units", lengths ? "Non-Null " + totals.depthUnit : "", output);
    output.writeLine(" - " + totals.index.mnem + "." + totals.index.unit + "   " + totals.index.desc);
    output.writeLine("");
    for (const UniqueChannel& channel : totals.unique.all())
        writeUniqueRow(std::to_string(channel.files), channel.mnem, channel.unit,
                       lengths ? formatMask(channel.footage, 4) : "", output);
}

float unitPrice(const ListingTotals& totals, const ListingOptions& options) {
    const double unit = static_cast<double>(options.price.pricePerUnit);
    // Kept: the unit price is that of the grid times the depth factor, also where the grid's price is for a metre and
    // the depths are metres already. Test: summaryWithItsCostEstimate
    if (!options.price.perMetre || options.rules == FigureRules::asLaidDown)
        return options.price.pricePerUnit * static_cast<float>(totals.depthFactor);
    return static_cast<float>(unit * metresInFoot * totals.depthFactor);
}

void writeCost(const ListingTotals& totals, const ListingOptions& options, OutputFile& output) {
    const PriceInput& price = options.price;
    output.writeLine("COST ESTIMATE");
    output.writeLine("");
    output.writeLine(rightJustified(formatMask(totals.nonNullCurve, 1), curveTotalWidth) + " cu-" + totals.depthUnit +
                     " @ " + dollars(unitPrice(totals, options), 5) + "/cu-" + totals.depthUnit);
    output.writeLine("");
    const bool hasOther = price.other > 0;
    const bool hasDiscount = price.discount > 0;
    if (hasOther)
        output.writeLine("  *Other Charges                  =" + rightJustified(dollars(price.other), amountWidth));
    output.writeLine("");
    if (hasDiscount)
        output.writeLine("   Discount                       -" + rightJustified(percent(price.discount), amountWidth));
    output.writeLine("");
    output.writeLine("   TOTAL                          =" +
                     rightJustified(dollars(estimateTotal(price, totals.sumOfPrices)), amountWidth));
    output.writeLine("");
    if (!hasOther && !hasDiscount) return;
    output.writeLine(hasOther ? "PRICING COMMENTS*" : "PRICING COMMENTS");
    output.writeLine("");
    output.writeLine(options.pricingComment);
    output.writeLine("");
}

}  // namespace

void ListingTotals::add(const FileListing& listing, const ListingOptions& options) {
    const LasStatistics& statistics = listing.statistics;
    if (!listing.hasLengths) withoutLengths.push_back(listing.path);
    if (!hasUnit && listing.hasLengths) {
        hasUnit = true;
        depthUnit = statistics.depthUnit;
        depthFactor = listing.depthFactor;
        if (!statistics.channels.empty()) index = statistics.channels.front().field;
    }
    const double factor = listing.hasLengths ? listing.depthFactor / depthFactor : 0;
    nonNullCurve += listing.curveTotal * factor;
    fullCurve += listing.fullTotal * factor;
    sumOfPrices += static_cast<double>(listing.price);
    if (!options.curveList) return;
    for (std::size_t channel = 1; channel < statistics.channels.size(); ++channel) {
        const ChannelStatistics& one = statistics.channels[channel];
        unique.add(one.field.mnem, one.field.unit, one.footage * factor);
    }
}

std::string dateText(std::chrono::year_month_day date) {
    constexpr std::array<std::string_view, 12> months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const unsigned day = static_cast<unsigned>(date.day());
    std::string text = day < 10 ? "0" : "";
    return text.append(std::to_string(day))
        .append("-")
        .append(months[static_cast<unsigned>(date.month()) - 1])
        .append("-")
        .append(std::to_string(static_cast<int>(date.year())));
}

std::chrono::year_month_day localToday() {
    static std::mutex oneAtATime;  // std::localtime answers in a place of its own
    const std::lock_guard<std::mutex> lock(oneAtATime);
    const std::time_t now = std::time(nullptr);
    const std::tm* const local = std::localtime(&now);
    if (local == nullptr) return std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
    return {std::chrono::year{local->tm_year + 1900}, std::chrono::month{static_cast<unsigned>(local->tm_mon + 1)},
            std::chrono::day{static_cast<unsigned>(local->tm_mday)}};
}

void writeSummary(const ListingTotals& totals, const ListingOptions& options, std::chrono::year_month_day today,
                  OutputFile& output) {
    output.writeLine("Multi LAS Listing Report from Welvane:          Date : " + dateText(today));
    output.writeLine("");
    output.writeLine(std::string(80, '-'));
    output.writeLine("SUMMARY LISTINGS");
    output.writeLine("");
    if (!options.comment.empty()) {
        output.writeLine("");
        output.writeLine(options.comment);
        output.writeLine("");
    }
    if (options.curveList) writeChannels(totals, options, output);
    if (options.includePrice) writeCost(totals, options, output);
}

}  // namespace welvane
