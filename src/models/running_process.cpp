#include "models/running_process.h"

#include <utility>

#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// The files of a listing are those of its table.
ListingRequest listingRequest(const ListingSession& listing) {
    ListingRequest request;
    for (int row = 1; row < listing.vrd.rows(); ++row) request.files.push_back(listing.vrd.text(row, VrdColumn::File));
    return request;
}

std::string writtenText(const std::vector<std::string>& written) {
    const std::string what =
        written.size() == 1 ? fileNameOf(written.front()) : counted(static_cast<std::int64_t>(written.size()), "file");
    return "What a run wrote stays: " + what;
}

}  // namespace

ProcessRequest processRequest(const Frame& frame, const std::string& pattern) {
    ProcessRequest request;
    request.certifyOpen = frame.isOpen(WorkArea::Certify);
    request.sessionOpen = frame.isOpen(WorkArea::Session);
    request.listingOpen = frame.isOpen(WorkArea::Listing);
    request.toolsOpen = frame.isOpen(WorkArea::Tools);
    request.browserOpen = frame.isOpen(WorkArea::Browser);
    request.makeLasTab = frame.tab == SessionTab::MakeLas;
    request.selection = {frame.browser.folder, frame.browser.outDir, frame.browser.selected};
    request.pattern = pattern;
    request.headerFile = frame.headerFile;
    request.headerText = frame.headerText;
    return request;
}

RunningProcess::RunningProcess(Frame& frame, Platform& platform, std::function<void()> wake)
    : frame_(frame), platform_(platform), wake_(std::move(wake)) {}

bool RunningProcess::start(const std::string& pattern) {
    ProcessRequest request = processRequest(frame_, pattern);
    if (job_ || processKind(request) == ProcessKind::Nothing) return false;
    if (!settleTarget(frame_.app, frame_.session, request)) return false;
    certification_ = frame_.certification;
    listing_ = frame_.listing;
    grd_ = std::move(frame_.grd);  // too large for a copy; it comes back when the run is done
    request.certification = &certification_;
    request.grd = &grd_;
    frame_.running = true;
    job_.emplace(frame_.app, frame_.session, platform_, wake_);
    job_->start([this, request](App& app, Session& session) mutable {
        request.runListing = [&app, this] {
            return listing_ && !runListing(app, *listing_, listingRequest(*listing_)).cancelled;
        };
        outcome_ = process(app, session, request);
    });
    return true;
}

void RunningProcess::wishToExit() {
    if (!running()) return unloadFrame(frame_);
    job_->askCancel(frame_.app.user);
    exitWanted_ = job_->cancelWanted();
}

ProcessOutcome RunningProcess::finish() {
    {
        const UndoHistory::Step step(frame_.history, frame_.app, frame_.session, "Process");
        job_->takeBack(frame_.app, frame_.session);
    }
    if (!job_->failure().empty()) outcome_.refusal = job_->failure();
    job_.reset();
    frame_.running = false;
    frame_.certification = std::move(certification_);
    frame_.listing = std::move(listing_);
    frame_.grd = std::move(grd_);
    if (outcome_.kind == ProcessKind::Pass || outcome_.kind == ProcessKind::MakeLas) frame_.problems.ran(outcome_);
    if (outcome_.kind == ProcessKind::MakeLas) frame_.history.forgetTurns();  // columns out of use are gone
    if (!outcome_.written.empty()) frame_.history.cannotUndo(writtenText(outcome_.written));
    if (outcome_.showProperties) frame_.tab = SessionTab::Properties;
    if (frame_.isOpen(WorkArea::Tools) && !frame_.bytes.path.empty()) showPage(frame_.bytes, frame_.bytes.pageStart);
    if (exitWanted_)
        unloadFrame(frame_);
    else if (frame_.actions.refresh)
        frame_.actions.refresh();
    return std::exchange(outcome_, {});
}

}  // namespace welvane
