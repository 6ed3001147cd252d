#include "listing/file_report.h"

#include "las/data_access.h"
#include "las/run_turn.h"
#include "listing/listing_text.h"
#include "shared/failure.h"
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

void readFields(const LasFile& file, const std::vector<std::string>& mnemonics, std::vector<ListedField>& fields) {
    for (const std::string& mnemonic : mnemonics)
        fields.push_back({mnemonic, std::string(trim(file.value(mnemonic).text)), ""});
    LineReader header = file.text().lines();
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
StepResult readHeaderOnly(const LasFile& file, FileListing& listing) {
    const DepthHeader header = file.depthHeader();
    const SlotChannels channels = readSlotChannels(file);
    if (channels.empty()) return StepResult::Failed;
    listing.statistics.depthUnit = header.strt().unit.empty() ? header.stop().unit : header.strt().unit;
    for (const SlotChannel& channel : channels) listing.statistics.channels.emplace_back().field = channel.field;
    return StepResult::Done;
}

/// The same by true figures.
StepResult readTrueHeader(const LasFile& file, const ListingOptions& options, TrueStatistics& statistics) {
    statistics.unit = chooseIndexUnit(file.text(), options.indexUnit);
    const RecordShape shape = judgeRecords(file.text(), options.reading.decimalComma);
    for (const HeaderField& field : nameColumns(file.text(), shape.columns).channels)
        statistics.channels.emplace_back().field = field;
    statistics.depthUnit = shownUnit(statistics.unit);
    return statistics.channels.empty() ? StepResult::Failed : StepResult::Done;
}

StepResult readTrueListing(App& app, const LasFile& file, const std::string& name, const ListingOptions& options,
                           FileListing& listing) {
    TrueStatistics statistics;
    if (listing.hasStatistics) {
        RunTurn turn(app.run, app.user, file.bytes().size());
        const StatisticsWish wish{options.reading, options.indexUnit, options.topName};
        std::optional<TrueStatistics> read = readTrueStatistics(file, wish, name, turn);
        if (!read) return StepResult::Cancelled;
        statistics = std::move(*read);
    } else if (readTrueHeader(file, options, statistics) == StepResult::Failed) {
        throw RunTimeFailure("no channel in its header and no data");
    }
    listing.notes = std::move(statistics.notes);
    listing.hasLengths = statistics.unit.isLength();
    listing.depthFactor = listing.hasLengths ? statistics.unit.metres / metresInFoot : 1;
    listing.statistics = std::move(statistics);
    return StepResult::Done;
}

StepResult readListingAsLaidDown(App& app, const LasFile& file, const ListingOptions& options, FileListing& listing) {
    const StepResult read = listing.hasStatistics
                                ? readLasStatistics(file, options.topName, listing.statistics, app.run, app.user)
                                : readHeaderOnly(file, listing);
    listing.depthFactor = feetPerUnit(listing.statistics.depthUnit);
    return read;
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

void writeStatistics(const LasStatistics& statistics, FigureRules rules, OutputFile& output) {
    output.writeLine("Statistics:    Minimum     (@Depth)    Maximum     (@Depth)    Average  Standard Deviation");
    output.writeLine(std::string(30, ' ') + statistics.depthUnit + std::string(24, ' ') + statistics.depthUnit);
    for (std::size_t index = 1; index < statistics.channels.size(); ++index) {
        const ChannelStatistics& channel = statistics.channels[index];
        std::string line = nameAndUnit(channel.field);
        bool first = true;
        const double largest = largestOf(channel);
        for (const std::string& figure :
             {figureText(channel.minimum, rules), figureText(channel.minimumDepth, rules),
              figureText(channel.maximum, rules), figureText(channel.maximumDepth, rules),
              figureText(channel.mean, rules, largest), figureText(channel.standardDeviation, rules, largest)}) {
            if (!first) line += "  ";
            line += leftAligned(figure, valueWidth);
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

StepResult readFileListing(App& app, const LasFile& file, const std::string& name, const ListingOptions& options,
                           FileListing& listing) {
    listing = {};
    listing.path = name;
    listing.hasStatistics = options.needsStatistics();
    const StepResult read = options.rules == FigureRules::trueFigures
                                ? readTrueListing(app, file, name, options, listing)
                                : readListingAsLaidDown(app, file, options, listing);
    if (read != StepResult::Done) return read;
    listing.well = std::string(trim(file.value("WELL").text));
    if (options.mnemonicsList) readFields(file, options.mnemonics, listing.fields);
    const LasStatistics& statistics = listing.statistics;
    for (std::size_t index = 1; index < statistics.channels.size(); ++index)
        listing.curveTotal += statistics.channels[index].footage;
    if (!statistics.channels.empty())
        listing.fullTotal = static_cast<double>(statistics.channels.size() - 1) * (statistics.bottom - statistics.top);
    if (options.includePrice && listing.hasLengths)
        listing.price = wellPrice(options.price, listing.depthFactor, listing.curveTotal);
    file.needWhole();
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
    if (options.minMaxStats) writeStatistics(listing.statistics, options.rules, output);
    if (options.includePrice) {
        output.writeLine("");
        output.writeLine("Price Estimate this well: " + dollars(listing.price));
        output.writeLine("");
    }
}

}  // namespace welvane
