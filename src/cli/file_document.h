#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "cli/console.h"
#include "cli/json_document.h"

namespace welvane {

/// What --json and --json-lines print of many files, as each of them ends, so that nothing but the one in hand is kept.
/// Without these options nothing is printed.
class FileDocument {
  public:
    explicit FileDocument(Console& console) : console_(console) {}
    FileDocument(const FileDocument&) = delete;
    FileDocument& operator=(const FileDocument&) = delete;

    /// The entry of an input with the notes of it: they stand in its line, or at the end of the document.
    void add(Json entry, const std::vector<Note>& notes = {});
    /// Ends the document, once: what the verb has to say besides, and notes that are of no one input. As lines both
    /// make a last one where there are any.
    void close(const std::vector<Json::Member>& own = {}, const std::vector<Note>& notes = {});

  private:
    void open();

    Console& console_;
    std::vector<Note> notes_;
    bool open_ = false, any_ = false, closed_ = false;
};

/// Lets `work` fill a document. It is whole also where the work was refused or stopped.
template <class Work>
auto fillDocument(Console& console, Work work) {
    FileDocument document(console);
    try {
        auto result = work(document);
        document.close();
        return result;
    } catch (const Refusal&) {
        document.close({}, console.bench().takeNotes());
        throw;
    }
}

}  // namespace welvane
