#include "models/preview.h"

#include <utility>

#include "jobs/preview.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

std::string inputNames(const Session& session) {
    std::vector<std::string> names;
    for (int slot = 0; slot < slotCount; ++slot)
        if (session.loaded(slot)) names.push_back(fileNameOf(session.slots[slot].path));
    return join(names, " + ");
}

RunRequest previewRequest(const Session& session) {
    RunRequest run;
    run.wholeInputs = !session.loose;
    run.rules = session.rules;
    return run;
}

}  // namespace

OutputPreview::OutputPreview(Platform& platform, std::function<void()> wake)
    : platform_(platform), wake_(std::move(wake)) {}

void OutputPreview::changed() {
    current_ = false;
    outdated_ = true;
    if (job_) job_->cancel(true);
}

void OutputPreview::begin(const App& app, const Session& session) {
    outdated_ = false;
    if (!session.available) {
        output_.reset();
        notes_.clear();
        refusal_ = "no file is loaded";
        current_ = true;
        return;
    }
    work_ = std::make_shared<Work>();
    job_ = std::make_unique<BackgroundJob>(app, session, platform_, wake_);
    job_->desk().close();
    job_->start([work = work_](App& copy, Session& own) {
        Workbench bench(copy, FileRules{});
        work->output = std::make_unique<PlotInput>(previewOutput(bench, own, previewRequest(own), inputNames(own)));
        work->notes = bench.takeNotes();
    });
}

void OutputPreview::take() {
    // The window's own session stays as it is: what the run did to the copy goes with it.
    const std::string failure = job_->failure();
    job_.reset();
    const std::shared_ptr<Work> work = std::exchange(work_, nullptr);
    if (outdated_) return;
    output_ = std::move(work->output);
    notes_ = std::move(work->notes);
    refusal_ = output_ ? std::string() : failure;
    current_ = true;
}

void OutputPreview::poll(const App& app, const Session& session) {
    if (job_ && job_->finished()) take();
    if (!job_ && !current_) begin(app, session);
}

}  // namespace welvane
