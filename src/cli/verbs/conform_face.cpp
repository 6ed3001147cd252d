#include "cli/verbs/conform_face.h"

#include <algorithm>
#include <array>

#include "cli/json_document.h"
#include "cli/shown_text.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::array<StandardVersion, standardVersions> versions = {StandardVersion::V12, StandardVersion::V20,
                                                                    StandardVersion::V30};

std::string countsText(const Findings& findings) {
    std::string text;
    for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Hint}) {
        const std::size_t count = findings.count(severity);
        if (count == 0) continue;
        text += (text.empty() ? "" : ", ") + counted(static_cast<std::int64_t>(count), severityText(severity));
    }
    return text.empty() ? "nothing found" : text;
}

/// The words of a finding, and how often it stands there.
std::string whatText(const Finding& found) {
    return found.what + (found.count > 1 ? " (" + std::to_string(found.count) + ")" : "");
}

std::string findingText(const std::string& file, const Finding& found) {
    std::string line = shownName(file) + ":" + std::to_string(found.place.line) + ":" +
                       std::to_string(found.place.column) + ": " + std::string(severityText(found.severity)) + " " +
                       std::string(ruleOf(found.rule).id) + ": " + whatText(found);
    const std::string_view shown = trimBreaks(found.text);
    if (!shown.empty()) line += ": " + std::string(shown);
    return shownName(line) + "\n";
}

/// What was written, and what is broken there no more.
std::string mendedText(const ConformReport& report) {
    std::string text = shownName(report.target) + ": ";
    text += report.mended.empty() ? "written as it stands" : "mended:";
    for (const auto& [rule, count] : report.mended) {
        text += (&rule == &report.mended.front().first ? " " : ", ") + std::string(ruleOf(rule).id);
        if (count > 1) text += " (" + std::to_string(count) + ")";
    }
    if (!report.kept.empty()) text += "; the file as it was is kept as " + shownName(report.kept);
    return text + "\n";
}

std::string versionsText(const ConformRule& rule) {
    std::string text;
    for (const StandardVersion version : versions)
        if (rule.in(version) != Severity::None)
            text += (text.empty() ? "" : ", ") + std::string(severityText(rule.in(version))) + " in " +
                    std::string(versionText(version));
    return text;
}

/// The level that SARIF knows for a severity.
std::string_view levelOf(Severity severity) {
    return severity == Severity::Error ? "error" : severity == Severity::Warning ? "warning" : "note";
}

Severity heaviest(const ConformRule& rule) {
    Severity most = Severity::None;
    for (const StandardVersion version : versions) most = std::max(most, rule.in(version));
    return most;
}

/// A path as a URI reference: relative ones stay so.
std::string uriOf(const std::string& path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string uri = path.starts_with("/") ? "file://" : "";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        const char upperCase = upperChar(c);
        const bool plain =
            isDigit(c) || (upperCase >= 'A' && upperCase <= 'Z') || std::string_view("/-_.~").find(c) != npos;
        if (plain)
            uri += c;
        else
            uri.append({'%', digits[byte >> 4U], digits[byte & 15U]});
    }
    return uri;
}

Json messageJson(std::string_view text) {
    return Json::object({{"text", utf8Text(text)}});
}

Json locationJson(const std::string& file, const TextPlace& place) {
    Json location = Json::object({{"artifactLocation", Json::object({{"uri", uriOf(file)}})}});
    location.add("region", Json::object({{"startLine", place.line}, {"startColumn", place.column}}));
    Json locations = Json::array();
    locations.push(Json::object({{"physicalLocation", std::move(location)}}));
    return locations;
}

}  // namespace

std::string conformText(const std::string& named, const ConformReport& report) {
    const std::string& file = report.target.empty() ? named : report.target;
    std::string text;
    for (const Finding& found : report.findings.sorted()) text += findingText(file, found);
    for (const ConformRule& rule : conformRules())
        if (const std::size_t more = report.findings.notKept(rule.rule); more != 0)
            text += shownName(file) + ": " + std::to_string(more) + " more of " + std::string(rule.id) + ": " +
                    std::string(rule.what) + "\n";
    text += shownName(file) + ": ";
    if (report.version) text += "LAS " + std::string(versionText(*report.version)) + ", ";
    text += countsText(report.findings) + "\n";
    if (!report.target.empty()) text += mendedText(report);
    if (!report.remark.empty()) text += shownName(file) + ": " + report.remark + "\n";
    return text;
}

Json conformJson(const std::string& file, const ConformReport& report) {
    Json findings = Json::array();
    for (const Finding& found : report.findings.sorted()) {
        const ConformRule& rule = ruleOf(found.rule);
        findings.push(Json::object({{"rule", rule.id},
                                    {"severity", severityText(found.severity)},
                                    {"line", found.place.line},
                                    {"column", found.place.column},
                                    {"count", found.count},
                                    {"what", utf8Text(found.what)},
                                    {"text", utf8Text(found.text)},
                                    {"mend", rule.mend},
                                    {"mendable", found.mendable}}));
    }
    Json more = Json::array();
    for (const ConformRule& rule : conformRules())
        if (const std::size_t count = report.findings.notKept(rule.rule); count != 0)
            more.push(Json::object({{"rule", rule.id}, {"count", count}}));
    Json entry = fileEntry(file, {{"lasVersion", report.version ? Json(versionText(*report.version)) : Json()},
                                  {"errors", report.findings.count(Severity::Error)},
                                  {"warnings", report.findings.count(Severity::Warning)},
                                  {"hints", report.findings.count(Severity::Hint)},
                                  {"remark", report.remark.empty() ? Json() : Json(report.remark)},
                                  {"findings", std::move(findings)},
                                  {"more", std::move(more)}});
    if (report.target.empty()) return entry;
    Json mended = Json::array();
    for (const auto& [rule, count] : report.mended)
        mended.push(Json::object({{"rule", ruleOf(rule).id}, {"count", count}}));
    entry.add({{"mended", std::move(mended)},
               {"target", utf8Text(report.target)},
               {"kept", report.kept.empty() ? Json() : Json(utf8Text(report.kept))}});
    return entry;
}

void SarifDocument::add(const std::string& file, const ConformReport& report) {
    for (const Finding& found : report.findings.sorted()) {
        const ConformRule& rule = ruleOf(found.rule);
        const std::string_view shown = trimBreaks(found.text);
        results_.push(
            Json::object({{"ruleId", rule.id},
                          {"ruleIndex", static_cast<std::size_t>(found.rule)},
                          {"level", levelOf(found.severity)},
                          {"message", messageJson(whatText(found) + (shown.empty() ? "" : ": ") + std::string(shown))},
                          {"locations", locationJson(file, found.place)}}));
    }
}

void SarifDocument::addFailure(const std::string& file, const Fault& fault) {
    notifications_.push(Json::object(
        {{"level", "error"}, {"message", messageJson(fault.reason.text)}, {"locations", locationJson(file, {})}}));
}

std::string SarifDocument::text() const {
    Json rules = Json::array();
    for (const ConformRule& rule : conformRules())
        rules.push(
            Json::object({{"id", rule.id},
                          {"shortDescription", messageJson(rule.what)},
                          {"fullDescription", messageJson(std::string(rule.what) + ": " + std::string(rule.why))},
                          {"help", messageJson("Mend: " + std::string(rule.mend))},
                          {"defaultConfiguration", Json::object({{"level", levelOf(heaviest(rule))}})}}));
    Json driver = Json::object({{"name", "Welvane"}, {"version", WELVANE_VERSION}, {"rules", std::move(rules)}});
    Json invocations = Json::array();
    invocations.push(Json::object(
        {{"executionSuccessful", notifications_.empty()}, {"toolExecutionNotifications", notifications_}}));
    Json runs = Json::array();
    runs.push(Json::object({{"tool", Json::object({{"driver", std::move(driver)}})},
                            {"invocations", std::move(invocations)},
                            {"results", results_}}));
    return Json::object({{"$schema",
                          "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json"},
                         {"version", "2.1.0"},
                         {"runs", std::move(runs)}})
               .dump(1) +
           "\n";
}

std::string rulesText() {
    std::string text = "rule  1.2      2.0      3.0      what\n";
    for (const ConformRule& rule : conformRules()) {
        text += std::string(rule.id) + "  ";
        for (const StandardVersion version : versions) {
            const std::string_view severity = severityText(rule.in(version));
            text += padded(severity.empty() ? "-" : severity, 9);
        }
        text += std::string(rule.what) + "\n";
    }
    return text;
}

Json rulesJson() {
    Json rules = Json::array();
    for (const ConformRule& rule : conformRules()) {
        Json severities = Json::object();
        for (const StandardVersion version : versions)
            if (rule.in(version) != Severity::None)
                severities.add(versionText(version), severityText(rule.in(version)));
        rules.push(Json::object({{"rule", rule.id},
                                 {"severity", std::move(severities)},
                                 {"what", rule.what},
                                 {"why", rule.why},
                                 {"mend", rule.mend}}));
    }
    return rules;
}

std::string explainText(const ConformRule& rule) {
    std::string text = std::string(rule.id) + ": " + std::string(rule.what) + "\n";
    text += "  weighs  " + versionsText(rule) + "\n";
    text += "  why     " + std::string(rule.why) + "\n";
    text += "  mend    " + std::string(rule.mend) + "\n";
    return text;
}

}  // namespace welvane
