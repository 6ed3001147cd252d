#include "jobs/info.h"

#include "las/data_access.h"

namespace welvane {

FileFacts readFacts(Workbench& bench, const std::string& file, bool loose) {
    const Input input = bench.openLas(file, loose);
    FileFacts facts;
    if (!fillInputSlot(*input.file, facts.slot) && !loose) throw Refusal(file, "its header cannot be read");
    facts.slot.path = input.given;
    facts.channels = readSlotChannels(*input.file);
    const auto& titles = input.file->text().titles();
    facts.sections.assign(titles.begin(), titles.end());
    input.file->needWhole();
    return facts;
}

std::vector<Top> listTops(Workbench& bench, const std::string& file) {
    const Input input = bench.openInput(file);
    std::vector<Top> tops = readTops(*input.file);
    input.file->needWhole();
    return tops;
}

}  // namespace welvane
