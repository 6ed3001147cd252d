#include "cli/console.h"

#include <cerrno>
#include <cstdio>
#include <iostream>

#include "app/startup.h"
#include "cli/shown_text.h"
#include "platform/terminal.h"

namespace welvane {

namespace {

ShowProgress progressOf(const std::string& name) {
    return name == "always" ? ShowProgress::Always : name == "never" ? ShowProgress::Never : ShowProgress::Auto;
}

/// How a remedy is said behind the reason.
std::string_view remedyText(Remedy remedy) {
    switch (remedy) {
        case Remedy::None:
            return "";
        case Remedy::Force:
            return " (--force replaces it)";
        case Remedy::Loose:
            return " (--loose reads them line by line)";
        case Remedy::From:
            return ": --from has to name the top";
        case Remedy::To:
            return ": --to has to name the bottom";
        case Remedy::Step:
            return ": --step has to name one";
        case Remedy::Delimiter:
            return " (--delimiter?)";
        case Remedy::Units:
            return " (--units has to name it)";
        case Remedy::IndexUnit:
            return " (--index-unit names it)";
        case Remedy::DecimalComma:
            return " (--decimal-comma reads it as a point)";
        case Remedy::DataRow:
            return " (--data-row names the first)";
        case Remedy::Checker:
            return " (--checker PROG, or the setting cert_prog)";
        case Remedy::Timeout:
            return " (--timeout)";
        case Remedy::LineEnds:
            return "; add --line-ends";
        case Remedy::Rebuild:
            return " (--rebuild writes a new header all the same)";
    }
    return "";
}

}  // namespace

Console::Console(const CommonOptions& options) : options_(options), platform_(makeSystemPlatform()) {
    options_.json = options_.json || options_.jsonLines;
    user_.configure(options.yes  ? Ask::AlwaysYes
                    : options.no ? Ask::AlwaysNo
                                 : Ask::AtTerminal,
                    progressOf(options.progress), options.quiet);
    app_ = std::make_unique<App>(user_, *platform_);
    user_.watch(app_->run);
    app_->run.workers.count = coreCount();
    cancelOnInterrupt(&app_->run.cancelRequested);
    {
        // What start-up tells of missing reference files is for the desktop; a verb that needs one says so itself.
        const HeldBoxes held(user_);
        if (!loadProcess(*app_)) throw Refusal("", "start-up failed");
    }
    // The file last selected in a window is nothing to a verb.
    app_->run.lasFile.clear();
    bench_ = std::make_unique<Workbench>(*app_, FileRules{options.strict, options.force}, wasInterrupted);
}

std::vector<std::string> Console::expandLists(const std::vector<std::string>& named) {
    return welvane::expandLists(*bench_, named, std::cin, options_.recursive);
}

void Console::print(std::string_view text) {
    user_.bar().clear();
    std::string shown;
    if (!shownAs_.empty()) text = shown = withNames(std::string(text), shownAs_);
    if (std::fwrite(text.data(), 1, text.size(), stdout) < text.size() && errno == EPIPE) throw ClosedPipe();
}

void Console::showAs(const std::string& path, const std::string& name) {
    shownAs_.emplace_back(path, name);
    user_.showAs(shownAs_);
}

void Console::say(const Fault& fault) {
    user_.say(faultText(fault));
}

std::string faultText(const Fault& fault) {
    // Options are small letters, places capitals.
    const bool isOption = !fault.choice.empty() && fault.choice.front() >= 'a';
    const std::string about = fault.choice.empty() ? shownName(fault.file) : (isOption ? "--" : "") + fault.choice;
    return (about.empty() ? "" : about + ": ") + fault.reason.text + std::string(remedyText(fault.reason.remedy));
}

}  // namespace welvane
