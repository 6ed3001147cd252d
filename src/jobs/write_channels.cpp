#include "jobs/write_channels.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

#include "convert/header_template.h"
#include "las/channel_names.h"
#include "las/depth_spacing.h"
#include "las/header_text.h"
#include "las/run_turn.h"
#include "platform/output_file.h"
#include "shared/distinct_names.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The longest double in fixed notation, sign, point and all digits; a little more.
constexpr std::size_t longestValue = 1100;
/// Records between two looks at the wish to stop.
constexpr std::size_t turnRecords = 1024;
/// A longer value pushes those behind it on.
constexpr std::size_t widestColumn = 24;
constexpr std::array<std::string_view, 4> depthLines = {"STRT", "STOP", "STEP", "NULL"};

/// The shortest digits that read back as the same double, without an exponent, which LAS does not know.
std::string_view printValue(std::array<char, longestValue>& room, double value) {
    const auto printed = std::to_chars(room.data(), room.data() + room.size(), value, std::chars_format::fixed);
    return {room.data(), static_cast<std::size_t>(printed.ptr - room.data())};
}

/// The largest double stands for figures that no double holds when a file is read, and would not come back.
bool isWritable(double value) {
    return std::abs(value) < std::numeric_limits<double>::max();
}

/// How the values of one column are laid out, and what was met among them.
struct ColumnPlan {
    std::size_t decimals = 0, width = 0;
    std::size_t infinite = 0, nulls = 0;  ///< infinite values, and figures that are the null value
};

ColumnPlan planColumn(std::span<const double> values, const GivenNumber& null) {
    ColumnPlan plan;
    std::array<char, longestValue> room{};
    std::size_t whole = 0, longest = 0;  // characters in front of the point, and of a whole text
    for (const double value : values) {
        if (!isWritable(value)) {
            if (!std::isnan(value)) ++plan.infinite;
            continue;
        }
        if (static_cast<float>(value) == static_cast<float>(null.value())) ++plan.nulls;
        const std::string_view text = printValue(room, value);
        const std::size_t point = std::min(text.find('.'), text.size());
        whole = std::max(whole, point);
        longest = std::max(longest, text.size());
        if (point < text.size()) plan.decimals = std::max(plan.decimals, text.size() - point - 1);
    }
    // Columns of a computed channel, or with a tiny value, are ragged: nobody wants zeros up to their longest text.
    if (plan.decimals > mostDepthDecimals) plan.decimals = 0;
    plan.width = std::max(plan.decimals == 0 ? longest : whole + plan.decimals + 1, null.text().size());
    plan.width = std::min(plan.width, widestColumn);
    return plan;
}

char* putCell(char* target, std::string_view text, std::size_t zeros, std::size_t width) {
    const bool point = zeros > 0 && text.find('.') == npos;
    const std::size_t length = text.size() + zeros + (point ? 1 : 0);
    const std::size_t blanks = 1 + (length < width ? width - length : 0);
    std::memset(target, ' ', blanks);
    target = std::copy(text.begin(), text.end(), target + blanks);
    if (point) *target++ = '.';
    std::memset(target, '0', zeros);
    return target + zeros;
}

char* putValue(char* target, double value, const ColumnPlan& plan, const GivenNumber& null) {
    if (!isWritable(value)) return putCell(target, null.text(), 0, plan.width);
    std::array<char, longestValue> room;  // NOLINT: only what was printed is read
    const std::string_view text = printValue(room, value);
    const std::size_t point = text.find('.');
    const std::size_t decimals = point == npos ? 0 : text.size() - point - 1;
    return putCell(target, text, decimals < plan.decimals ? plan.decimals - decimals : 0, plan.width);
}

/// The index with its values as texts.
class IndexFigures {
  public:
    explicit IndexFigures(std::span<const double> values) {
        std::array<char, longestValue> room{};
        std::size_t decimals = 0;
        for (const double value : values) decimals = std::max(decimals, decimalsOf(printValue(room, value)));
        const int shown = static_cast<int>(std::min(decimals, mostDepthDecimals));
        first = formatMask(values.front(), shown);
        last = formatMask(values.back(), shown);
        step = regularStep({values.begin(), values.end()}, decimals);
        varies = step.empty() && values.size() > 1;
        if (step.empty()) step = "0";
    }
    std::string first, last, step;
    bool varies = false;
};

void needWritable(const WriteRequest& request) {
    const auto refuse = [&](const std::string& why) { throw Refusal(request.output, why); };
    if (request.channels.size() < 2) refuse("a LAS file needs an index and a channel");
    const std::span<const double> index = request.channels.front().values;
    if (index.empty()) refuse("there are no values to write");
    for (const ChannelColumn& channel : request.channels)
        if (channel.values.size() != index.size())
            refuse(channel.field.mnem + " has " + counted(channel.values.size(), "value") + ", the index " +
                   std::to_string(index.size()));
    for (std::size_t record = 0; record < index.size(); ++record) {
        if (!std::isfinite(index[record]))
            refuse("the index is no number in record " + std::to_string(record) + " (counted from 0)");
        if (static_cast<float>(index[record]) == static_cast<float>(request.null.value()))
            refuse("the index is the null value in record " + std::to_string(record) +
                   " (counted from 0); choose another null");
    }
}

std::vector<std::string> namesOf(const WriteRequest& request, std::vector<Note>& notes) {
    std::vector<std::string> names;
    for (std::size_t column = 0; column < request.channels.size(); ++column) {
        std::string name = headerWord(request.channels[column].field.mnem, ".:");
        names.push_back(name.empty() ? columnName(column) : std::move(name));
    }
    makeDistinct(names, FigureRules::trueFigures);
    for (std::size_t column = 0; column < names.size(); ++column)
        if (const std::string& given = request.channels[column].field.mnem; given != names[column])
            notes.push_back({.kind = NoteKind::Columns,
                             .file = request.output,
                             .channel = names[column],
                             .text = "written so in place of \"" + given + "\""});
    return names;
}

/// A field that reads back as it is: one word, one line, and no colon behind the last one.
HeaderField readable(HeaderField field) {
    field.mnem = headerWord(field.mnem, ".:");
    field.unit = headerWord(field.unit, ":");
    for (std::string* const text : {&field.value, &field.desc})
        for (char& c : *text)
            if (static_cast<unsigned char>(c) < ' ') c = ' ';
    std::replace(field.desc.begin(), field.desc.end(), ':', ';');
    return field;
}

const WellSection* find(const std::vector<WellSection>& sections, char letter) {
    const auto found = std::find_if(sections.begin(), sections.end(),
                                    [letter](const WellSection& section) { return section.letter == letter; });
    return found == sections.end() ? nullptr : &*found;
}

bool isOneOf(std::string_view mnem, std::span<const std::string_view> words) {
    return std::any_of(words.begin(), words.end(), [mnem](std::string_view word) { return sameText(word, mnem); });
}

/// The lines of ~Well that the standard wants, without a value.
std::vector<HeaderField> emptyWellLines(const App& app) {
    std::vector<HeaderField> lines;
    const HeaderTexts texts = headerTextsOf(join(headerTemplate(app.settings.country, "M"), "\r\n"));
    for (const std::string& line : split(texts.well, '\n')) {
        HeaderField field;
        if (lineKind(line) != LineKind::Data || !parseHeaderLine(std::string_view(line), field)) continue;
        field.value.clear();
        lines.push_back(std::move(field));
    }
    return lines;
}

/// The header in front of the data.
class HeaderMaker {
  public:
    HeaderMaker(const App& app, const WriteRequest& request, const std::vector<std::string>& names)
        : app_(app), request_(request), names_(names) {}

    std::string make(const IndexFigures& index, const std::string& dataTitle) {
        version();
        well(index);
        curves();
        if (const WellSection* const section = find(request_.sections, 'P')) fields(*section, "~Parameter Information");
        for (const WellSection& section : request_.sections)
            if (section.letter == 'O' || section.letter == 0) texts(section);
        text_.line(dataTitle);
        return text_.take();
    }

  private:
    void line(HeaderField field, int extraColon = 0) {
        const FormatDefaults& format = app_.settings.format;
        text_.line(formatHeaderLine(readable(std::move(field)), format.dotColumn, format.colonColumn + extraColon,
                                    format.valueColumn, true));
    }
    void title(const WellSection* section, std::string_view stock) {
        text_.line(section == nullptr || section->title.empty() ? stock : std::string_view(section->title));
    }
    void version() {
        const WellSection* const section = find(request_.sections, 'V');
        title(section, "~Version Information");
        line({"VERS", "", "2.0", "CWLS LOG ASCII STANDARD - VERSION 2.0"});
        line({"WRAP", "", "NO", "One line per depth step"});
        constexpr std::array<std::string_view, 3> own = {"VERS", "WRAP", "DLM"};
        if (section == nullptr) return;
        for (const HeaderField& field : section->lines)
            if (!isOneOf(field.mnem, own)) line(field);
    }
    void well(const IndexFigures& index) {
        const WellSection* const section = find(request_.sections, 'W');
        const int extra = app_.settings.format.wellExtraColon;
        title(section, "~Well Information");
        const std::string& unit = request_.channels.front().field.unit;
        line({"STRT", unit, index.first, "START DEPTH"}, extra);
        line({"STOP", unit, index.last, "STOP DEPTH"}, extra);
        line({"STEP", unit, index.step, "STEP LENGTH"}, extra);
        line({"NULL", "", request_.null.text(), "Null value"}, extra);
        std::vector<HeaderField> lines = section == nullptr ? emptyWellLines(app_) : section->lines;
        for (const HeaderField& given : request_.well) {
            const auto stands = std::find_if(
                lines.begin(), lines.end(), [&](const HeaderField& field) { return sameText(field.mnem, given.mnem); });
            if (stands == lines.end())
                lines.push_back(given);
            else
                stands->value = given.value;
        }
        for (const HeaderField& field : lines)
            if (!isOneOf(field.mnem, depthLines)) line(field, extra);
        if (section != nullptr)
            for (const std::string& other : section->text) text_.line(other);
    }
    void curves() {
        text_.line("~Curve Information");
        for (std::size_t column = 0; column < names_.size(); ++column) {
            HeaderField field = request_.channels[column].field;
            field.mnem = names_[column];
            // Data without a header of their own are described as the library knows them.
            if (request_.sections.empty() && field.desc.empty()) {
                field.desc = descriptionForMnem(app_.reference, field.mnem);
                if (field.value.empty()) field.value = apiCodeForMnem(app_.reference, field.mnem);
            }
            line(std::move(field));
        }
    }
    void fields(const WellSection& section, std::string_view stock) {
        title(&section, stock);
        for (const HeaderField& field : section.lines) line(field);
        for (const std::string& other : section.text) text_.line(other);
    }
    void texts(const WellSection& section) {
        title(&section, "~Other Information");
        for (const std::string& other : section.text) text_.line(other);
    }

    const App& app_;
    const WriteRequest& request_;
    const std::vector<std::string>& names_;
    HeaderText text_;
};

std::string dataTitle(const std::vector<std::string>& names, const std::vector<ColumnPlan>& plans) {
    std::string title;
    for (std::size_t column = 0; column < names.size(); ++column)
        title += " " + rightAligned(names[column], plans[column].width);
    constexpr std::string_view start = "~A";
    if (trim(title.substr(0, start.size())).empty()) return title.replace(0, start.size(), start);
    return std::string(start) + title;
}

void noteFigures(const WriteRequest& request, const std::vector<std::string>& names,
                 const std::vector<ColumnPlan>& plans, std::vector<Note>& notes) {
    const auto note = [&](std::size_t column, NoteKind kind, std::size_t count, const std::string& text) {
        if (count != 0)
            notes.push_back(
                {.kind = kind, .file = request.output, .channel = names[column], .count = count, .text = text});
    };
    for (std::size_t column = 0; column < plans.size(); ++column) {
        note(column, NoteKind::NoNumber, plans[column].infinite, "infinite; null is written");
        note(column, NoteKind::Nulls, plans[column].nulls,
             "figures that are the null value " + request.null.text() + " and read back as null");
    }
}

void writeRows(Workbench& bench, const WriteRequest& request, const std::vector<ColumnPlan>& plans,
               OutputFile& output) {
    const std::size_t records = request.channels.front().values.size();
    RunTurn turn(bench.app().run, bench.user(), records);
    for (std::size_t record = 0; record < records; ++record) {
        if (record % turnRecords == 0 && !turn.goesOn(record)) throw Refusal(request.output, "stopped");
        for (std::size_t column = 0; column < plans.size(); ++column) {
            char* const start = output.reserve(longestValue + plans[column].width);
            char* const end = putValue(start, request.channels[column].values[record], plans[column], request.null);
            output.advance(static_cast<std::size_t>(end - start));
        }
        output.write("\r\n");
    }
}

}  // namespace

WriteReport writeChannels(Workbench& bench, const WriteRequest& request) {
    needWritable(request);
    bench.checkOutput(request.output, {});
    WriteReport report;
    std::vector<Note> notes;
    report.names = namesOf(request, notes);
    std::vector<ColumnPlan> plans;
    for (std::size_t column = 0; column < request.channels.size(); ++column) {
        plans.push_back(planColumn(request.channels[column].values, request.null));
        plans.back().width = std::max(plans.back().width, report.names[column].size());
    }
    noteFigures(request, report.names, plans, notes);
    const IndexFigures index(request.channels.front().values);
    if (index.varies)
        notes.push_back({.kind = NoteKind::StepVaries,
                         .file = request.output,
                         .text = "the depth interval is not constant; STEP is written as 0"});
    tellNotes(bench, request.output, notes);
    bench.app().run.statusText = "Writing " + request.output;
    const WorkInHand work(bench.user(), {});
    try {
        OutputFile output(request.output, bench.outputMode());
        HeaderMaker header(bench.app(), request, report.names);
        output.write(header.make(index, dataTitle(report.names, plans)));
        writeRows(bench, request, plans, output);
        output.commit();
    } catch (const FileFailure& failed) {
        throw Refusal(request.output, failed.reason());
    }
    report.records = request.channels.front().values.size();
    report.first = index.first;
    report.last = index.last;
    report.step = index.step;
    report.notes = bench.takeNotes();
    return report;
}

}  // namespace welvane
