#pragma once

#include <string>
#include <vector>

#include "cli/json_document.h"
#include "cli/verbs.h"

namespace welvane {

/// Does the work of a verb that makes one output, and with `json` prints the document over it, also where the work was
/// refused. `work` gives the report, `asJson` makes the document's output of it (null for none).
template <class Work, class AsJson>
auto workAndShow(Console& console, bool json, const std::vector<std::string>& inputs, Work work, AsJson asJson) {
    const auto show = [&](Json output, const std::vector<Note>& notes, const Fault* refused) {
        if (json) console.print(outputDocument(inputs, std::move(output), notes, refused).dump(2) + "\n");
    };
    try {
        auto report = work();
        show(asJson(report), report.notes, nullptr);
        return report;
    } catch (const Refusal& refused) {
        show({}, console.bench().takeNotes(), &refused.fault);
        throw;
    }
}

}  // namespace welvane
