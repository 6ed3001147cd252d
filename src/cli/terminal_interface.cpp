#include "cli/terminal_interface.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

#include "cli/shown_text.h"
#include "platform/terminal.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Nothing is drawn for what is done sooner than this, in seconds.
constexpr double quietTime = 0.3;
constexpr double redrawTime = 0.1;
constexpr int barWidth = 24;
/// A look at the clock once in so many turns.
constexpr unsigned turnsPerLook = 64;

void writeError(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

/// Line breaks of a box as blanks.
std::string asOneLine(std::string_view text) {
    std::string line;
    for (const char c : text) {
        const bool isBreak = c == '\r' || c == '\n';
        if (!isBreak)
            line += c;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    return std::string(trim(line));
}

std::string_view nameOf(Answer answer) {
    switch (answer) {
        case Answer::Ok:
            return "OK";
        case Answer::Cancel:
            return "Cancel";
        case Answer::Yes:
            return "Yes";
        case Answer::No:
            return "No";
    }
    return "";
}

}  // namespace

double ProgressBar::now() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - made_).count();
}

void ProgressBar::setTotal(std::uint64_t bytes) {
    meter_.setTotal(bytes, now());
    lastTenth_ = -1;
}

void ProgressBar::update(std::string_view status, double fraction) {
    if (show_ == ShowProgress::Never) return;
    const bool terminal = isTerminal(Stream::Error);
    if (show_ == ShowProgress::Auto && !terminal) return;
    const double seconds = now();
    const ProgressReading reading = meter_.read(status, fraction, seconds);
    const std::string percent = std::to_string(reading.percent) + " %";
    if (!terminal) {
        const int tenth = static_cast<int>(reading.fraction * 10);
        // The begin of a step is told again, be it the same one on the next file.
        if (tenth == lastTenth_ && meter_.elapsed(seconds) > 0) return;
        lastTenth_ = tenth;
        writeError(shownText(status) + " " + percent + rateText(reading) + "\n");
        return;
    }
    if (meter_.elapsed(seconds) < quietTime || seconds - drawn_ < redrawTime) return;
    drawn_ = seconds;
    const int filled = static_cast<int>(reading.fraction * barWidth);
    const std::string bar = " [" + std::string(static_cast<std::size_t>(filled), '#') +
                            std::string(static_cast<std::size_t>(barWidth - filled), '.') + "] ";
    const std::string tail = bar + rightAligned(percent, 5) + rateText(reading);
    const auto width = static_cast<std::size_t>(terminalWidth());
    std::string head = shownText(status);
    if (head.size() + tail.size() + 1 > width) head.resize(width > tail.size() + 1 ? width - tail.size() - 1 : 0);
    writeError("\r\033[K" + head + tail);
    onScreen_ = true;
}

void ProgressBar::clear() {
    if (!onScreen_) return;
    writeError("\r\033[K");
    onScreen_ = false;
}

std::string withNames(std::string text, const std::vector<std::pair<std::string, std::string>>& names) {
    for (const auto& [path, name] : names)
        for (std::size_t place = text.find(path); place != npos; place = text.find(path, place + name.size()))
            text.replace(place, path.size(), name);
    return text;
}

void TerminalInterface::configure(Ask ask, ShowProgress progress, bool quiet) {
    ask_ = ask;
    quiet_ = quiet;
    bar_.setShow(quiet && progress == ShowProgress::Auto ? ShowProgress::Never : progress);
}

void TerminalInterface::say(std::string_view line) {
    bar_.clear();
    writeError("welvane: " + shownText(withNames(std::string(line), names_)) + "\n");
}

void TerminalInterface::note(std::string_view line) {
    if (quiet_) return;
    const bool named = subject_.empty() || line.starts_with(subject_);
    say(named ? std::string(line) : subject_ + ": " + std::string(line));
}

void TerminalInterface::noteBlock(std::string_view lines) {
    if (quiet_) return;
    bar_.clear();
    writeError(shownText(lines));
}

void TerminalInterface::startWork(const Work& work) {
    if (work.bytes != 0) bar_.setTotal(work.bytes);
    spanLabel_ = work.label;
    spanBegin_ = spanReached_ = work.begin;
    spanEnd_ = work.end;
    subject_ = work.file;
}

void TerminalInterface::endWork() {
    startWork({});
    bar_.clear();
}

void TerminalInterface::tell(const Note& note) {
    const std::string hint = note.kind == NoteKind::StepVaries ? " (--sort orders the depths)" : "";
    this->note((note.file.empty() ? "" : note.file + ": ") + textOf(note) + hint);
}

bool TerminalInterface::canAsk() const {
    return ask_ == Ask::AtTerminal && isTerminal(Stream::Input) && isTerminal(Stream::Error);
}

Answer TerminalInterface::askAtTerminal(const Prompt& prompt) {
    const bool yesNo = prompt.buttons == Buttons::YesNo;
    const Answer good = yesNo ? Answer::Yes : Answer::Ok;
    while (true) {
        const std::string line = askForLine(prompt.text + (yesNo ? " [y/N] " : " [OK = o, Cancel = Enter] "), "");
        const char letter = line.empty() ? '\0' : upperChar(line.front());
        if (letter == (yesNo ? 'Y' : 'O')) return good;
        if (letter == '\0' || letter == 'N' || letter == 'C') return prompt.safe();
    }
}

Answer TerminalInterface::ask(const Prompt& prompt) {
    if (prompt.buttons == Buttons::Ok) {
        if (!held_) note(asOneLine(prompt.text));
        return Answer::Ok;
    }
    if (canAsk()) return askAtTerminal(prompt);
    const Answer yes = prompt.buttons == Buttons::YesNo ? Answer::Yes : Answer::Ok;
    if (ask_ == Ask::AlwaysYes) return yes;
    const Answer answer = prompt.safe();
    std::string told = asOneLine(prompt.text) + " -> " + std::string(nameOf(answer));
    if (ask_ == Ask::AtTerminal) told.append(" (nobody to ask; --yes answers ").append(nameOf(yes)).append(")");
    if (ask_ == Ask::AtTerminal)
        say(told);
    else
        note(told);
    return answer;
}

std::string TerminalInterface::askForLine(const std::string& question, const std::string& defaultText) {
    bar_.clear();
    writeError(shownText(question));
    std::string line;
    if (!std::getline(std::cin, line)) {
        std::cin.clear();
        writeError("\n");
        return {};
    }
    const std::string answer(trimBreaks(line));
    return answer.empty() ? defaultText : answer;
}

std::string TerminalInterface::askText(const TextPrompt& prompt) {
    const std::string hint = prompt.defaultText.empty() ? "" : " [" + prompt.defaultText + "]";
    if (canAsk()) return askForLine(asOneLine(prompt.text) + hint + " ", prompt.defaultText);
    if (ask_ == Ask::AlwaysYes) return prompt.defaultText;
    say(asOneLine(prompt.text) + " -> Cancel (nobody to ask)");
    return {};
}

std::string TerminalInterface::askFile(const FilePrompt& prompt) {
    return askText({prompt.title, prompt.title + ":", prompt.defaultName});
}

std::string TerminalInterface::askFolder(const std::string& title, const std::string& start) {
    return askText({title, title + ":", start});
}

void TerminalInterface::progress(const Progress& progress) {
    show(progress.status, progress.fraction);
}

void TerminalInterface::pumpEvents() {
    if (run_ == nullptr || ++turns_ % turnsPerLook != 0) return;
    show(run_->statusText, static_cast<double>(run_->progressFraction));
}

void TerminalInterface::show(std::string_view status, double fraction) {
    if (spanLabel_.empty()) {
        bar_.update(status, fraction);
        return;
    }
    // A run has several steps, each from nothing to all; the longer way only grows.
    spanReached_ = std::max(spanReached_, spanBegin_ + (spanEnd_ - spanBegin_) * std::clamp(fraction, 0.0, 1.0));
    bar_.update(spanLabel_, spanReached_);
}

}  // namespace welvane
