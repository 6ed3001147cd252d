#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "conform/judgement.h"
#include "shared/text.h"

/// Small files that break no rule, and edits that make them break one.
namespace welvane::test {

inline const std::string plain20 =
    "~Version\n"
    "VERS. 2.0 : CWLS LOG ASCII STANDARD\n"
    "WRAP. NO : ONE LINE PER DEPTH STEP\n"
    "~Well\n"
    "STRT.M 100.0 : START\n"
    "STOP.M 101.5 : STOP\n"
    "STEP.M 0.5 : STEP\n"
    "NULL. -999.25 : NULL VALUE\n"
    "COMP. ANY OIL : COMPANY\n"
    "WELL. A-1 : WELL\n"
    "FLD. WILDCAT : FIELD\n"
    "LOC. 12-34 : LOCATION\n"
    "SRVC. LOGGERS : SERVICE COMPANY\n"
    "DATE. 2001-02-03 : LOG DATE\n"
    "PROV. ALBERTA : PROVINCE\n"
    "UWI. 100123401234W500 : UNIQUE WELL ID\n"
    "~Curve\n"
    "DEPT.M : DEPTH\n"
    "GR.GAPI : GAMMA RAY\n"
    "RHOB.G/C3 : DENSITY\n"
    "~A\n"
    "100.0   50.25   2.65\n"
    "100.5 -999.25   2.66\n"
    "101.0   51.25   2.67\n"
    "101.5   52.25   2.68\n";

inline const std::string plain12 =
    "~Version\n"
    "VERS. 1.2 : CWLS LOG ASCII STANDARD\n"
    "WRAP. NO : ONE LINE PER DEPTH STEP\n"
    "~Well\n"
    "STRT.M 101.0 : START\n"
    "STOP.M 100.0 : STOP\n"
    "STEP.M -0.5 : STEP\n"
    "NULL. -999.25 : NULL VALUE\n"
    "COMP. COMPANY : ANY OIL\n"
    "WELL. WELL : A-1\n"
    "FLD. FIELD : WILDCAT\n"
    "LOC. LOCATION : 12-34\n"
    "SRVC. SERVICE COMPANY : LOGGERS\n"
    "DATE. LOG DATE : 13-DEC-86\n"
    "CNTY. COUNTY : KENT\n"
    "API. API NUMBER : 123\n"
    "~Curve\n"
    "DEPT.M : DEPTH\n"
    "GR.GAPI : GAMMA RAY\n"
    "~A\n"
    "101.0   50.25\n"
    "100.5   51.25\n"
    "100.0   52.25\n";

inline const std::string wrapped20 = [] {
    std::string text = replaceAll(plain20, "WRAP. NO", "WRAP. YES");
    text.resize(text.find("~A"));
    return text +
           "~A\n100.0\n   50.25   2.65\n100.5\n   51.25   2.66\n101.0\n   52.25   2.67\n101.5\n   53.25   2.68\n";
}();

inline const std::string plain30 =
    "~Version\n"
    "VERS. 3.0 : CWLS LOG ASCII STANDARD\n"
    "WRAP. NO : ONE LINE PER DEPTH STEP\n"
    "DLM. COMMA : DELIMITER\n"
    "~Well\n"
    "STRT.M 100.0 : START\n"
    "STOP.M 100.5 : STOP\n"
    "STEP.M 0.5 : STEP\n"
    "NULL. -999.25 : NULL VALUE\n"
    "COMP. ANY OIL : COMPANY\n"
    "WELL. A-1 : WELL\n"
    "FLD. WILDCAT : FIELD\n"
    "LOC. 12-34 : LOCATION\n"
    "SRVC. LOGGERS : SERVICE COMPANY\n"
    "CTRY. ca : COUNTRY\n"
    "DATE. 13/12/2001 : LOG DATE\n"
    "~Core_Parameter\n"
    "C_SRS. : SOURCE {S}\n"
    "~Core_Definition\n"
    "C_TP.M : TOP {F}\n"
    "C_DE. : DESCRIPTION {S}\n"
    "~Core_Data | Core_Definition\n"
    "99.5,\"sand, red\"\n"
    "~Curve\n"
    "DEPT.M : DEPTH {F}\n"
    "GR.GAPI : GAMMA RAY {F}\n"
    "~Ascii | Curve\n"
    "100.0,50.25\n"
    "100.5,51.25\n";

using Edits = std::vector<std::pair<std::string_view, std::string_view>>;

/// The text with lines ended by CR LF and each edit done once, at its first place; both sides of an edit may hold line
/// feeds. A first part that does not stand there fails the caller by an empty text.
inline std::string edited(const std::string& base, const Edits& edits) {
    std::string text = replaceAll(base, "\n", "\r\n");
    for (const auto& [from, to] : edits) {
        const std::string search = replaceAll(from, "\n", "\r\n");
        const std::size_t place = text.find(search);
        if (place == std::string::npos) return {};
        text.replace(place, search.size(), replaceAll(to, "\n", "\r\n"));
    }
    return text;
}

/// A library that knows what the small files hold.
inline const ReferenceTables& smallLibrary() {
    static const ReferenceTables tables = [] {
        ReferenceTables made;
        for (const char* const unit : {"M", "FT", "GAPI", "G/C3"}) made.units.push_back({"", unit, 1, 0});
        for (const char* const mnem : {"DEPT", "TIME", "GR", "RHOB"}) made.curves.push_back({"", mnem, ""});
        return made;
    }();
    return tables;
}

inline Judgement judged(std::string_view text, std::size_t most = 10) {
    return judgeText(text, {.name = "well.las", .most = most, .library = &smallLibrary()});
}

/// The rules that were broken, each once: "W007 W008".
inline std::string brokenRules(const Judgement& judged) {
    std::string rules;
    for (const ConformRule& rule : conformRules())
        if (judged.findings.has(rule.rule)) rules += (rules.empty() ? "" : " ") + std::string(rule.id);
    return rules;
}

}  // namespace welvane::test
