#include "listing/listing.h"

#include <array>
#include <new>

#include "listing/listing_text.h"
#include "shared/csv.h"
#include "shared/files.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view listingName = "~~list.~~";
constexpr std::array<StatisticsColumn, 9> gridColumns = {{{"WellName", "Well Name and file name"},
                                                          {"Channel", "Each Channel "},
                                                          {"Min", "Minimum Value"},
                                                          {"Max", "Maximum Value"},
                                                          {"Average", "Average Value"},
                                                          {"STD", "Standard Deviation"},
                                                          {"NNCF", "None Null Curve Feet"},
                                                          {"Min @", "Depth at Min Value"},
                                                          {"Max @", "Depth at Max Value"}}};

std::string gridHead() {
    std::string text;
    for (const StatisticsColumn& column : gridColumns) text.append(text.empty() ? "" : "\t").append(column.head);
    return text;
}

void appendCsvLine(std::string& text, std::string_view row) {
    bool first = true;
    for (const std::string& field : split(row, '\t')) {
        if (!first) text += ',';
        first = false;
        appendCsvField(text, field);
    }
    text += csvRowEnd;
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

StepResult openAndRead(App& app, const ListingOptions& options, const ListingRequest& request, const std::string& path,
                       FileListing& listing) {
    const LasFilePointer file = request.open ? request.open(path) : openLasFile(path);
    return file ? readFileListing(app, *file, path, options, listing) : StepResult::Failed;
}

StepResult readNamed(App& app, const ListingOptions& options, const ListingRequest& request, std::size_t number,
                     FileListing& listing) {
    const std::string& path = request.files[number];
    try {
        const StepResult read =
            request.read ? request.read(number, listing) : openAndRead(app, options, request, path, listing);
        const bool taken = read != StepResult::Done || !request.accept || request.accept(listing);
        return taken ? read : StepResult::Failed;
    } catch (const std::runtime_error&) {
        if (request.onUnreadable) request.onUnreadable(path);
        return StepResult::Failed;
    }
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
        const StepResult read = readNamed(app, options, request, number, listing);
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
        if (listing.hasStatistics) grid.add(listing, options.rules);
        result.totals.add(listing, options);
        if (request.onFile) request.onFile(listing);
    }
    if (!request.files.empty()) tellProgress(app, request.files.size(), request.files.size());
}

}  // namespace

std::span<const StatisticsColumn> statisticsColumns() {
    return gridColumns;
}

void StatisticsGrid::add(const FileListing& listing, FigureRules rules) {
    const std::string file = fileNameOf(listing.path);
    const std::string well = oneField(listing.well.empty() ? file : listing.well + " (" + file + ")");
    for (std::size_t index = 1; index < listing.statistics.channels.size(); ++index) {
        const ChannelStatistics& channel = listing.statistics.channels[index];
        std::string row = well + "\t" + oneField(channel.field.mnem + "." + channel.field.unit);
        const double largest = largestOf(channel);
        for (const std::string& figure :
             {figureText(channel.minimum, rules), figureText(channel.maximum, rules),
              figureText(channel.mean, rules, largest), figureText(channel.standardDeviation, rules, largest),
              figureText(channel.footage, rules), figureText(channel.minimumDepth, rules),
              figureText(channel.maximumDepth, rules)})
            row.append("\t").append(figure);
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
        if (!result.totals.hasUnit) {
            result.totals.depthUnit = options.price.perMetre ? "M" : "F";
            result.totals.depthFactor = feetPerUnit(result.totals.depthUnit);
        }
        if (request.reportPath.empty()) return result;
        OutputFile report(request.reportPath, request.mode);
        writeSummary(result.totals, options, request.today.value_or(localToday()), report);
        report.commit();
    } catch (const std::bad_alloc&) {
        result.why = "out of memory";
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

}  // namespace welvane
