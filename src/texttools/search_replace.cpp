#include "texttools/search_replace.h"

#include "las/repair.h"

namespace welvane {

SearchReplaceResult searchReplaceFile(App& app, std::string_view sourcePath, std::string_view targetPath,
                                      std::string_view searchBytes, std::string_view replaceBytes,
                                      OutputFile::Mode mode) {
    ReplaceReport report;
    const StepResult step =
        replaceInFile(sourcePath, targetPath, searchBytes, replaceBytes, app.run, app.user, &report, mode);
    return {step == StepResult::Done, step == StepResult::Cancelled, report.replacements, report.why};
}

}  // namespace welvane
