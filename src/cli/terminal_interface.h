#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "shared/prompts.h"
#include "shared/run_state.h"

/// How the verbs speak: notes, questions and progress, all of it on stderr.
namespace welvane {

enum class Ask { AtTerminal, AlwaysYes, AlwaysNo };
enum class ShowProgress { Auto, Always, Never };

/// A bar with rate and time left on stderr, drawn a few times a second at most and taken away at the end. Where stderr
/// is no terminal, a line per tenth of the way.
class ProgressBar {
  public:
    explicit ProgressBar(ShowProgress show) : show_(show) {}
    ~ProgressBar() { clear(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void setShow(ShowProgress show) { show_ = show; }
    /// Bytes that the fraction 1 stands for, for the rate; 0 for no rate. Begins a new step.
    void setTotal(std::uint64_t bytes);
    void update(std::string_view status, double fraction);
    /// Takes the bar off the screen before something else is written.
    void clear();

  private:
    using Clock = std::chrono::steady_clock;
    void begin(std::string_view status, Clock::time_point now);
    std::string measure(double fraction, Clock::time_point now) const;

    ShowProgress show_;
    std::uint64_t total_ = 0;
    std::string status_;
    Clock::time_point begun_{}, drawn_{};
    double lastFraction_ = 0;
    int lastTenth_ = -1;
    bool onScreen_ = false;
};

/// Asks at a terminal. Without one the safe answer is taken and said.
class TerminalInterface : public UserInterface {
  public:
    void configure(Ask ask, ShowProgress progress, bool quiet);
    /// Progress is read from here at each turn.
    void watch(const RunState& run) { run_ = &run; }
    /// Boxes that only tell something are dropped while muted.
    void mute(bool muted) { muted_ = muted; }

    /// One line on stderr behind "welvane: ".
    void say(std::string_view line);
    /// The same, but not when quiet.
    void note(std::string_view line);
    /// Whole lines on stderr as they stand, but not when quiet.
    void noteBlock(std::string_view lines);
    ProgressBar& bar() { return bar_; }
    /// The progress of a run is shown under this label as the part of a longer way that it is; "" shows each step by
    /// its own name again.
    void setSpan(std::string label, double begin, double end);
    /// Notes are told of this file unless they name it; "" for no file.
    void setSubject(std::string file) { subject_ = std::move(file); }

    Answer ask(const Prompt& prompt) override;
    std::string askText(const TextPrompt& prompt) override;
    std::string askFile(const FilePrompt& prompt) override;
    std::string askFolder(const std::string& title, const std::string& start) override;
    void progress(const Progress& progress) override;
    void pumpEvents() override;

  private:
    void show(std::string_view status, double fraction);
    bool canAsk() const;
    Answer askAtTerminal(const Prompt& prompt);
    std::string askForLine(const std::string& question, const std::string& defaultText);

    Ask ask_ = Ask::AtTerminal;
    bool quiet_ = false, muted_ = false;
    const RunState* run_ = nullptr;
    ProgressBar bar_{ShowProgress::Auto};
    unsigned turns_ = 0;
    std::string spanLabel_, subject_;
    double spanBegin_ = 0, spanEnd_ = 1, spanReached_ = 0;
};

}  // namespace welvane
