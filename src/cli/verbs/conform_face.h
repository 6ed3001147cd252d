#pragma once

#include <string>
#include <vector>

#include "cli/json.h"
#include "jobs/conform.h"
#include "jobs/each_file.h"

/// What the verb `conform` shows: findings as text, as JSON and as SARIF, and the table of rules.
namespace welvane {

/// One line for each finding, as compilers print them, then one for the file.
std::string conformText(const std::string& file, const ConformReport& report);
Json conformJson(const std::string& file, const ConformReport& report);

/// Findings of many files as one SARIF 2.1.0 document, with which editors and build servers show them in place.
class SarifDocument {
  public:
    void add(const std::string& file, const ConformReport& report);
    /// A file that could not be judged.
    void addFailure(const std::string& file, const Fault& fault);
    std::string text() const;

  private:
    Json results_ = Json::array();
    Json notifications_ = Json::array();
};

/// The rules, one line each.
std::string rulesText();
Json rulesJson();
/// All that the table says of one rule.
std::string explainText(const ConformRule& rule);

}  // namespace welvane
