#include "models/browser.h"

#include "las/classify.h"
#include "las/repair.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

void call(const std::function<void(const std::string&)>& action, const std::string& path) {
    if (action) action(path);
}

/// One selection at work.
class Selection {
  public:
    Selection(BrowserState& browser, const BrowserActions& actions, const RebuildSettings& rebuild, RunState& run,
              UserInterface& user)
        : browser_(browser), actions_(actions), rebuild_(rebuild), run_(run), user_(user) {}

    void classify() {
        browser_.inDir = browser_.folder;
        browser_.sourceFolderLabel = browser_.folder;
        run_.lasFile.clear();
        if (browser_.selected.empty()) return;
        if (browser_.selected.size() > 1) return;
        name_ = browser_.selected.front();
        file_ = withBackslash(browser_.folder) + name_;
        run_.lasFile = file_;
        call(actions_.saveLastFile, file_);
        browser_.editEnabled = true;
        if (!offerSurvey()) return;
        if (fileSize(file_).value_or(0) == 0) {
            run_.lasFile.clear();
            show(missingStatus);
            return;
        }
        judge();
        call(actions_.showFile, file_);
    }

  private:
    void show(StatusLine line) {
        browser_.statusText = line.text;
        browser_.statusRed = line.red;
    }

    bool confirms(std::string title, std::string text, Icon icon) {
        return user_.ask({std::move(title), std::move(text), Buttons::YesNo, icon, Answer::No}) == Answer::Yes;
    }

    /// False ends the selection: the same survey was chosen again and is not to be read again.
    bool offerSurvey() {
        if (!browser_.tvdTabOpen || endsWith(name_, ".las")) return true;
        const bool again = sameText(browser_.tvdFile, file_);
        if (again && !run_.commandMode &&
            !confirms("Please Confirm", "Do you want to re-load the file?", Icon::Question))
            return false;
        browser_.tvdFile = file_;
        call(actions_.offerSurvey, file_);
        return true;
    }

    void judge() {
        if (endsWith(name_, ".las")) {
            judgeLas();
        } else if (endsWith(name_, ".csv")) {
            show(csvStatus);
        } else if (isPlexmoreAscii(file_)) {
            show(plexmoreAsciiStatus);
        }
    }

    void judgeLas() {
        FileVerdict verdict = quickCheck(file_, user_);
        show(statusLine(verdict));
        if (verdict == FileVerdict::UnixTermination && repairTermination()) {
            verdict = quickCheck(file_, user_);
            show(statusLine(verdict));
            // Other line ends did not make it usable: no second offer, or a user who always agrees would never get out.
            if (verdict == FileVerdict::UnixTermination) distrust();
        }
        if (verdict == FileVerdict::Plexmore2) rebuildPlexmore();
    }

    /// True when the file was changed and wants a second look.
    bool repairTermination() {
        if (run_.commandMode) {
            replaceInFile(file_, file_, "\n", "\r\n", run_, user_);
            return false;
        }
        if (!confirms("Unix Termination! ", "Unix Termination found. " + file_ + " is not usable as is. Repair Now? ",
                      Icon::Stop)) {
            run_.lasFile.clear();
            return false;
        }
        const std::string copy = safetyCopyName(file_, "unixterm");
        // Without the copy there is no way back, so the file is left alone.
        if (!copyFile(file_, copy) || replaceInFile(file_, file_, "\n", "\r\n", run_, user_) != StepResult::Done) {
            distrust();
            return false;
        }
        user_.ask({"Unix Repair Successful", "Unix repair successful. Original file renamed to" + copy, Buttons::Ok,
                   Icon::Information, Answer::Ok});
        return true;
    }

    void distrust() {
        run_.lasFile.clear();
        user_.ask({"Caution!", "Unix repair attempt of " + file_ + " was NOT successful. Use this file with caution.",
                   Buttons::Ok, Icon::Stop, Answer::Ok});
    }

    void rebuildPlexmore() {
        if (run_.commandMode) return;
        if (!confirms("Plexmore 2.5 LAS (Bad LAS, Bad!)",
                      "Plexmore 2.5 LAS found. " + file_ + " is not usable as is. Repair Now? ", Icon::Stop))
            return;
        const RebuildResult result =
            rewriteLas(file_, withBackslash(browser_.outDir) + name_, RebuildKind::Plexmore2, rebuild_, run_, user_);
        if (result.result == StepResult::Done && browser_.editAfter) call(actions_.openFileWithShell, result.target);
    }

    BrowserState& browser_;
    const BrowserActions& actions_;
    const RebuildSettings& rebuild_;
    RunState& run_;
    UserInterface& user_;
    std::string name_, file_;
};

}  // namespace

void classifySelection(BrowserState& browser, const BrowserActions& actions, const RebuildSettings& rebuild,
                       RunState& run, UserInterface& user) {
    Selection(browser, actions, rebuild, run, user).classify();
}

}  // namespace welvane
