#include "functions/crnphi.h"

#include <exception>
#include <optional>

#include "platform/mapped_file.h"
#include "shared/any_line_reader.h"
#include "shared/field_splitter.h"
#include "shared/text.h"

namespace welvane {

namespace {
/// More rows than any tool list has; a file that is something else ends here.
constexpr std::size_t mostRows = 5000;
constexpr std::size_t longestLine = 1000;

bool isHead(std::string_view line) {
    return line.find('[') != npos && line.find(']') != npos && line.find('#') == npos;
}

void listLines(std::string_view bytes, CrnphiMode mode, std::string_view toolName, std::vector<std::string>& list) {
    bool wanted = false;
    CrnphiRow row;
    AnyLineReader lines(bytes);
    for (std::string_view line; list.size() < mostRows && lines.next(line);) {
        line = trimBreaks(line);
        if (line.empty() || line.size() > longestLine) continue;
        if (isHead(line)) {
            wanted = holdsText(line, toolName);
            if (mode == CrnphiMode::Tools) list.emplace_back(line);
        } else if (line.find('[') != npos) {
            wanted = false;
        } else if (mode == CrnphiMode::Diameters && wanted && line.front() != '#' && splitCrnphiRow(line, row)) {
            list.emplace_back(line);
        }
    }
}
}  // namespace

bool splitCrnphiRow(std::string_view line, CrnphiRow& row) {
    FieldSplitter fields(" ");
    fields.setText(line);
    if (fields.count() != 5) return false;
    std::string* const targets[] = {&row.diameter, &row.lowPorosity, &row.highCountRate, &row.highPorosity,
                                    &row.lowCountRate};
    for (std::size_t place = 0; place < 5; ++place) *targets[place] = fields.field(place + 1);
    return true;
}

bool readCrnphi(std::vector<std::string>& list, CrnphiMode mode, std::string_view toolName,
                std::string_view programFolder) {
    list.clear();
    try {
        const std::optional<MappedFile> file = MappedFile::open(std::string(programFolder) + "crnphi.ini");
        if (!file) return false;
        if (mode == CrnphiMode::Diameters) list.emplace_back(crnphiHeading);
        listLines(file->bytes(), mode, toolName, list);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace welvane
