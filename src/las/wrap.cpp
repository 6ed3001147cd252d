#include "las/wrap.h"

#include <algorithm>
#include <exception>

#include "las/data_words.h"
#include "las/run_turn.h"
#include "platform/output_file.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Puts `text` over the old value of a header line, its right end where the old one's was when the blanks in front give
/// room, so that the colon keeps its place. The character behind the dot stays free: what is stuck to the dot is a
/// unit.
void replaceValue(std::string& line, const std::string& oldValue, std::string_view text) {
    const std::size_t firstFree = line.find('.') + 2;
    std::size_t start = oldValue.empty() ? npos : line.find(oldValue, firstFree - 1);
    std::size_t end = start + oldValue.size();
    if (start == npos) start = end = line.rfind(':');
    while (end - start < text.size() && start > firstFree && line[start - 1] == ' ') --start;
    while (end - start < text.size() && line[end] == ' ') ++end;
    std::string value(text);
    if (value.size() < end - start) value.insert(0, end - start - value.size(), ' ');
    if (line[start - 1] != ' ' && value.front() != ' ') value.insert(0, 1, ' ');
    if (start < firstFree && value.front() != ' ') value.insert(0, 1, ' ');
    line.replace(start, end - start, value);
}

/// The text behind the colon, with the old gap in front of it where that leaves the line its length.
void replaceDescription(std::string& line, std::string_view text, std::size_t oldLength) {
    const std::size_t behind = line.rfind(':') + 1;
    std::size_t start = std::min(line.find_first_not_of(' ', behind), line.size());
    while (start > behind + 1 && start + text.size() > oldLength) --start;
    line.resize(start, ' ');
    if (start == behind) line += ' ';
    line.append(text);
    if (line.size() < oldLength) line.resize(oldLength, ' ');
}

std::string convertedWrapLine(std::string_view oldLine, bool sourceWrapped) {
    std::string line(oldLine);
    tabsToBlanks(line);
    HeaderField fields;
    parseHeaderLine(std::string_view(line), fields);
    replaceValue(line, fields.value, sourceWrapped ? " NO" : "YES");
    replaceDescription(line, sourceWrapped ? "ONE LINE PER DEPTH STEP" : "MULTIPLE LINES PER DEPTH STEP",
                       oldLine.size());
    return line;
}

/// A word in its column. One that fills the column gets a blank in front of it, so that it does not run into its
/// neighbour.
void writeColumn(OutputFile& target, std::string_view word, std::size_t width, bool firstOfLine) {
    const std::size_t blanks = word.size() < width ? width - word.size() : firstOfLine ? 0 : 1;
    char* const room = target.reserve(blanks);
    std::fill_n(room, blanks, ' ');
    target.advance(blanks);
    target.write(word);
}

bool writeWrapped(LineReader& source, OutputFile& target, const DataShape& shape, RunTurn& turn) {
    const auto width = static_cast<std::size_t>(
        std::max(1, roundToEven(static_cast<double>(shape.bytesPerStep) / shape.wordsPerStep)));
    const int perLine = std::max(1, roundToEven(static_cast<double>(wrapLineLength) / static_cast<double>(width)));
    for (std::string_view line; source.next(line);) {
        if (!turn.goesOn(source.position())) return false;
        std::string_view word = nextDataWord(line);
        if (word.empty()) continue;
        writeColumn(target, word, width, true);
        int onLine = perLine;
        for (word = nextDataWord(line); !word.empty(); word = nextDataWord(line)) {
            const bool newLine = onLine == perLine;
            if (newLine) target.writeLine({});
            onLine = newLine ? 1 : onLine + 1;
            writeColumn(target, word, width, newLine);
        }
        target.writeLine({});
    }
    return true;
}

bool writeUnwrapped(LineReader& source, OutputFile& target, const DataShape& shape, RunTurn& turn) {
    int joined = 0;
    for (std::string_view line; source.next(line);) {
        if (!turn.goesOn(source.position())) return false;
        if (firstDataWord(line).empty()) continue;
        if (joined == shape.linesPerStep) {
            target.writeLine({});
            joined = 0;
        }
        if (joined > 0) target.write(" ");
        target.write(line);
        ++joined;
    }
    if (joined > 0) target.writeLine({});
    return true;
}

StepResult convert(const LasFile& file, std::string_view target, std::string& wrap, RunState& run, UserInterface& user,
                   OutputFile::Mode mode) {
    const DataShape& shape = file.shape();
    if (shape.layout == DataLayout::Undecided) throw RunTimeFailure(shapeProblem(shape));
    const bool wrapped = shape.layout == DataLayout::Wrapped;
    wrap = wrapped ? "YES" : "NO";
    file.willReadAll();
    LineReader source = file.text().lines();
    OutputFile output(target, mode);
    copyWrapHeader(source, output, wrapped);
    RunTurn turn(run, user, file.bytes().size());
    const bool whole =
        wrapped ? writeUnwrapped(source, output, shape, turn) : writeWrapped(source, output, shape, turn);
    if (!whole) return StepResult::Cancelled;
    file.needWhole();
    output.commit();
    return StepResult::Done;
}

}  // namespace

void copyWrapHeader(LineReader& source, OutputFile& target, bool sourceWrapped) {
    for (std::string_view line; source.next(line);) {
        const std::string_view text = trim(line);
        if (beginsWith(text, "~A")) break;
        if (beginsWith(text, "WRAP") && lineKind(text) == LineKind::Data)
            target.writeLine(convertedWrapLine(line, sourceWrapped));
        else
            target.writeLine(line);
    }
    target.writeLine("~Ascii");
}

void tellConversionFailure(UserInterface& user, std::string_view why) {
    user.ask({"Un-expected Error",
              "An unknown error has occured while converting the file. The file conversion is likely incomplete. The "
              "system error message "
              "was: \r\n" +
                  std::string(why),
              Buttons::Ok, Icon::Stop, Answer::Ok});
}

StepResult convertWrap(const LasFile& source, std::string_view target, std::string& wrap, RunState& run,
                       UserInterface& user, OutputFile::Mode mode) {
    try {
        return convert(source, target, wrap, run, user, mode);
    } catch (const std::exception& error) {
        tellConversionFailure(user, error.what());
        return StepResult::Failed;
    }
}

}  // namespace welvane
