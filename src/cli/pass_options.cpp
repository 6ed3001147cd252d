#include "cli/pass_options.h"

#include "session/properties.h"

namespace welvane {

namespace {

/// The option that sets a property.
VerbOption optionOf(PrdRow row, OptionPlace place, PrdColumn column = PrdColumn::Setting) {
    const Property& property = *findProperty(row, column);
    return {property.option, place, property.form, property.help};
}

}  // namespace

void addPassOptions(VerbOptions& rows, PassTexts& c) {
    addOptions(
        rows, "Grid",
        {optionOf(PrdRow::From, &c.from),
         optionOf(PrdRow::To, &c.to),
         optionOf(PrdRow::SampleRate, &c.request.step),
         optionOf(PrdRow::DepthUnits, &c.unit),
         optionOf(PrdRow::DepthOffset, &c.offset),
         optionOf(PrdRow::Direction, &c.direction),
         optionOf(PrdRow::NullFill, &c.fill),
         optionOf(PrdRow::ApplyTvd, &c.request.tvd),
         {"--tvd-unit", &c.tvdUnit, "F|M", "Unit of a survey that does not say it (that of the inputs' index)"}});
    const OptionRules again{.several = Several::Repeated};
    addOptions(
        rows, "Channels",
        {{"--splice", &c.request.splice, "", "Join channels of the inputs that belong together"},
         {"--select", &c.select, "A,B,C", "Keep these output channels, in this order"},
         {"--filter", &c.request.filter, "FILE", "Shape the output by a filter file"},
         {"--curve", &c.request.curves, "LINE",
          "One ~Curve line: rename, describe or compute a channel, "
          "e.g.\n\"DPHI.V/V : Porosity | FUN=BULKDEN2PORO,RHOB,2.65,1.0\"",
          again},
         {"--link", &c.links, "SLOT:CHANNEL>COLUMN[:FROM:TO]", "Feed an output column from an input channel by hand",
          again},
         {"--apply-depths", &c.applyDepths, "SLOT:FROM:TO", "Depths from which an input feeds all its channels", again},
         {"--shift", &c.shifts, "SLOT:CHANNEL:OFFSET", "Move an input channel in depth, positive down", again},
         {"--clip", &c.clips, "SLOT:CHANNEL:TOP:BOTTOM", "Cut an input channel to an interval", again}});
    addOptions(
        rows, "Layout",
        {optionOf(PrdRow::Wrap, &c.wrap),
         optionOf(PrdRow::Vers, &c.vers),
         optionOf(PrdRow::Null, &c.null),
         optionOf(PrdRow::FormatDot, &c.format),
         optionOf(PrdRow::HeaderFile, &c.request.header),
         {"--sections", &c.sections, "V,W,C,P,O", "Sections and their order"},
         optionOf(PrdRow::MergeParameters, &c.mergeParameters),
         optionOf(PrdRow::RenameDuplicates, &c.renameDuplicates),
         optionOf(PrdRow::PlainAscii, &c.ascii, PrdColumn::Option),
         optionOf(PrdRow::PlainAscii, &c.separator, PrdColumn::SecondOption),
         {"--csv", &c.request.csv, "", "Comma-separated values that any spreadsheet reads, in place of a LAS file"},
         optionOf(PrdRow::FillEmpty, &c.request.fillEmpty),
         optionOf(PrdRow::KeepInputDetails, &c.request.keepDetails),
         optionOf(PrdRow::DovranFilter, &c.request.smooth)});
    addOptions(rows, "Reading",
               {optionOf(PrdRow::ParsingOptions, &c.columnWidth, PrdColumn::Option),
                {"--loose", &c.request.loose, "", "Read data of no regular shape line by line"},
                {"--index-unit", &c.request.indexUnit, "UNIT", "Unit of the inputs' index, whatever their headers say"},
                {"--decimal-comma", &c.request.decimalComma, "", "A comma inside a number is its point"},
                {"--rules", &c.rules, "true|as-laid-down",
                 "Figures as they were or told, or bit for bit as the headless line makes them (true)"}});
}

}  // namespace welvane
