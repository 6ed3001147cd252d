#include "python/call.h"

#include <string_view>

#include "app/startup.h"
#include "jobs/refusal.h"
#include "python/texts.h"
#include "shared/failure.h"

namespace welvane {

namespace py = pybind11;

namespace {

/// Turns between two looks at the clock, and the time between two looks for a signal.
constexpr unsigned turnsPerLook = 16;
constexpr std::chrono::milliseconds lookEvery{50};

std::string_view remedyText(Remedy remedy) {
    switch (remedy) {
        case Remedy::Force:
            return " (force=True replaces it)";
        case Remedy::Loose:
            return " (loose=True reads them line by line)";
        case Remedy::From:
            return ": from_ has to name the top";
        case Remedy::To:
            return ": to has to name the bottom";
        case Remedy::Step:
            return ": step has to name one";
        case Remedy::IndexUnit:
            return " (index_unit names it)";
        case Remedy::DecimalComma:
            return " (decimal_comma=True reads it as a point)";
        case Remedy::None:
        case Remedy::Units:
        case Remedy::Delimiter:
        case Remedy::DataRow:
        case Remedy::Checker:
        case Remedy::Timeout:
        case Remedy::LineEnds:
        case Remedy::Rebuild:
            break;
    }
    return "";
}

std::string_view kindText(NoteKind kind) {
    switch (kind) {
        case NoteKind::LineEnds:
            return "line ends";
        case NoteKind::Unit:
            return "unit";
        case NoteKind::Skipped:
            return "skipped";
        case NoteKind::TooWide:
            return "too wide";
        case NoteKind::Survey:
            return "survey";
        case NoteKind::Dropped:
            return "dropped";
        case NoteKind::Repair:
            return "repair";
        case NoteKind::NoNumber:
            return "no number";
        case NoteKind::Nulls:
            return "nulls";
        case NoteKind::Columns:
            return "columns";
        case NoteKind::Records:
            return "records";
        case NoteKind::StepVaries:
            return "step varies";
        case NoteKind::DepthLines:
            return "depth lines";
        case NoteKind::Setting:
            return "setting";
        case NoteKind::File:
            return "file";
    }
    return "file";
}

void raise(const char* kind, const Fault& fault) {
    const py::object type = py::module_::import("welvane._errors").attr(kind);
    const py::object error =
        type(pythonText(pythonFault(fault)), pythonText(fault.file), fault.line, pythonText(fault.choice));
    PyErr_SetObject(type.ptr(), error.ptr());
}

}  // namespace

void PythonInterface::pumpEvents() {
    if (++turns_ % turnsPerLook == 0) lookForSignals();
}

void PythonInterface::lookForSignals() {
    // Python handles signals in one thread alone, and workers of a job are none of Python's.
    if (raised_ || std::this_thread::get_id() != thread_) return;
    const auto now = std::chrono::steady_clock::now();
    if (now - looked_ < lookEvery) return;
    looked_ = now;
    const py::gil_scoped_acquire held;
    if (PyErr_CheckSignals() == 0) return;
    raised_ = std::make_unique<py::error_already_set>();
    if (run_ != nullptr) run_->cancelRequested = true;
}

void PythonInterface::raiseSignal() {
    if (!raised_) return;
    py::error_already_set raised = *raised_;
    raised_.reset();
    throw raised;
}

Call::Call(const CallChoices& choices) : choices_(choices) {}

void Call::start() {
    platform_ = makeSystemPlatform(choices_.dataFolder);
    app_ = std::make_unique<App>(user_, *platform_);
    user_.watch(app_->run);
    app_->run.workers.count = coreCount();
    const HeldBoxes held(user_);
    if (!loadProcess(*app_)) throw Refusal("", "start-up failed");
    // The file last selected in a window is nothing to a program.
    app_->run.lasFile.clear();
    bench_ = std::make_unique<Workbench>(*app_, FileRules{choices_.strict, choices_.force});
}

py::list notesOf(const std::vector<Note>& notes) {
    py::list list;
    for (const Note& note : notes)
        list.append(py::make_tuple(std::string(kindText(note.kind)), pythonText(note.file), pythonText(note.channel),
                                   note.line, note.count, pythonText(note.text), pythonText(textOf(note))));
    return list;
}

std::string pythonFault(const Fault& fault) {
    std::string choice = fault.choice;
    for (char& c : choice)
        if (c == '-') c = '_';
    const std::string about = choice.empty() ? fault.file : choice;
    return (about.empty() ? "" : about + ": ") + fault.reason.text + std::string(remedyText(fault.reason.remedy));
}

void translateRefusals() {
    // pybind11 asks for a routine that takes its exception by value.
    py::register_local_exception_translator(
        [](std::exception_ptr thrown) {  // NOLINT(performance-unnecessary-value-param)
            try {
                if (thrown) std::rethrow_exception(thrown);
            } catch (const Refusal& refused) {
                raise(refused.fault.senseless ? "ChoiceError" : "Error", refused.fault);
            } catch (const RunTimeFailure& failed) {
                raise("Error", {.file = "", .choice = "", .reason = {failed.what()}});
            }
        });
}

}  // namespace welvane
