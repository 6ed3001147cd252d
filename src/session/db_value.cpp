#include "session/db_value.h"

#include <optional>
#include <vector>

#include "platform/mapped_file.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t keyField = 1;  // the second one

/// Hands out the records of a comma-separated text, reusing its fields.
class RecordReader {
  public:
    explicit RecordReader(std::string_view text) : text_(text) {
        constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
        if (text_.substr(0, byteOrderMark.size()) == byteOrderMark) place_ = byteOrderMark.size();
    }

    /// The next record that is neither blank nor a comment; false at the end.
    bool next(std::vector<std::string>& fields) {
        while (place_ < text_.size()) {
            if (isCommentLine()) {
                skipLine();
                continue;
            }
            readRecord(fields);
            if (fields.size() > 1 || !trimBreaks(fields[0]).empty()) return true;
        }
        return false;
    }

  private:
    static bool isEnd(char c) { return c == '\r' || c == '\n'; }

    bool isCommentLine() const {
        const std::size_t first = text_.find_first_not_of(" \t", place_);
        return first != npos && text_[first] == '#';
    }
    void skipLine() {
        while (place_ < text_.size() && !isEnd(text_[place_])) ++place_;
        skipEnd();
    }
    void skipEnd() {
        if (place_ < text_.size() && text_[place_] == '\r') ++place_;
        if (place_ < text_.size() && text_[place_] == '\n') ++place_;
    }

    void readRecord(std::vector<std::string>& fields) {
        std::size_t count = 0;
        const auto startField = [&] {
            if (count == fields.size()) fields.emplace_back();
            fields[count++].clear();
        };
        startField();
        while (place_ < text_.size() && !isEnd(text_[place_])) {
            const char c = text_[place_];
            std::string& field = fields[count - 1];
            if (c == '"' && trim(field).empty() && closingQuote() != npos) {
                field.clear();
                readQuoted(field);
                continue;
            }
            ++place_;
            if (c == ',')
                startField();
            else
                field += c;
        }
        fields.resize(count);
        skipEnd();
    }

    /// Place of the quote that closes the one at the reading place; a quote that nothing closes is plain text, so that
    /// it cannot swallow the rest of the file.
    std::size_t closingQuote() const {
        for (std::size_t place = text_.find('"', place_ + 1); place != npos; place = text_.find('"', place + 2)) {
            if (place + 1 >= text_.size() || text_[place + 1] != '"') return place;
        }
        return npos;
    }
    void readQuoted(std::string& field) {
        const std::size_t close = closingQuote();
        for (std::size_t place = place_ + 1; place < close; ++place) {
            field += text_[place];
            if (text_[place] == '"') ++place;
        }
        place_ = close + 1;
    }

    std::string_view text_;
    std::size_t place_ = 0;
};

std::optional<std::size_t> findColumn(const std::vector<std::string>& names, std::string_view wanted) {
    for (std::size_t index = 0; index < names.size(); ++index)
        if (sameText(trimBreaks(names[index]), trimBreaks(wanted))) return index;
    return std::nullopt;
}

}  // namespace

std::string getDBValue(std::string_view path, std::string_view key, std::string_view column) {
    if (trimBreaks(key).empty() || !fileExists(path)) return {};
    const MappedFile file = mapFile(path);
    RecordReader records(file.bytes());
    std::vector<std::string> fields;
    if (!records.next(fields)) return {};
    const auto wanted = findColumn(fields, column);
    if (!wanted) return {};
    std::string value;
    while (records.next(fields)) {
        if (fields.size() <= keyField || !sameText(trimBreaks(fields[keyField]), trimBreaks(key))) continue;
        if (*wanted < fields.size()) value = trimBreaks(fields[*wanted]);
        break;
    }
    needWhole(file, path);
    return value;
}

}  // namespace welvane
