#include "cli/run_report.h"

namespace welvane {

std::string counted(std::int64_t number, const std::string& thing) {
    return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

void tellLeftOut(TerminalInterface& user, const ItemReport& item) {
    const PassReport& pass = item.pass;
    if (pass.overflowCount != 0)
        user.note(item.target + ": " + counted(static_cast<std::int64_t>(pass.overflowCount), "value") +
                  " too wide for the data column");
    for (const SkippedStep& step : pass.failures.first)
        user.note(item.target + ": skipped " + step.what + ": " + step.why);
    if (pass.failures.count > pass.failures.first.size())
        user.note(item.target + ": " + std::to_string(pass.failures.count) + " steps skipped in all");
}

}  // namespace welvane
