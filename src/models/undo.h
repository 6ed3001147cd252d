#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>

#include "models/table_model.h"
#include "session/session.h"

/// Taking back what a person did to a session: whole states, kept before each step.
namespace welvane {

/// What a step may change: the session, and what of the process its edits write.
struct SessionState {
    Session session;
    FormatDefaults format;
    bool fillCurveValue = false, fillCurveDescription = false;
    std::string lasFile;

    static SessionState of(const App& app, const Session& session);
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
    /// What is taken back next, "Edit Mnem of channel 3"; without such a step what cannot be taken back and why, or "".
    const std::string& undoText() const { return undo_.empty() ? barrier_ : undo_.back().text; }
    std::string redoText() const { return redo_.empty() ? std::string() : redo_.back().text; }
    std::size_t steps() const { return undo_.size(); }

    /// False, with nothing changed, where there is no step.
    bool undo(App& app, Session& session);
    bool redo(App& app, Session& session);
    /// Something was done that nothing takes back: a file deleted, a run. The steps before it stay out of reach.
    void cannotUndo(std::string what);
    /// Another session: no steps.
    void clear();

    /// A step: keeps the state now. When the step ends, that is dropped if nothing came of it. Steps inside of another
    /// belong to it.
    class Step {
      public:
        Step(UndoHistory& history, App& app, Session& session, std::string text);
        ~Step();
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

      private:
        UndoHistory& history_;
        App& app_;
        Session& session_;
        std::string text_;
        std::unique_ptr<SessionState> before_;
    };

  private:
    struct Kept {
        SessionState state;
        std::string text;
        std::size_t bytes = 0;
    };
    static Kept keep(SessionState state, std::string text);
    bool swap(std::deque<Kept>& from, std::deque<Kept>& to, App& app, Session& session);
    void makeRoom(const Session& session);

    std::size_t room_;
    std::deque<Kept> undo_, redo_;
    std::string barrier_;
    int depth_ = 0;  ///< steps begun inside of each other
};

/// The grids of a session, for the words of a step.
enum class SessionGrid { NewChannels, Properties, Sections, Well, Parameters, Filter, Survey };
/// "Edit Mnem of channel 3", "Edit Sample Rate", "Edit line WELL of ~Well".
std::string editText(const Session& session, SessionGrid grid, TableIndex row, TableIndex column);

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
