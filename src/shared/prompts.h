#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shared/notes.h"

/// The one seam through which the logic asks and tells: a prompt is a value, someone else answers it.
namespace welvane {

enum class Buttons { Ok, OkCancel, YesNo };
enum class Icon { None, Information, Question, Warning, Stop };
enum class Answer { Ok, Cancel, Yes, No };

/// A message box. `whenHeadless` is what a run without anybody to ask takes for the answer.
struct Prompt {
    std::string title;
    std::string text;
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
    Answer whenHeadless = Answer::Ok;
    /// What a script of today gets that neither answers nor has a terminal.
    Answer safe() const {
        return buttons == Buttons::YesNo ? Answer::No : buttons == Buttons::OkCancel ? Answer::Cancel : Answer::Ok;
    }
};

/// A box with one line to type; an empty answer means cancelled.
struct TextPrompt {
    std::string title;
    std::string text;
    std::string defaultText;
};

/// A file dialog; an empty answer means cancelled.
struct FilePrompt {
    std::string title;
    std::string extension;
    std::string folder;
    std::string defaultName;
    bool save = false;
};

/// What a long step tells of itself: `fraction` is 0 to 1.
struct Progress {
    std::string_view status;
    double fraction = 0;
};

/// A piece of work as a display needs to know it.
struct Work {
    std::string label{};        ///< shown in place of the names of its steps; "" for none
    std::string file{};         ///< what it is about; "" for no single file
    std::uint64_t bytes = 0;    ///< its length, where that is known
    double begin = 0, end = 1;  ///< the part that it is of a longer way
};

struct UserInterface {
    virtual ~UserInterface() = default;
    virtual Answer ask(const Prompt& prompt) = 0;
    virtual std::string askText(const TextPrompt& prompt) = 0;
    virtual std::string askFile(const FilePrompt& prompt) = 0;
    virtual std::string askFolder(const std::string& title, const std::string& start) = 0;
    /// Told now and then by a long step.
    virtual void progress(const Progress&) {}
    /// Told before a piece of work, and when all of it is done.
    virtual void startWork(const Work&) {}
    virtual void endWork() {}
    /// Told of each note as it is found; a report lists them all.
    virtual void tell(const Note&) {}
    /// While held back, boxes that only tell something are dropped: the report of the work tells it.
    virtual void holdBoxes(bool) {}
    /// One turn for pending events, once per record or line; never called in command mode.
    virtual void pumpEvents() {}
};

/// A box with a warning sign and the one button OK, until it was read.
inline void showWarning(UserInterface& user, std::string title, std::string text) {
    user.ask({std::move(title), std::move(text), Buttons::Ok, Icon::Warning, Answer::Ok});
}

/// The headless line: shows nothing, answers as each prompt says.
class SilentInterface : public UserInterface {
  public:
    Answer ask(const Prompt& prompt) override { return prompt.whenHeadless; }
    std::string askText(const TextPrompt&) override { return {}; }
    std::string askFile(const FilePrompt&) override { return {}; }
    std::string askFolder(const std::string&, const std::string&) override { return {}; }
};

}  // namespace welvane
