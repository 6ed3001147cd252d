#include "cli/file_results.h"

namespace welvane {

void JsonEntries::print() {
    if (!console_.options().json || (files_ == 1 && entries_.empty())) return;
    console_.print((files_ == 1 ? entries_.front() : entries_).dump(2) + "\n");
}

}  // namespace welvane
