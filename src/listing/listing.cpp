#include "listing/listing.h"

#include <array>

#include "listing/run_value.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view listingName = "~~list.~~";
constexpr std::string_view cancelTitle = "Cancel Pressed";
constexpr std::string_view cancelText = "Multi-well listing cancelled by user. Listing file may be incomplete.";
constexpr std::array<std::string_view, 9> gridHeads = {"WellName", "Channel", "Min",   "Max",  "Average",
                                                       "STD",      "NNCF",    "Min @", "Max @"};
constexpr std::array<std::string_view, 9> gridOptions = {
    "Well Name and file name", "Each Channel ",        "Minimum Value",      "Maximum Value",     "Average Value",
    "Standard Deviation",      "None Null Curve Feet", "Depth at Min Value", "Depth at Max Value"};

std::string gridHead() {
    std::string text;
    for (const std::string_view head : gridHeads) text.append(text.empty() ? "" : "\t").append(head);
    return text;
}

void appendCsvLine(std::string& text, std::string_view row) {
    bool first = true;
    for (const std::string& field : split(row, '\t')) {
        if (!first) text += ',';
        first = false;
        if (field.find_first_of(",\"\r\n") == std::string::npos) {
            text += field;
            continue;
        }
        text += '"';
        for (const char c : field) text.append(c == '"' ? 2 : 1, c);
        text += '"';
    }
    text += "\r\n";
}

/// Text without what would break a row of tab-separated text.
std::string oneField(std::string text) {
    for (char& c : text)
        if (c == '\t' || c == '\r' || c == '\n') c = ' ';
    return text;
}

void tellProgress(App& app, std::size_t done, std::size_t all) {
    const double fraction = static_cast<double>(done) / static_cast<double>(all);
    app.run.progressFraction = static_cast<float>(fraction);
    app.run.statusText = std::to_string(100 * done / all) + "%";
    app.user.progress({app.run.statusText, fraction});
    if (!app.run.commandMode) app.user.pumpEvents();
}

void listFiles(App& app, const ListingOptions& options, const ListingRequest& request, StatisticsGrid& grid,
               ListingResult& result, OutputFile& output) {
    for (std::size_t number = 0; number < request.files.size(); ++number) {
        const std::string& path = request.files[number];
        tellProgress(app, number, request.files.size());
        if (app.run.cancelRequested) {
            result.cancelled = true;
            return;
        }
        app.run.sourceLabel = path;
        FileListing listing;
        const std::string source = request.open ? request.open(path) : path;
        const StepResult read = source.empty() ? StepResult::Failed : readFileListing(app, source, options, listing);
        listing.path = path;
        if (read == StepResult::Cancelled) {
            result.cancelled = true;
            return;
        }
        if (read == StepResult::Failed) {
            result.skipped.push_back(path);
            continue;
        }
        ++result.listed;
        writeFileListing(listing, options, output);
        if (listing.hasStatistics) grid.add(listing);
        result.totals.add(listing, options);
        if (request.onFile) request.onFile(listing);
    }
    if (!request.files.empty()) tellProgress(app, request.files.size(), request.files.size());
}

}  // namespace

std::vector<std::string_view> statisticsGridOptions() {
    return {gridOptions.begin(), gridOptions.end()};
}

void StatisticsGrid::add(const FileListing& listing) {
    const std::string file = fileNameOf(listing.path);
    const std::string well = oneField(listing.well.empty() ? file : listing.well + " (" + file + ")");
    for (std::size_t index = 1; index < listing.statistics.channels.size(); ++index) {
        const ChannelStatistics& channel = listing.statistics.channels[index];
        std::string row = well + "\t" + oneField(channel.field.mnem + "." + channel.field.unit);
        for (const double value : {channel.minimum, channel.maximum, channel.mean, channel.standardDeviation,
                                   channel.footage, channel.minimumDepth, channel.maximumDepth})
            row.append("\t").append(formatMask(value, 4));
        rows.push_back(std::move(row));
    }
}

std::string StatisticsGrid::asText() const {
    std::string text = gridHead() + "\r\n";
    for (const std::string& row : rows) text.append(row).append("\r\n");
    return text;
}

std::string StatisticsGrid::asCsv() const {
    std::string text;
    appendCsvLine(text, gridHead());
    for (const std::string& row : rows) appendCsvLine(text, row);
    return text;
}

ListingSession::ListingSession(App& app) : ord(makeListingOrd(app)), vrd(makeVrd({})) {}

ListingResult propertyListing(App& app, const ListingOptions& options, const ListingRequest& request,
                              StatisticsGrid& grid) {
    ListingResult result;
    grid.rows.clear();
    try {
        result.listingPath =
            request.listingPath.empty() ? app.platform.scratchFolder() + std::string(listingName) : request.listingPath;
        OutputFile output(result.listingPath, request.mode);
        app.run.targetLabel = result.listingPath;
        listFiles(app, options, request, grid, result, output);
        // What was listed up to a cancel is kept, as the box says; a file written beside is not.
        if (!result.cancelled || request.mode == OutputFile::Mode::InPlace) output.commit();
        if (result.cancelled) return result;
        if (!result.totals.hasUnit) result.totals.depthUnit = options.price.perMetre ? "M" : "F";
        if (request.reportPath.empty()) return result;
        OutputFile report(request.reportPath, request.mode);
        writeSummary(result.totals, options, request.today.value_or(localToday()), report);
        report.commit();
    } catch (const std::exception& error) {
        result.why = error.what();
    }
    return result;
}

double totalForPrice(const Table& ord, const ListingTotals& totals) {
    const bool perMetre = pricePerMetre(ord);
    if (perMetre && beginsWith(totals.depthUnit, "F")) return totals.nonNullCurve * 0.3048;
    if (!perMetre && beginsWith(totals.depthUnit, "M")) return totals.nonNullCurve / 0.3048;
    return totals.nonNullCurve;
}

ListingResult runListing(App& app, ListingSession& session, ListingRequest request) {
    if (request.reportPath.empty()) request.reportPath = session.reportPath;
    app.platform.settings().put("listdef", optionsText(session.ord));
    ListingResult result;
    try {
        result = propertyListing(app, readListingOptions(session.ord), request, session.srd);
    } catch (const std::exception& error) {
        result.why = error.what();
        return result;
    }
    if (result.cancelled) {
        app.user.ask({.title = std::string(cancelTitle), .text = std::string(cancelText), .icon = Icon::Information});
        return result;
    }
    setPriceValue(session.ord, PriceRow::CurveFeet, formatMask(totalForPrice(session.ord, result.totals), 1));
    CalcPrice(session.ord);
    return result;
}

}  // namespace welvane
