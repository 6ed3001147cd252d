#include "jobs/library.h"

#include <algorithm>
#include <utility>

#include "jobs/true_input.h"
#include "shared/failure.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Failures of the edits are in words for the user.
template <class Body>
void refuseFailures(const Body& body) {
    try {
        body();
    } catch (const FileFailure&) {
        throw;
    } catch (const RunTimeFailure& failure) {
        throw Refusal("", failure.what());
    }
}

/// A file that is not read to its end would lose the rest when it is saved.
bool readWhole(ReferenceTables& tables, LibraryPart part, const std::string& path) {
    return !fileExists(path) || (part == LibraryPart::Curves ? readCurves(tables, path) : readUnits(tables, path));
}

/// The part as its file has it now: somebody else may have saved since the start.
void readPart(App& app, LibraryPart part) {
    readWhole(app.reference, part, libraryPath(app, part));
}

void savePart(App& app, LibraryPart part) {
    const std::string why = saveLibrary(app, part);
    if (!why.empty()) throw Refusal(libraryPath(app, part), why);
}

std::string fieldOr(const std::vector<std::string>& fields, std::size_t index) {
    return index < fields.size() ? fields[index] : std::string();
}

void addGroup(ReferenceTables& tables, const LibraryRequest& request) {
    if (request.part == LibraryPart::Curves)
        addCurveGroup(tables, {request.group, fieldOr(request.fields, 0), fieldOr(request.fields, 1),
                               fieldOr(request.fields, 2)});
    else
        addUnitGroup(tables, {request.group, fieldOr(request.fields, 0)});
}

void addMember(ReferenceTables& tables, const LibraryRequest& request) {
    if (request.part == LibraryPart::Curves)
        addCurve(tables, {request.group, request.name, request.description});
    else
        addUnit(tables, {request.group, request.name, request.factor, request.offset});
}

void renameMember(ReferenceTables& tables, const LibraryRequest& request) {
    for (const std::size_t row : membersOfGroup(tables, request.part, request.group)) {
        if (request.part == LibraryPart::Curves && sameText(tables.curves[row].mnem, request.name)) {
            changeCurve(tables, request.group, request.name, {request.group, request.newName, tables.curves[row].desc});
            return;
        }
        if (request.part == LibraryPart::Units && sameText(tables.units[row].externalUnit, request.name)) {
            const Unit& unit = tables.units[row];
            changeUnit(tables, request.group, request.name, {request.group, request.newName, unit.factor, unit.offset});
            return;
        }
    }
    throw RunTimeFailure("\"" + request.name + "\" stands not in the group \"" + request.group + "\"");
}

void applyEdit(ReferenceTables& tables, const LibraryRequest& request) {
    switch (request.edit) {
        case LibraryRequest::Edit::Add:
            return addMember(tables, request);
        case LibraryRequest::Edit::Remove:
            return removeMember(tables, request.part, request.group, request.name);
        case LibraryRequest::Edit::Rename:
            return renameMember(tables, request);
        case LibraryRequest::Edit::AddGroup:
            return addGroup(tables, request);
        case LibraryRequest::Edit::RemoveGroup:
            return removeGroup(tables, request.part, request.group);
    }
}

/// The lines of the file's ~Curve section, each with the group that the request has for it. Refusal for a mnemonic of
/// the map that the file does not have.
std::vector<LibraryCandidate> candidatesOf(const SectionTable& lines, const LibraryImport& request) {
    std::vector<LibraryCandidate> candidates;
    for (const HeaderField& line : lines)
        candidates.push_back({line, candidates.empty() ? std::string() : request.group});
    for (const LibraryImport::Mapping& mapping : request.map) {
        bool found = false;
        for (LibraryCandidate& candidate : candidates) {
            if (!sameText(candidate.line.mnem, mapping.mnem)) continue;
            candidate.group = mapping.group;
            found = true;
        }
        if (!found) throw Refusal(request.file, "it has no channel \"" + mapping.mnem + "\"");
    }
    return candidates;
}

const Curve* knownCurve(const ReferenceTables& tables, std::string_view mnem) {
    const auto found = std::find_if(tables.curves.begin(), tables.curves.end(),
                                    [&](const Curve& curve) { return sameText(curve.mnem, mnem); });
    return found == tables.curves.end() ? nullptr : &*found;
}

}  // namespace

std::string libraryPath(const App& app, LibraryPart part) {
    const bool curves = part == LibraryPart::Curves;
    const std::string& path = curves ? app.settings.curvesPath : app.settings.unitsPath;
    return path.empty() ? app.platform.programFolder() + (curves ? "curves.ini" : "units.ini") : path;
}

std::string saveLibrary(App& app, LibraryPart part) {
    const std::string path = libraryPath(app, part);
    ReferenceTables old;
    if (!readWhole(old, part, path)) return "not saved: the old file is too large to be read to its end";
    dropRepeatedGroups(app.reference, part);
    std::string why;
    const bool curves = part == LibraryPart::Curves;
    const bool done = curves ? writeCurves(app.reference, path, &why) : writeUnits(app.reference, path, &why);
    if (done) (curves ? app.settings.curvesPath : app.settings.unitsPath) = path;
    return done ? std::string() : "not saved: " + why;
}

LibraryAdditions addToLibrary(ReferenceTables& tables, const std::vector<LibraryCandidate>& candidates) {
    LibraryAdditions result;
    for (const LibraryCandidate& candidate : candidates) {
        const Curve curve{candidate.group, candidate.line.mnem, candidate.line.desc};
        const Curve* const known = knownCurve(tables, curve.mnem);
        if (known != nullptr && (candidate.group.empty() || sameText(known->group, candidate.group))) continue;
        try {
            if (candidate.group.empty()) throw RunTimeFailure("no group");
            addCurve(tables, curve);
            result.added.push_back(*knownCurve(tables, curve.mnem));
        } catch (const RunTimeFailure& failure) {
            result.leftOut.push_back({curve.mnem, failure.what()});
        }
    }
    return result;
}

bool mayRemoveGroup(App& app, LibraryPart part, std::string_view group) {
    const std::size_t members = membersOfGroup(app.reference, part, group).size();
    if (members == 0) return true;
    const std::string_view what = part == LibraryPart::Curves ? "curve" : "unit";
    return app.user.ask(
               {"Delete Group?",
                "The group \"" + std::string(group) + "\" has " + counted(members, what) + ". Delete them too?",
                Buttons::YesNo, Icon::Question, Answer::No}) == Answer::Yes;
}

bool editLibrary(Workbench& bench, const LibraryRequest& request) {
    App& app = bench.app();
    readPart(app, request.part);
    bool wanted = true;
    refuseFailures([&] {
        wanted = request.edit != LibraryRequest::Edit::RemoveGroup || mayRemoveGroup(app, request.part, request.group);
        if (wanted) applyEdit(app.reference, request);
    });
    if (wanted) savePart(app, request.part);
    return wanted;
}

LibraryAdditions importCurves(Workbench& bench, const LibraryImport& request) {
    App& app = bench.app();
    const LasFilePointer file = openTrue(request.file);
    const SectionTable lines = file->section('C', lettersAsTheyStand).value_or(SectionTable());
    readingOf(request.file, [&] { file->needWhole(); });
    if (lines.empty()) throw Refusal(request.file, "it has no ~Curve section with lines");
    const std::vector<LibraryCandidate> candidates = candidatesOf(lines, request);
    readPart(app, LibraryPart::Curves);
    refuseFailures([&] {
        for (const LibraryCandidate& candidate : candidates)
            if (!candidate.group.empty()) membersOfGroup(app.reference, LibraryPart::Curves, candidate.group);
    });
    LibraryAdditions additions = addToLibrary(app.reference, candidates);
    if (!additions.added.empty()) savePart(app, LibraryPart::Curves);
    return additions;
}

}  // namespace welvane
