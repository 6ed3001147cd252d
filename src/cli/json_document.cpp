#include "cli/json_document.h"

#include "shared/utf8.h"

namespace welvane {

namespace {

std::string_view nameOf(NoteKind kind) {
    switch (kind) {
        case NoteKind::LineEnds:
            return "lineEnds";
        case NoteKind::Unit:
            return "unit";
        case NoteKind::Skipped:
            return "skipped";
        case NoteKind::TooWide:
            return "tooWide";
        case NoteKind::Survey:
            return "survey";
        case NoteKind::Dropped:
            return "dropped";
        case NoteKind::Repair:
            return "repair";
        case NoteKind::NoNumber:
            return "noNumber";
        case NoteKind::Nulls:
            return "nulls";
        case NoteKind::Columns:
            return "columns";
        case NoteKind::Records:
            return "records";
        case NoteKind::StepVaries:
            return "stepVaries";
        case NoteKind::DepthLines:
            return "depthLines";
        case NoteKind::Setting:
            return "setting";
        case NoteKind::File:
            break;
    }
    return "file";
}

/// ASCII but "%" stays; other bytes become "%XX".
std::string percentEscaped(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (code > ' ' && code < 0x7F && byte != '%')
            text += byte;
        else
            text.append({'%', digits[code >> 4U], digits[code & 15U]});
    }
    return text;
}

}  // namespace

Json notesAsJson(const std::vector<Note>& notes) {
    Json all = Json::array();
    for (const Note& note : notes) {
        Json one = Json::object({{"kind", nameOf(note.kind)}});
        if (!note.file.empty()) one.add("file", utf8Text(note.file));
        if (!note.channel.empty()) one.add("channel", utf8Text(note.channel));
        if (note.line != 0) one.add("line", note.line);
        if (note.count != 0) one.add("count", note.count);
        one.add("text", utf8Text(note.text));
        all.push(std::move(one));
    }
    return all;
}

Json fileEntry(std::string_view path) {
    Json entry = Json::object({{"path", utf8Text(path)}});
    if (utf8Text(path) != path) entry.add("pathBytes", percentEscaped(path));
    return entry;
}

Json fileEntry(std::string_view path, std::initializer_list<Json::Member> members) {
    Json entry = fileEntry(path);
    entry.add(members);
    return entry;
}

Json refusedEntry(const std::string& file, const Fault& fault) {
    return fileEntry(file, {{"error", utf8Text(fault.reason.text)}});
}

Json ownDocument(std::initializer_list<Json::Member> members, const std::vector<Note>& notes) {
    Json document = Json::object({{"welvane", WELVANE_VERSION}});
    document.add(members);
    document.add("notes", notesAsJson(notes));
    return document;
}

Json outputDocument(const std::vector<std::string>& inputs, Json output, const std::vector<Note>& notes,
                    const Fault* refused) {
    Json files = Json::array();
    for (const std::string& input : inputs) {
        const bool isAbout = refused != nullptr && refused->file == input;
        files.push(isAbout ? refusedEntry(input, *refused) : fileEntry(input));
    }
    Json document = ownDocument({{"files", std::move(files)}}, notes);
    document.add("output", std::move(output));
    if (refused != nullptr) document.add("error", utf8Text(refused->reason.text));
    return document;
}

}  // namespace welvane
