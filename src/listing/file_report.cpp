#include "listing/file_report.h"

#include "las/data_access.h"
#include "las/sections.h"
#include "listing/listing_text.h"
#include "platform/mapped_file.h"
#include "shared/line_reader.h"
#include "shared/numbers.h"

namespace welvane {

namespace {

constexpr std::size_t nameWidth = 6;
constexpr std::size_t footageWidth = 8;
constexpr std::size_t valueWidth = 10;

std::string nameAndUnit(const HeaderField& field) {
    return leftAligned(field.mnem, nameWidth) + "." + leftAligned(field.unit, nameWidth) + "  ";
}

/// Description of a header line. In ~Well of LAS 1.2 the two texts stand the other way round, but for the depth lines
/// and NULL.
std::string descriptionOf(const HeaderField& line, std::string_view value) {
    const bool swapped = !value.empty() && sameText(trim(line.desc), value) && !sameText(trim(line.value), value);
    return std::string(trim(swapped ? line.value : line.desc));
}

void readFields(std::string_view path, const std::vector<std::string>& mnemonics, std::vector<ListedField>& fields) {
    for (const std::string& mnemonic : mnemonics)
        fields.push_back({mnemonic, std::string(trim(getFileValue(path, mnemonic))), ""});
    const auto file = MappedFile::open(path);
    if (!file) return;
    LineReader header(file->bytes());
    HeaderField parsed;
    std::vector<bool> found(fields.size());
    for (std::string_view line; header.next(line) && !beginsWith(trimLeft(line), "~A");) {
        if (lineKind(line) != LineKind::Data || !parseHeaderLine(line, parsed)) continue;
        for (std::size_t index = 0; index < fields.size(); ++index) {
            if (found[index] || !sameText(parsed.mnem, fields[index].mnem)) continue;
            found[index] = true;
            fields[index].desc = descriptionOf(parsed, fields[index].value);
        }
    }
}

/// The header alone, where no option asks for the data.
StepResult readHeaderOnly(std::string_view path, FileListing& listing) {
    const DepthHeader header = getDepthHeader(path);
    const SlotChannels channels = readSlotChannels(path);
    if (header.indexName.empty() || channels.empty()) return StepResult::Failed;
    listing.statistics.depthUnit = header.strt().unit.empty() ? header.stop().unit : header.strt().unit;
    for (const SlotChannel& channel : channels) listing.statistics.channels.emplace_back().field = channel.field;
    return StepResult::Done;
}

void writeTop(const LasStatistics& statistics, std::string_view topName, OutputFile& output) {
    if (topName.empty()) return;
    if (!statistics.formationFound) {
        output.writeLine("TOP, " + std::string(topName) + " not found. Using entire LAS interval");
        return;
    }
    output.writeLine("Using TOP interval: " + std::string(topName) + " from " + formatMask(statistics.top, 2) + " to " +
                     formatMask(statistics.bottom, 2) + statistics.depthUnit);
}

void writeFields(const FileListing& listing, OutputFile& output) {
    output.writeLine("Mnemonics");
    output.writeLine("");
    for (const ListedField& field : listing.fields)
        output.writeLine(field.mnem + ": " + field.value + " " + field.desc);
    output.writeLine("");
}

void writeCurves(const FileListing& listing, const ListingOptions& options, OutputFile& output) {
    const std::string& unit = listing.statistics.depthUnit;
    output.writeLine("");
    output.writeLine("Curves      Non-Null Curve " + unit + "    " +
                     (options.intervals ? "    Non-null Intervals" : ""));
    output.writeLine("");
    for (const ChannelStatistics& channel : listing.statistics.channels) {
        output.write(nameAndUnit(channel.field));
        if (options.footageStats) {
            output.write(rightJustified(formatMask(channel.footage, 1), footageWidth) + " c-" + unit);
            if (options.intervals) {
                output.write(" : (");
                output.write(channel.intervalText);
                output.write(")");
            }
        }
        output.writeLine("");
    }
}

void writeStatistics(const LasStatistics& statistics, OutputFile& output) {
    output.writeLine("Statistics:    Minimum     (@Depth)    Maximum     (@Depth)    Average  Standard Deviation");
    output.writeLine(std::string(30, ' ') + statistics.depthUnit + std::string(24, ' ') + statistics.depthUnit);
    for (std::size_t index = 1; index < statistics.channels.size(); ++index) {
        const ChannelStatistics& channel = statistics.channels[index];
        std::string line = nameAndUnit(channel.field);
        bool first = true;
        for (const double value : {channel.minimum, channel.minimumDepth, channel.maximum, channel.maximumDepth,
                                   channel.mean, channel.standardDeviation}) {
            if (!first) line += "  ";
            line += leftAligned(formatMask(value, 4), valueWidth);
            first = false;
        }
        output.writeLine(line);
    }
}

}  // namespace

ListingOptions readListingOptions(const Table& ord) {
    ListingOptions options;
    options.curveList = optionOn(ord, OptionRow::CurveList);
    options.footageStats = optionOn(ord, OptionRow::FootageStats);
    options.intervals = optionOn(ord, OptionRow::Intervals);
    options.minMaxStats = optionOn(ord, OptionRow::MinMaxStats);
    options.mnemonicsList = optionOn(ord, OptionRow::FirstMnemonic);
    options.includePrice = includePrice(ord);
    options.topName = std::string(trim(optionText(ord, OptionRow::TopName)));
    options.comment = optionText(ord, OptionRow::Comment);
    options.pricingComment = std::string(priceValue(ord, PriceRow::Comments));
    options.mnemonics = listedMnemonics(ord);
    options.price = readPriceInput(ord);
    return options;
}

StepResult readFileListing(App& app, std::string_view path, const ListingOptions& options, FileListing& listing) {
    listing = {};
    listing.path = path;
    listing.hasStatistics = options.needsStatistics();
    const StepResult read = listing.hasStatistics
                                ? readLasStatistics(path, options.topName, listing.statistics, app.run, app.user)
                                : readHeaderOnly(path, listing);
    if (read != StepResult::Done) return read;
    listing.well = std::string(trim(getFileValue(path, "WELL")));
    if (options.mnemonicsList) readFields(path, options.mnemonics, listing.fields);
    const LasStatistics& statistics = listing.statistics;
    listing.depthFactor = feetPerUnit(statistics.depthUnit);
    for (std::size_t index = 1; index < statistics.channels.size(); ++index)
        listing.curveTotal += statistics.channels[index].footage;
    if (!statistics.channels.empty())
        listing.fullTotal = static_cast<double>(statistics.channels.size() - 1) * (statistics.bottom - statistics.top);
    if (options.includePrice) listing.price = wellPrice(options.price, listing.depthFactor, listing.curveTotal);
    return StepResult::Done;
}

void writeFileListing(const FileListing& listing, const ListingOptions& options, OutputFile& output) {
    output.writeLine(std::string(80, '_'));
    output.writeLine("LISTING for : " + listing.path);
    output.writeLine("");
    if (listing.hasStatistics) writeTop(listing.statistics, options.topName, output);
    output.writeLine("");
    if (options.mnemonicsList) writeFields(listing, output);
    if (options.curveList) writeCurves(listing, options, output);
    if (options.footageStats) {
        output.writeLine("Total C-" + listing.statistics.depthUnit + " :   " +
                         rightJustified(formatMask(listing.curveTotal, 1), footageWidth));
        output.writeLine("");
    }
    if (options.minMaxStats) writeStatistics(listing.statistics, output);
    if (options.includePrice) {
        output.writeLine("");
        output.writeLine("Price Estimate this well: " + dollars(listing.price));
        output.writeLine("");
    }
}

}  // namespace welvane
