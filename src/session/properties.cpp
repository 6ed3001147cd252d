#include "session/properties.h"

#include <algorithm>

#include "session/step_text.h"

namespace welvane {

namespace {

/// Blank first; any other text is accepted too.
std::string nullList() {
    return "|-999.25|-99999";
}

std::string browse() {
    return std::string(browseList);
}

constexpr PropertyWord unitWords[] = {
    {"F", textOf(DepthUnit::F)}, {"M", textOf(DepthUnit::M)}, {"FT", textOf(DepthUnit::Ft)}};
constexpr PropertyWord directionWords[] = {{"shallow", textOf(Direction::ShallowToDeep)},
                                           {"deep", textOf(Direction::DeepToShallow)}};
constexpr PropertyWord wrapWords[] = {{"yes", textOf(Wrap::Yes)}, {"no", textOf(Wrap::No)}};
constexpr PropertyWord versionWords[] = {
    {"1.2", textOf(LasVersion::V1_2)}, {"2.0", textOf(LasVersion::V2_0)}, {"2", textOf(LasVersion::V2_0)}};
constexpr PropertyWord fillWords[] = {
    {"none", textOf(NullFill::None)}, {"linear", textOf(NullFill::Linear)}, {"flat", textOf(NullFill::FlatTop)}};
constexpr PropertyWord titleWords[] = {{"No Header", textOf(TitleStyle::NoHeader)},
                                       {"MNEM", textOf(TitleStyle::Mnem)},
                                       {"MNEM.UNIT", textOf(TitleStyle::MnemUnit)},
                                       {"One line each", textOf(TitleStyle::OneLineEach)}};
constexpr PropertyWord separatorWords[] = {
    {"space", textOf(Separator::Space)}, {"tab", textOf(Separator::Tab)}, {"comma", textOf(Separator::Comma)}};

constexpr PrdColumn beside = PrdColumn::Option, behind = PrdColumn::SecondOption;

constexpr Property table[] = {
    {.row = PrdRow::Head, .label = "Item", .initial = "Setting"},
    {.row = PrdRow::Head, .column = beside, .initial = "Options"},
    {.row = PrdRow::From,
     .label = "From",
     .option = "--from",
     .form = "DEPTH",
     .help = "Top of the output: a depth, or a limit such as \">=1000\""},
    {.row = PrdRow::From, .column = beside, .list = listOf<DepthPick>},
    {.row = PrdRow::To,
     .label = "To",
     .option = "--to",
     .form = "DEPTH",
     .help = "Bottom of the output, in the same way"},
    {.row = PrdRow::To, .column = beside, .list = listOf<DepthPick>},
    {.row = PrdRow::SampleRate,
     .label = "Sample Rate",
     .list = stepList,
     .option = "--step",
     .form = "STEP",
     .help = "Sample rate"},
    {.row = PrdRow::DepthUnits,
     .label = "Depth Units",
     .list = listOf<DepthUnit>,
     .option = "--unit",
     .form = "F|M|FT",
     .help = "Depth unit of the output; --from, --to and --offset count in the input's",
     .words = unitWords},
    {.row = PrdRow::DepthOffset,
     .label = "Depth Offset",
     .initial = "0",
     .option = "--offset",
     .form = "N",
     .help = "Added to every depth written"},
    {.row = PrdRow::Direction,
     .label = "Direction",
     .initial = textOf(Direction::ShallowToDeep),
     .list = listOf<Direction>,
     .option = "--direction",
     .form = "shallow|deep",
     .help = "Begin of the output: shallow or deep end",
     .words = directionWords},
    {.row = PrdRow::Wrap,
     .label = "WRAP",
     .initial = textOf(Wrap::No),
     .list = listOf<Wrap>,
     .option = "--wrap",
     .form = "yes|no",
     .help = "Wrapped data lines",
     .words = wrapWords},
    {.row = PrdRow::Vers,
     .label = "VERS",
     .initial = textOf(LasVersion::V2_0),
     .list = listOf<LasVersion>,
     .option = "--vers",
     .form = "1.2|2.0",
     .help = "LAS version",
     .words = versionWords},
    {.row = PrdRow::Null,
     .label = "Null",
     .initial = "-999.25",
     .list = nullList,
     .option = "--null",
     .form = "N",
     .help = "Null value"},
    {.row = PrdRow::HeaderFile,
     .label = "Header File",
     .option = "--header",
     .form = "FILE",
     .help = "Input whose header is taken (a path or 1 to 4)"},
    {.row = PrdRow::FormatDot,
     .label = "Format: Dot @",
     .option = "--format",
     .form = "DOT,VALUE,COLON,PLUS,WIDTH,DECIMALS",
     .help = "Columns of header lines and data; empty places keep theirs"},
    {.row = PrdRow::FormatValue, .label = "Value @"},
    {.row = PrdRow::FormatColon, .label = "Colon @"},
    {.row = PrdRow::WellPlus, .label = "+ in Well  @"},
    {.row = PrdRow::DataWidth, .label = "Data Width"},
    {.row = PrdRow::DataDecimals, .label = "Data # decimals"},
    {.row = PrdRow::ProcessingHead, .label = "Processing Options"},
    {.row = PrdRow::ApplyTvd,
     .label = "Apply TVD",
     .isCheck = true,
     .option = "--tvd",
     .form = "SURVEY",
     .help = "Write true vertical depths by this survey"},
    {.row = PrdRow::NullFill,
     .label = "Null Fill",
     .initial = textOf(NullFill::None),
     .list = listOf<NullFill>,
     .option = "--fill",
     .form = "none|linear|flat",
     .help = "How gaps of null are filled",
     .words = fillWords},
    {.row = PrdRow::RenameDuplicates,
     .label = "Rename Duplicates?",
     .isCheck = true,
     .option = "--rename-duplicates",
     .form = "yes|no",
     .help = "Number channels of one name"},
    {.row = PrdRow::ParsingOptions,
     .label = "Parsing Options",
     .initial = textOf(Parsing::Auto),
     .list = listOf<Parsing>},
    {.row = PrdRow::ParsingOptions,
     .column = beside,
     .option = "--column-width",
     .form = "N",
     .help = "Data columns of fixed width, in place of blanks"},
    {.row = PrdRow::OpenedFile, .list = browse},
    {.row = PrdRow::DivideFile, .label = "Divide File", .initial = textOf(Divide::None), .list = listOf<Divide>},
    {.row = PrdRow::DivideFile, .column = beside, .help = "Number of the interval or of the curve"},
    {.row = PrdRow::FillEmpty,
     .label = "Fill Empty VALU and DESC",
     .isCheck = true,
     .option = "--fill-empty",
     .help = "Fill empty VALUE and DESC fields from the library"},
    {.row = PrdRow::MergeParameters,
     .label = "Merge ~P sections",
     .isCheck = true,
     .option = "--merge-parameters",
     .form = "yes|no",
     .help = "Join the ~Parameter sections of the inputs"},
    {.row = PrdRow::PlainAscii, .label = "Make into Plain Ascii", .isCheck = true},
    {.row = PrdRow::PlainAscii,
     .column = beside,
     .list = listOf<TitleStyle>,
     .option = "--ascii",
     .form = "KIND",
     .help = "Plain table: No Header, MNEM, MNEM.UNIT or One line each",
     .words = titleWords},
    {.row = PrdRow::PlainAscii,
     .column = behind,
     .list = listOf<Separator>,
     .option = "--separator",
     .form = "space|tab|comma",
     .help = "Between the fields of --ascii",
     .words = separatorWords},
    {.row = PrdRow::KeepInputDetails,
     .label = "Keep Input Details",
     .isCheck = true,
     .option = "--keep-details",
     .help = "Tell in the header what the inputs were"},
    {.row = PrdRow::DovranFilter,
     .label = "Apply Dovran Filter",
     .isCheck = true,
     .option = "--smooth",
     .help = "Smooth the channels"}};

}  // namespace

std::span<const Property> properties() {
    return table;
}

const Property* findProperty(PrdRow row, PrdColumn column) {
    const auto found = std::find_if(std::begin(table), std::end(table), [&](const Property& property) {
        return property.row == row && property.column == column;
    });
    return found == std::end(table) ? nullptr : &*found;
}

}  // namespace welvane
