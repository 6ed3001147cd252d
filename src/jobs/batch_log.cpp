#include "jobs/batch_log.h"

#include <algorithm>
#include <charconv>

#include "platform/mapped_file.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/text.h"
#include "shared/utf8.h"

namespace welvane {

namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";

std::string jsonQuoted(std::string_view text) {
    std::string json = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            json += {'\\', c};
        } else if (byte < 0x20) {
            json += "\\u00";
            json += {hexDigits[byte >> 4U], hexDigits[byte & 15U]};
        } else {
            json += c;
        }
    }
    return json + '"';
}

/// A name of any bytes: where it is no UTF-8, its bytes stand beside it, escaped.
std::string nameMember(const std::string& key, const std::string& name) {
    const std::string text = utf8Text(name);
    std::string member = jsonQuoted(key) + ":" + jsonQuoted(text);
    if (text == name) return member;
    std::string escaped;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F && c != '%')
            escaped += c;
        else
            escaped += {'%', hexDigits[byte >> 4U], hexDigits[byte & 15U]};
    }
    return member + "," + jsonQuoted(key + "Bytes") + ":" + jsonQuoted(escaped);
}

std::optional<unsigned> hexNumber(std::string_view text) {
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

std::string unescaped(std::string_view text) {
    std::string name;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const auto byte = text[place] == '%' ? hexNumber(text.substr(place + 1, 2)) : std::nullopt;
        name += byte ? static_cast<char>(*byte) : text[place];
        if (byte) place += 2;
    }
    return name;
}

/// Reads an object of texts and numbers, as textOf writes them.
class LineParser {
  public:
    explicit LineParser(std::string_view text) : text_(text) {}

    bool read(std::unordered_map<std::string, std::string>& members) {
        if (!take('{')) return false;
        while (true) {
            std::string key, value;
            if (!readText(key) || !take(':') || !readValue(value)) return false;
            members[key] = value;
            if (take('}')) return place_ == text_.size();
            if (!take(',')) return false;
        }
    }

  private:
    bool take(char c) {
        if (place_ >= text_.size() || text_[place_] != c) return false;
        ++place_;
        return true;
    }
    bool readText(std::string& value) {
        if (!take('"')) return false;
        while (place_ < text_.size()) {
            if (take('"')) return true;
            if (take('\\')) {
                if (!readEscape(value)) return false;
            } else {
                value += text_[place_++];
            }
        }
        return false;
    }
    bool readEscape(std::string& value) {
        if (!take('u')) {
            if (place_ < text_.size()) value += text_[place_++];
            return true;
        }
        const std::optional<unsigned> code = hexNumber(text_.substr(place_, 4));
        if (!code || *code >= 0x80) return false;
        value += static_cast<char>(*code);
        place_ += 4;
        return true;
    }
    bool readValue(std::string& value) {
        if (place_ < text_.size() && text_[place_] == '"') return readText(value);
        const std::size_t end = text_.find_first_of(",}", place_);
        if (end == std::string_view::npos) return false;
        value = text_.substr(place_, end - place_);
        place_ = end;
        return !value.empty();
    }

    std::string_view text_;
    std::size_t place_ = 0;
};

template <class Number>
void takeNumber(const std::string& text, Number& number) {
    std::from_chars(text.data(), text.data() + text.size(), number);
}

template <class Number>
std::string numberMember(std::string_view key, Number number) {
    char text[32];
    const auto [end, error] = std::to_chars(std::begin(text), std::end(text), number);
    return "," + jsonQuoted(key) + ":" + std::string(std::begin(text), end);
}

}  // namespace

std::string textOf(const BatchLogLine& line) {
    std::string text = "{\"verdict\":" + jsonQuoted(line.verdict);
    if (line.verdict == "batch") {
        text += "," + nameMember("output", line.output) + ",\"part\":" + jsonQuoted(line.part);
        text += numberMember("files", line.files);
    } else {
        text += "," + nameMember("path", line.path) + "," + nameMember("output", line.output);
        text += numberMember("size", line.size) + numberMember("time", line.time);
    }
    if (line.verdict == "failed") text += ",\"why\":" + jsonQuoted(utf8Text(line.why));
    if (line.verdict == "written")
        text += numberMember("channels", line.channels) + numberMember("samples", line.samples);
    if (line.verdict == "written" || line.verdict == "failed") text += numberMember("seconds", line.seconds);
    return text + ",\"options\":" + jsonQuoted(line.options) + "}\n";
}

std::optional<BatchLogLine> parseBatchLine(std::string_view text) {
    std::unordered_map<std::string, std::string> members;
    if (!LineParser(text).read(members) || members["verdict"].empty()) return std::nullopt;
    BatchLogLine line;
    const auto name = [&](const std::string& key) {
        const auto bytes = members.find(key + "Bytes");
        return bytes == members.end() ? members[key] : unescaped(bytes->second);
    };
    line.verdict = members["verdict"];
    line.path = name("path");
    line.output = name("output");
    line.why = members["why"];
    line.options = members["options"];
    line.part = members["part"];
    takeNumber(members["size"], line.size);
    takeNumber(members["time"], line.time);
    takeNumber(members["channels"], line.channels);
    takeNumber(members["samples"], line.samples);
    takeNumber(members["seconds"], line.seconds);
    takeNumber(members["files"], line.files);
    return line;
}

std::size_t readBatchLog(const std::string& path, const std::function<void(BatchLogLine& line)>& take) {
    std::string why;
    const std::optional<MappedFile> file = MappedFile::open(path, &why);
    if (!file) throw FileFailure(path, why);
    std::size_t others = 0;
    for (std::string_view rest = file->bytes(); !rest.empty();) {
        const std::string_view text = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(text.size() + 1, rest.size()));
        if (std::optional<BatchLogLine> line = parseBatchLine(text))
            take(*line);
        else if (!text.empty())
            ++others;
    }
    return others;
}

BatchLog::BatchLog(const std::string& path, Start start)
    : file_(path, start == Start::New       ? AppendFile::Start::New
                  : start == Start::Replace ? AppendFile::Start::Emptied
                                            : AppendFile::Start::Kept) {
    if (start != Start::Resume) return;
    if (fileSize(path).value_or(0) == 0) return;
    readBatchLog(path, [this](BatchLogLine& line) {
        if (line.verdict == "batch") return;
        BatchLogLine& last = said_[line.path];
        // A file that is named twice fails the second time, and is written all the same.
        if (line.verdict != "failed" || last.verdict != "written") last = std::move(line);
    });
    // Ends a line that was cut short.
    file_.append("\n");
}

const BatchLogLine* BatchLog::said(const std::string& path) const {
    const auto found = said_.find(path);
    return found == said_.end() ? nullptr : &found->second;
}

void BatchLog::append(const std::vector<BatchLogLine>& lines) const {
    std::string text;
    for (const BatchLogLine& line : lines) text += textOf(line);
    file_.append(text);
}

}  // namespace welvane
