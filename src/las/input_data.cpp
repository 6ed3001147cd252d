#include "las/input_data.h"

#include <cmath>
#include <optional>
#include <utility>

#include "las/depth_spacing.h"
#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// What STRT, STOP and STEP say that the data do not.
void noteDepthLines(const DepthHeader& header, const IndexSpacing& spacing, const std::string& name,
                    std::vector<Note>& notes) {
    const double tolerance = std::max(spacing.step / 4, 1e-9);
    const auto tell = [&](std::string_view mnem, const std::string& said, double found) {
        const bool none = trim(said).empty();
        if (!none && isNumeric(said) && std::abs(val(said) - found) <= tolerance) return;
        const std::string what =
            none ? "there is no " + std::string(mnem) : std::string(mnem) + " says " + std::string(trim(said));
        notes.push_back({.kind = NoteKind::DepthLines,
                         .file = name,
                         .text = what + ", the data " + (mnem == "STRT" ? "begin" : "end") + " at " +
                                 plainNumber(found) + ", which is taken"});
    };
    tell("STRT", header.strt().value, spacing.first);
    tell("STOP", header.stop().value, spacing.last);
    if (!spacing.ownStep || spacing.kind == IndexSpacing::Kind::Irregular || spacing.first == spacing.last) return;
    const std::string said(trim(header.step().value));
    notes.push_back({.kind = NoteKind::DepthLines,
                     .file = name,
                     .text = (said.empty() ? "there is no STEP" : "STEP says " + said) + ", the data go by " +
                             stripZeros(formatMask(spacing.step, 9)) + ", which is taken"});
}

}  // namespace

std::vector<Note> depthNotes(const DepthHeader& header, const IndexSpacing& spacing, const std::string& name) {
    std::vector<Note> notes;
    noteDepthLines(header, spacing, name, notes);
    if (spacing.off > depthRounding(spacing.decimals))
        notes.push_back({.kind = NoteKind::DepthLines,
                         .file = name,
                         .text = "depths lie up to " + stripZeros(formatMask(spacing.off, 6)) +
                                 " beside those of one step, which are written"});
    if (spacing.missing > 0)
        notes.push_back({.kind = NoteKind::Records,
                         .file = name,
                         .count = spacing.missing,
                         .text = "records are missing between others; null stands there"});
    return notes;
}

std::shared_ptr<InputData> readInputData(const LasFile& file, const ChannelReading& how, std::string_view indexUnit,
                                         RunTurn& turn) {
    auto data = std::make_shared<InputData>();
    data->unit = chooseIndexUnit(file.text(), indexUnit);
    std::optional<ChannelData> channels = readChannels(file, how, turn);
    if (!channels) return nullptr;
    data->channels = std::move(*channels);
    const std::string& name = file.path();
    if (data->channels.columns.empty() || data->depths().empty()) throw RunTimeFailure("no data behind its ~A line");
    const DepthHeader header = file.depthHeader();
    data->spacing = judgeSpacing(data->depths(), data->channels.facts.channels.front().decimals, header.step().value);
    data->notes = std::move(data->channels.notes);
    data->nullText = data->channels.null.given ? std::string(trim(header.null().value)) : "-999.25";
    for (Note& note : indexNotes(data->unit, name)) data->notes.push_back(std::move(note));
    for (Note& note : depthNotes(header, data->spacing, name)) data->notes.push_back(std::move(note));
    return data;
}

bool convertIndex(InputData& data, const IndexUnit& wanted, const std::string& name) {
    if (data.unit.kind == IndexUnitKind::Unknown || wanted.kind == IndexUnitKind::Unknown) return true;
    if (sameIndexUnit(data.unit, wanted)) return true;
    if (!data.unit.isLength() || !wanted.isLength()) return false;
    const double factor = data.unit.metres / wanted.metres;
    for (double& depth : data.channels.columns.front()) depth *= factor;
    IndexSpacing& spacing = data.spacing;
    for (double* length : {&spacing.first, &spacing.last, &spacing.top, &spacing.bottom, &spacing.step})
        *length *= factor;
    data.notes.push_back({.kind = NoteKind::Unit,
                          .file = name,
                          .text = "its depths are converted from " + data.unit.text + " to " + wanted.text});
    data.unit = wanted;
    return true;
}

}  // namespace welvane
