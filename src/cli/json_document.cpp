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

Json refusedEntry(const std::string& file, const Fault& fault) {
    return Json::object({{"path", utf8Text(file)}, {"error", utf8Text(fault.reason.text)}});
}

Json jsonDocument(Json files, const std::vector<Note>& notes) {
    return Json::object({{"welvane", WELVANE_VERSION}, {"files", std::move(files)}, {"notes", notesAsJson(notes)}});
}

Json outputDocument(const std::vector<std::string>& inputs, Json output, const std::vector<Note>& notes,
                    const Fault* refused) {
    Json files = Json::array();
    for (const std::string& input : inputs) {
        const bool isAbout = refused != nullptr && refused->file == input;
        files.push(isAbout ? refusedEntry(input, *refused) : Json::object({{"path", utf8Text(input)}}));
    }
    Json document = jsonDocument(std::move(files), notes);
    document.add("output", std::move(output));
    if (refused != nullptr) document.add("error", utf8Text(refused->reason.text));
    return document;
}

std::string jsonDocumentHead() {
    return "{\"welvane\": " + Json(WELVANE_VERSION).dump() + ",\n\"files\": [\n";
}

}  // namespace welvane
