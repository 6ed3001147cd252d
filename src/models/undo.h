#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "models/table_model.h"
#include "session/session.h"

/// Taking back what a person did to a session: whole states, kept before each step.
namespace welvane {

/// What a step may change: the session, and what of the process its edits write.
struct SessionState {
    Session session;
    FormatDefaults format{};
    MatrixTable matrix{};
    bool fillCurveValue = false, fillCurveDescription = false, keepBadLines = false;
    std::string lasFile;

    static SessionState of(const App& app, const Session& session);
    void takeSettings(const App& app);
    void putBack(App& app, Session& session) const;
    /// Bytes of its tables; an opened file and its samples are shared with other states.
    std::size_t bytes() const;
};

class UndoHistory {
  public:
    static constexpr std::size_t usualRoom = std::size_t{64} << 20U;
    /// States are kept as long as they fit into `room` bytes, with the samples of inputs that the session has no more;
    /// the oldest go first. One step can always be taken back.
    explicit UndoHistory(std::size_t room = usualRoom) : room_(room) {}

    bool canUndo() const { return !undo_.empty(); }
    bool canRedo() const { return !redo_.empty(); }
    /// What was done last, "Edit Mnem of channel 3"; "" for nothing.
    std::string undoText() const { return undo_.empty() ? std::string() : undo_.back().text; }
    std::string redoText() const { return redo_.empty() ? std::string() : redo_.back().text; }
    /// True when what was done last stays as it is, whatever is undone.
    bool lastStays() const { return !undo_.empty() && undo_.back().stays(); }
    std::size_t steps() const { return undo_.size(); }

    /// Takes back what was done last. False, with nothing changed, where nothing was, and where that stays as it is: it
    /// is passed over then, and the next undo takes back what was done before it.
    bool undo(App& app, Session& session);
    bool redo(App& app, Session& session);
    /// Something was done beside the session that nothing takes back: a file deleted, a file written. `what` says so.
    void cannotUndo(std::string what);
    /// Settings were chosen that hold from now on, whatever is undone. `what` says so.
    void settingsHold(const App& app, std::string what);
    /// Another session: no steps.
    void clear();

    /// A step: keeps the state now. When the step ends, that is dropped if nothing came of it. Steps inside of another
    /// belong to it. A `Typing` one goes on with the step right before it when that has the same text, so that a text
    /// is not taken back letter by letter.
    enum class Kind { Usual, Typing };
    class Step {
      public:
        Step(UndoHistory& history, App& app, Session& session, std::string text, Kind kind = Kind::Usual);
        /// Of what is done beside the session alone: keeps no state.
        Step(UndoHistory& history, std::string text);
        ~Step();
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

      private:
        UndoHistory& history_;
        const App* app_ = nullptr;
        const Session* session_ = nullptr;
        std::string text_;
        Kind kind_ = Kind::Usual;
        bool goesOn_ = false;  ///< with the step before it
        std::unique_ptr<SessionState> before_;
    };

    /// A step beside the session, or a part of the one that has begun: `turn` changes what held before and what holds
    /// now for each other, each time it is called, and must not throw. `bytes` is what it keeps for that.
    void did(std::string text, std::function<void()> turn, std::size_t bytes, Kind kind = Kind::Usual);
    /// What turns would act on is another thing now: those steps are gone.
    void forgetTurns();

  private:
    struct Kept {
        std::string text;
        Kind kind = Kind::Usual;
        std::size_t bytes = 0;
        std::optional<SessionState> state{};
        std::vector<std::function<void()>> turns{};  ///< in the order in which they were done
        bool stays() const { return !state && turns.empty(); }
    };
    static Kept keep(const App& app, const Session& session, std::string text);
    bool goesOn(const std::string& text) const;
    void push(Kept step, const Session* session);
    void makeRoom(const Session* session);

    std::size_t room_;
    std::deque<Kept> undo_, redo_;
    Kept begun_;     ///< what was done beside the session since the outermost step began
    int depth_ = 0;  ///< steps begun inside of each other
};

/// The grids of a session, for the words of a step.
enum class SessionGrid { NewChannels, Properties, Sections, Well, Parameters, Filter, Survey };
/// "Edit Mnem of channel 3", "Edit Sample Rate", "Edit line WELL of ~Well". `table` is the grid.
std::string editText(const TableModel& table, SessionGrid grid, TableIndex row, TableIndex column);

/// A grid each edit of which can be taken back.
class UndoableModel : public TableModel {
  public:
    UndoableModel(std::unique_ptr<TableModel> table, SessionGrid grid, UndoHistory& history, App& app,
                  Session& session);

    std::int64_t rows() const override { return table_->rows(); }
    int columns() const override { return table_->columns(); }
    int headRows() const override { return table_->headRows(); }
    int headColumns() const override { return table_->headColumns(); }
    bool rowHidden(std::int64_t row) const override { return table_->rowHidden(row); }
    std::string text(std::int64_t row, int column) const override { return table_->text(row, column); }
    Check check(std::int64_t row, int column) const override { return table_->check(row, column); }
    std::uint32_t backColour(std::int64_t row, int column) const override { return table_->backColour(row, column); }
    std::string pickList(std::int64_t row, int column) const override { return table_->pickList(row, column); }
    bool mayEdit(std::int64_t row, int column) const override { return table_->mayEdit(row, column); }

    void asOneStep(const std::string& text, const std::function<void()>& body) override;

  protected:
    void applyEdit(std::int64_t row, int column, const std::string& text, int item) override;
    void applyCheck(std::int64_t row, int column, bool on) override;

  private:
    void asStep(std::int64_t row, int column, const std::function<EditOutcome()>& edit);

    std::unique_ptr<TableModel> table_;
    SessionGrid grid_;
    UndoHistory& history_;
    App& app_;
    Session& session_;
};

}  // namespace welvane
