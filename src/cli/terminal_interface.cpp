#include "cli/terminal_interface.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>

#include "cli/shown_text.h"
#include "platform/terminal.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

using namespace std::chrono_literals;

/// Nothing is drawn for what is done sooner than this.
constexpr auto quietTime = 300ms;
constexpr auto redrawTime = 100ms;
constexpr int barWidth = 24;
/// A look at the clock once in so many turns.
constexpr unsigned turnsPerLook = 64;

std::string clockText(double seconds) {
    const long whole = std::lround(std::min(seconds, 359999.0));
    const auto twoDigits = [](long number) { return (number < 10 ? "0" : "") + std::to_string(number); };
    if (whole < 3600) return std::to_string(whole / 60) + ":" + twoDigits(whole % 60);
    return std::to_string(whole / 3600) + ":" + twoDigits(whole / 60 % 60) + ":" + twoDigits(whole % 60);
}

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

void ProgressBar::setTotal(std::uint64_t bytes) {
    total_ = bytes;
    begin("", Clock::now());
}

void ProgressBar::begin(std::string_view status, Clock::time_point now) {
    status_ = status;
    begun_ = now;
    lastFraction_ = 0;
    lastTenth_ = -1;
}

std::string ProgressBar::measure(double fraction, Clock::time_point now) const {
    const double seconds = std::chrono::duration<double>(now - begun_).count();
    if (seconds <= 0 || fraction <= 0) return {};
    std::string text;
    if (total_ != 0) text = "  " + formatMask(fraction * static_cast<double>(total_) / 1e6 / seconds, 1) + " MB/s";
    return text + "  " + clockText(seconds * (1 - fraction) / fraction) + " left";
}

void ProgressBar::update(std::string_view status, double fraction) {
    const bool terminal = isTerminal(Stream::Error);
    if (show_ == ShowProgress::Never || (show_ == ShowProgress::Auto && !terminal)) return;
    fraction = std::clamp(fraction, 0.0, 1.0);
    const auto now = Clock::now();
    // A new step, or the same one on the next file.
    if (begun_ == Clock::time_point{} || status != status_ || fraction < lastFraction_) begin(status, now);
    lastFraction_ = fraction;
    const std::string percent = std::to_string(static_cast<int>(fraction * 100)) + " %";
    if (!terminal) {
        const int tenth = static_cast<int>(fraction * 10);
        if (tenth == lastTenth_) return;
        lastTenth_ = tenth;
        writeError(shownText(status) + " " + percent + measure(fraction, now) + "\n");
        return;
    }
    if (now - begun_ < quietTime || now - drawn_ < redrawTime) return;
    drawn_ = now;
    const int filled = static_cast<int>(fraction * barWidth);
    const std::string bar = " [" + std::string(static_cast<std::size_t>(filled), '#') +
                            std::string(static_cast<std::size_t>(barWidth - filled), '.') + "] ";
    const std::string tail = bar + rightAligned(percent, 5) + measure(fraction, now);
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

void TerminalInterface::configure(Ask ask, ShowProgress progress, bool quiet) {
    ask_ = ask;
    quiet_ = quiet;
    bar_.setShow(quiet && progress == ShowProgress::Auto ? ShowProgress::Never : progress);
}

void TerminalInterface::say(std::string_view line) {
    bar_.clear();
    writeError("welvane: " + shownText(line) + "\n");
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

void TerminalInterface::setSpan(std::string label, double begin, double end) {
    spanLabel_ = std::move(label);
    spanBegin_ = spanReached_ = begin;
    spanEnd_ = end;
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
        if (!muted_) note(asOneLine(prompt.text));
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
