#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shared/progress.h"
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
    double now() const;  ///< seconds since the bar was made

    ShowProgress show_;
    ProgressMeter meter_;
    std::chrono::steady_clock::time_point made_ = std::chrono::steady_clock::now();
    double drawn_ = -1;
    int lastTenth_ = -1;
    bool onScreen_ = false;
};

/// The text with each path replaced by the name beside it.
std::string withNames(std::string text, const std::vector<std::pair<std::string, std::string>>& names);

/// Asks at a terminal. Without one the safe answer is taken and said.
class TerminalInterface : public UserInterface {
  public:
    void configure(Ask ask, ShowProgress progress, bool quiet);
    /// Progress is read from here at each turn.
    void watch(const RunState& run) { run_ = &run; }

    /// Paths and the names by which they are shown.
    void showAs(std::vector<std::pair<std::string, std::string>> names) { names_ = std::move(names); }
    /// One line on stderr behind "welvane: ".
    void say(std::string_view line);
    /// The same, but not when quiet.
    void note(std::string_view line);
    /// Whole lines on stderr as they stand, but not when quiet.
    void noteBlock(std::string_view lines);
    ProgressBar& bar() { return bar_; }

    Answer ask(const Prompt& prompt) override;
    std::string askText(const TextPrompt& prompt) override;
    std::string askFile(const FilePrompt& prompt) override;
    std::string askFolder(const std::string& title, const std::string& start) override;
    void progress(const Progress& progress) override;
    /// Its progress is shown under its label as the part of a longer way that it is, without one each step by its own
    /// name; notes are told of its file unless they name it.
    void startWork(const Work& work) override;
    void endWork() override;
    void tell(const Note& note) override;
    void holdBoxes(bool held) override { held_ = held; }
    void pumpEvents() override;

  private:
    void show(std::string_view status, double fraction);
    bool canAsk() const;
    Answer askAtTerminal(const Prompt& prompt);
    std::string askForLine(const std::string& question, const std::string& defaultText);

    Ask ask_ = Ask::AtTerminal;
    bool quiet_ = false, held_ = false;
    const RunState* run_ = nullptr;
    ProgressBar bar_{ShowProgress::Auto};
    unsigned turns_ = 0;
    std::string spanLabel_, subject_;
    std::vector<std::pair<std::string, std::string>> names_;
    double spanBegin_ = 0, spanEnd_ = 1, spanReached_ = 0;
};

}  // namespace welvane
