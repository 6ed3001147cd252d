#include "engine/well_edits.h"

#include <set>
#include <utility>

#include "engine/header_sections.h"
#include "las/las_file.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

std::vector<HeaderField> wellLines(const Session& session) {
    const int slot = session.firstSlot();
    if (slot < 0 || !session.slots[slot].file) return {};
    return session.slots[slot].file->section('W', lettersAsTheyStand).value_or(SectionTable());
}

std::vector<HeaderField> shownLines(const Table& wrd) {
    std::vector<HeaderField> lines;
    for (int row = 1; row < wrd.rows(); ++row)
        lines.push_back({wrd.text(row, FieldColumn::Mnem), wrd.text(row, FieldColumn::Unit),
                         wrd.text(row, FieldColumn::Value), wrd.text(row, FieldColumn::Desc)});
    return lines;
}

}  // namespace

std::string WellEdits::nextKey(Counts& counts, const std::string& mnem) {
    const std::string name = upper(trim(mnem));
    return name + '\n' + std::to_string(counts[name]++);
}

WellEdits::WellEdits(const Session& session, double outputVersion) {
    std::vector<HeaderField> before = wellLines(session), after = shownLines(session.tables.wrd);
    if (before.empty() || after.empty()) return;
    const double version = val(session.slots[session.firstSlot()].lasVersion);
    for (std::vector<HeaderField>* lines : {&before, &after}) {
        std::erase_if(*lines, [](const HeaderField& line) { return trim(line.mnem).empty(); });
        for (HeaderField& line : *lines) swapForVersions(line, version, outputVersion);
    }
    compare(before, after);
}

void WellEdits::compare(const std::vector<HeaderField>& before, const std::vector<HeaderField>& after) {
    Counts ofInput, ofTable;
    std::map<std::string, const HeaderField*> known;
    for (const HeaderField& line : before) known[nextKey(ofInput, line.mnem)] = &line;
    for (const HeaderField& now : after) {
        const std::string key = nextKey(ofTable, now.mnem);
        const auto found = known.find(key);
        if (found == known.end()) {
            (order_.empty() ? front_ : lines_[order_.back()].behind).push_back(now);
            continue;
        }
        order_.push_back(key);
        const HeaderField& was = *found->second;
        const std::array<bool, 3> edited = {now.unit != was.unit, now.value != was.value, now.desc != was.desc};
        known.erase(found);
        if (edited != std::array<bool, 3>{}) lines_[key] = {.edited = edited, .now = now};
    }
    for (const auto& [key, line] : known) lines_[key].gone = true;
}

std::vector<HeaderField> WellEdits::inPlaceOf(const HeaderField& line) {
    const auto found = lines_.find(nextKey(asked_, line.mnem));
    if (found == lines_.end()) return {line};
    const Line edit = std::move(lines_.extract(found).mapped());
    std::vector<HeaderField> result;
    if (!edit.gone) {
        result.push_back(line);
        if (edit.edited[0]) result.back().unit = edit.now.unit;
        if (edit.edited[1]) result.back().value = edit.now.value;
        if (edit.edited[2]) result.back().desc = edit.now.desc;
    }
    result.insert(result.end(), edit.behind.begin(), edit.behind.end());
    return result;
}

std::vector<HeaderField> WellEdits::rest() {
    std::vector<HeaderField> result;
    for (const std::string& key : order_) {
        const auto found = lines_.find(key);
        if (found == lines_.end()) continue;
        if (found->second.edited != std::array<bool, 3>{}) result.push_back(found->second.now);
        result.insert(result.end(), found->second.behind.begin(), found->second.behind.end());
    }
    return result;
}

}  // namespace welvane
