#include "models/undo.h"

#include <new>
#include <set>
#include <utility>

#include "las/input_data.h"
#include "session/tvd.h"
#include "shared/failure.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// What a text takes beside the object itself.
std::size_t extraBytes(const std::string& text) {
    static const std::size_t inside = std::string().capacity();
    return text.capacity() > inside ? text.capacity() + 1 : 0;
}

std::size_t bytesOf(const Table& table) {
    std::size_t bytes = 0;
    for (int column = 0; column < table.columns(); ++column)
        for (int row = 0; row < table.rows(); ++row) {
            const SessionCell& cell = table.cell(row, column);
            bytes += sizeof(SessionCell) + extraBytes(cell.text) + extraBytes(cell.data);
        }
    return bytes;
}

std::size_t bytesOf(const SlotChannels& channels) {
    std::size_t bytes = 0;
    for (const SlotChannel& channel : channels)
        bytes += sizeof(SlotChannel) + extraBytes(channel.field.mnem) + extraBytes(channel.field.unit) +
                 extraBytes(channel.field.value) + extraBytes(channel.field.desc);
    return bytes;
}

std::size_t bytesOf(const SessionTables& tables) {
    std::size_t bytes = extraBytes(tables.otherText);
    for (const Table& table : tables.srd) bytes += bytesOf(table);
    for (const Table& table : tables.parg) bytes += bytesOf(table);
    for (const Table* table : {&tables.prd, &tables.frd, &tables.ord, &tables.wrd, &tables.trd})
        bytes += bytesOf(*table);
    for (const std::vector<std::string>& list : tables.parLst)
        for (const std::string& item : list) bytes += sizeof(std::string) + extraBytes(item);
    return bytes;
}

std::size_t bytesOf(const InputData& data) {
    std::size_t bytes = 0;
    for (const std::vector<double>& column : data.channels.columns) bytes += column.size() * sizeof(double);
    return bytes;
}

/// Samples of inputs that a state keeps in memory and that are not among `known`, which then holds them too.
std::size_t newSamples(const Session& session, std::set<const InputData*>& known) {
    std::size_t bytes = 0;
    for (const InputSlot& slot : session.slots)
        if (slot.data && known.insert(slot.data.get()).second) bytes += bytesOf(*slot.data);
    return bytes;
}

bool sameChannel(const SlotChannel& one, const SlotChannel& other) {
    return one.channelOffset == other.channelOffset && one.channelTop == other.channelTop &&
           one.channelBottom == other.channelBottom && one.spliced == other.spliced;
}

bool sameInputs(const Session& one, const Session& other) {
    for (int slot = 0; slot < slotCount; ++slot) {
        if (one.slots[slot].path != other.slots[slot].path || one.slots[slot].file != other.slots[slot].file ||
            one.opened[slot] != other.opened[slot] || one.channels[slot].size() != other.channels[slot].size())
            return false;
        for (std::size_t channel = 0; channel < one.channels[slot].size(); ++channel)
            if (!sameChannel(one.channels[slot][channel], other.channels[slot][channel])) return false;
    }
    return true;
}

/// Whether a person would see no difference.
bool nothingChanged(const SessionState& before, const App& app, const Session& session) {
    return before.format == app.settings.format && before.matrix == app.settings.matrix &&
           before.fillCurveValue == app.settings.fillCurveValue &&
           before.fillCurveDescription == app.settings.fillCurveDescription &&
           before.keepBadLines == app.settings.keepBadLines &&
           before.session.multipleConnections == session.multipleConnections &&
           before.session.filterFile == session.filterFile && sameInputs(before.session, session) &&
           before.session.tables == session.tables;
}

std::string rowName(const TableModel& table, TableIndex row) {
    return std::string(trim(table.text(row, 0)));
}

std::string channelEdit(const TableModel& table, TableIndex row, TableIndex column) {
    const bool isLink = row >= at(SrdRow::FirstLink);
    const int slot = (row - at(SrdRow::FirstLink)) / 4;
    std::string what = rowName(table, row);
    if (isLink && row == linkRow(slot, Link::Mnem)) what = "link";
    if (isLink) what += " of File " + std::to_string(slot + 1);
    return "Edit " + what + (isLink ? " in channel " : " of channel ") + std::to_string(static_cast<int>(column));
}

std::string lineEdit(const TableModel& table, TableIndex row, std::string_view section) {
    const std::string mnem(trim(table.text(row, at(FieldColumn::Mnem))));
    return "Edit line " + (mnem.empty() ? std::to_string(static_cast<int>(row)) : mnem) + " of " + std::string(section);
}

}  // namespace

SessionState SessionState::of(const App& app, const Session& session) {
    SessionState state{.session = session, .lasFile = app.run.lasFile};
    state.takeSettings(app);
    return state;
}

void SessionState::takeSettings(const App& app) {
    format = app.settings.format;
    matrix = app.settings.matrix;
    fillCurveValue = app.settings.fillCurveValue;
    fillCurveDescription = app.settings.fillCurveDescription;
    keepBadLines = app.settings.keepBadLines;
}

void SessionState::putBack(App& app, Session& into) const {
    into = session;
    app.settings.format = format;
    app.settings.matrix = matrix;
    app.settings.fillCurveValue = fillCurveValue;
    app.settings.fillCurveDescription = fillCurveDescription;
    app.settings.keepBadLines = keepBadLines;
    app.run.lasFile = lasFile;
}

std::size_t SessionState::bytes() const {
    std::size_t bytes =
        sizeof(SessionState) + bytesOf(session.tables) + session.inclinometry.rows.size() * sizeof(SurveyRow);
    for (const SlotChannels& channels : session.channels) bytes += bytesOf(channels);
    return bytes;
}

UndoHistory::Kept UndoHistory::keep(const App& app, const Session& session, std::string text) {
    Kept kept{.text = std::move(text), .state = SessionState::of(app, session)};
    kept.bytes = kept.state->bytes();
    return kept;
}

bool UndoHistory::undo(App& app, Session& session) {
    if (undo_.empty()) return false;
    Kept step = std::move(undo_.back());
    undo_.pop_back();
    if (step.stays()) return false;
    for (auto turn = step.turns.rbegin(); turn != step.turns.rend(); ++turn) (*turn)();
    if (step.state) {
        Kept now = keep(app, session, step.text);
        step.state->putBack(app, session);
        now.turns = std::move(step.turns);
        step = std::move(now);
    }
    redo_.push_back(std::move(step));
    return true;
}

bool UndoHistory::redo(App& app, Session& session) {
    if (redo_.empty()) return false;
    Kept step = std::move(redo_.back());
    redo_.pop_back();
    if (step.state) {
        Kept before = keep(app, session, step.text);
        step.state->putBack(app, session);
        before.turns = std::move(step.turns);
        step = std::move(before);
    }
    for (const std::function<void()>& turn : step.turns) turn();
    undo_.push_back(std::move(step));
    return true;
}

void UndoHistory::cannotUndo(std::string what) {
    undo_.push_back({.text = std::move(what)});
    makeRoom(nullptr);
}

void UndoHistory::settingsHold(const App& app, std::string what) {
    for (std::deque<Kept>* const steps : {&undo_, &redo_})
        for (Kept& step : *steps)
            if (step.state) step.state->takeSettings(app);
    cannotUndo(std::move(what));
}

void UndoHistory::clear() {
    undo_.clear();
    redo_.clear();
}

void UndoHistory::did(std::string text, std::function<void()> turn, std::size_t bytes, Kind kind) {
    if (kind == Kind::Typing && goesOn(text)) return redo_.clear();
    if (depth_ > 0) {
        begun_.turns.push_back(std::move(turn));
        begun_.bytes += bytes;
        return;
    }
    Kept step{.text = std::move(text), .kind = kind, .bytes = bytes};
    step.turns.push_back(std::move(turn));
    push(std::move(step), nullptr);
}

bool UndoHistory::goesOn(const std::string& text) const {
    return !undo_.empty() && undo_.back().kind == Kind::Typing && undo_.back().text == text;
}

void UndoHistory::forgetTurns() {
    const auto turns = [](const Kept& step) { return !step.turns.empty(); };
    std::erase_if(undo_, turns);
    std::erase_if(redo_, turns);
}

void UndoHistory::push(Kept step, const Session* session) {
    undo_.push_back(std::move(step));
    redo_.clear();
    makeRoom(session);
}

/// The samples of the inputs that the session holds are not counted; without a session none are.
void UndoHistory::makeRoom(const Session* session) {
    std::set<const InputData*> known;
    if (session != nullptr) newSamples(*session, known);
    std::size_t bytes = 0, kept = 0, steps = 0;
    for (auto step = undo_.rbegin(); step != undo_.rend(); ++step, ++kept) {
        bytes += sizeof(Kept) + step->text.size() + step->bytes;
        if (session != nullptr && step->state) bytes += newSamples(step->state->session, known);
        if (bytes > room_ && steps > 0) break;
        steps += step->stays() ? 0 : 1;
    }
    while (undo_.size() > kept) undo_.pop_front();
}

UndoHistory::Step::Step(UndoHistory& history, App& app, Session& session, std::string text, Kind kind)
    : history_(history), app_(&app), session_(&session), text_(std::move(text)), kind_(kind) {
    goesOn_ = kind == Kind::Typing && history.goesOn(text_);
    // The state before the first letter is kept already.
    if (history_.depth_ == 0 && !goesOn_) before_ = std::make_unique<SessionState>(SessionState::of(app, session));
    ++history_.depth_;
}

UndoHistory::Step::Step(UndoHistory& history, std::string text) : history_(history), text_(std::move(text)) {
    ++history_.depth_;
}

UndoHistory::Step::~Step() {
    if (--history_.depth_ > 0) return;
    if (goesOn_) {
        history_.redo_.clear();
        return;
    }
    try {
        Kept step = std::exchange(history_.begun_, {});
        if (before_ && !nothingChanged(*before_, *app_, *session_)) {
            step.bytes += before_->bytes();
            step.state = std::move(*before_);
        }
        if (step.stays()) return;
        step.text = std::move(text_);
        step.kind = kind_;
        history_.push(std::move(step), session_);
    } catch (const std::bad_alloc&) {
        history_.clear();
    }
}

std::string editText(const TableModel& table, SessionGrid grid, TableIndex row, TableIndex column) {
    switch (grid) {
        case SessionGrid::NewChannels:
            return channelEdit(table, row, column);
        case SessionGrid::Properties:
            return "Edit " + rowName(table, row);
        case SessionGrid::Sections:
            return "Edit section " + table.text(at(OrdRow::Name), column);
        case SessionGrid::Well:
            return lineEdit(table, row, "~Well");
        case SessionGrid::Parameters:
            return lineEdit(table, row, "~Parameter");
        case SessionGrid::Filter:
            return "Edit filter";
        case SessionGrid::Survey:
            return "Edit " + std::string(trim(table.text(at(TrdRow::Name), column))) + " of survey row " +
                   std::to_string(static_cast<int>(row));
    }
    return "Edit";
}

UndoableModel::UndoableModel(std::unique_ptr<TableModel> table, SessionGrid grid, UndoHistory& history, App& app,
                             Session& session)
    : table_(std::move(table)), grid_(grid), history_(history), app_(app), session_(session) {}

void UndoableModel::asStep(std::int64_t row, int column, const std::function<EditOutcome()>& edit) {
    const UndoHistory::Step step(history_, app_, session_, editText(*table_, grid_, row, column));
    const EditOutcome outcome = edit();
    if (!outcome.done) throw RunTimeFailure(outcome.why);
}

void UndoableModel::asOneStep(const std::string& text, const std::function<void()>& body) {
    const UndoHistory::Step step(history_, app_, session_, text);
    body();
}

void UndoableModel::applyEdit(std::int64_t row, int column, const std::string& text, int item) {
    asStep(row, column, [&] { return table_->edit(row, column, text, item); });
}

void UndoableModel::applyCheck(std::int64_t row, int column, bool on) {
    asStep(row, column, [&] { return table_->setCheck(row, column, on); });
}

}  // namespace welvane
