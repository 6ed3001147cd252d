#include "texttools/search_replace.h"

#include "las/repair.h"

namespace welvane {

SearchReplaceResult searchReplaceFile(App& app, std::string_view sourcePath, std::string_view targetPath,
                                      std::string_view searchBytes, std::string_view replaceBytes) {
    ReplaceReport report;
    const StepResult step =
        replaceInFile(sourcePath, targetPath, searchBytes, replaceBytes, app.run, app.user, &report);
    return {step == StepResult::Done, step == StepResult::Cancelled, report.replacements, report.why};
}

}  // namespace welvane
