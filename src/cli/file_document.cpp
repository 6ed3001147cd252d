#include "cli/file_document.h"

namespace welvane {

namespace {

constexpr int indent = 2;

}  // namespace

void FileDocument::open() {
    if (!std::exchange(open_, true))
        console_.print("{\n  \"welvane\": " + Json(WELVANE_VERSION).dump() + ",\n  \"files\": [");
}

void FileDocument::add(Json entry, const std::vector<Note>& notes) {
    if (!console_.options().json) return;
    if (console_.options().jsonLines) {
        entry.add("notes", notesAsJson(notes));
        console_.print(entry.dump() + "\n");
        return;
    }
    open();
    console_.print((std::exchange(any_, true) ? ",\n    " : "\n    ") + entry.dump(indent, 2));
    notes_.insert(notes_.end(), notes.begin(), notes.end());
}

void FileDocument::close(const std::vector<Json::Member>& own, const std::vector<Note>& notes) {
    if (!console_.options().json || std::exchange(closed_, true)) return;
    notes_.insert(notes_.end(), notes.begin(), notes.end());
    if (console_.options().jsonLines) {
        Json last = Json::object();
        for (const Json::Member& member : own) last.add(member.first, member.second);
        if (!own.empty() || !notes_.empty()) last.add("notes", notesAsJson(notes_));
        if (!last.empty()) console_.print(last.dump() + "\n");
        return;
    }
    open();
    std::string text = any_ ? "\n  ]" : "]";
    const auto add = [&](std::string_view key, const Json& value) {
        text += ",\n  " + Json(key).dump() + ": " + value.dump(indent, 1);
    };
    for (const Json::Member& member : own) add(member.first, member.second);
    add("notes", notesAsJson(notes_));
    console_.print(text + "\n}\n");
}

}  // namespace welvane
