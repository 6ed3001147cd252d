#include "certify/certify_after.h"

#include "certify/certify_file.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {
constexpr std::string_view failedTitle = "File Failed Corvant!";
constexpr std::string_view failedText = "The Corvant check run on ";
constexpr std::string_view failedEnd = " after the processing indicated these error(s).";
}  // namespace

CertifyAfterResult certifyAfter(App& app, std::string_view path, double timeoutSeconds) {
    CertifyAfterResult result;
    if (!endsWith(path, ".las")) return result;
    CertifyOptions options = certifyOptions(CheckKind::Basic, false, true, app.settings.country);
    options.timeoutSeconds = timeoutSeconds;
    removeFile(certifyLogPath(path));
    result.ran = true;
    result.log = certifyFile(app, path, "", options, path).log;
    for (const std::string& line : failureLines(result.log)) result.faults.append(line).append("\n");
    if (result.faults.empty()) return result;
    app.user.ask({.title = std::string(failedTitle),
                  .text = std::string(failedText).append(path).append(failedEnd).append("\n\n").append(result.faults),
                  .icon = Icon::Stop});
    return result;
}

}  // namespace welvane
