#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "conform/rules.h"

namespace welvane {

/// Where in the file something stands, both from 1; the column counts bytes.
struct TextPlace {
    std::size_t line = 1, column = 1;
};

/// One breach of a rule.
struct Finding {
    Rule rule{};
    Severity severity{};
    TextPlace place{};
    std::size_t count = 1;  ///< how often, for a rule that is told once with its first place
    std::string text{};     ///< the offending text as it stands there, cut where it is long; may hold any bytes
    std::string what{};     ///< what is wrong, with its figures
    bool mendable = false;  ///< `--fix` mends it without a choice
};

/// What is found in one file. Of each rule only so many findings are kept, and the others are counted: a gigabyte of
/// bad lines takes no more memory than a page of them.
class Findings {
  public:
    explicit Findings(std::size_t most) : most_(most) {}

    /// The version decides how much a finding weighs, and whether it is one.
    void judgeBy(StandardVersion version) { version_ = version; }
    StandardVersion version() const { return version_; }
    bool holds(Rule rule) const { return ruleOf(rule).in(version_) != Severity::None; }

    /// Adds a finding; one that the version does not know is dropped. `what` "" stands for the rule's own words, a
    /// `severity` other than None for one below the rule's.
    void add(Rule rule, TextPlace place, std::string_view text, std::string what = {}, bool mendable = false,
             Severity severity = Severity::None);
    /// A rule that is told once: the first call adds the finding, later ones count. Nothing is built for those.
    void tally(Rule rule, TextPlace place, std::string_view text, std::string_view what = {}, bool mendable = false);
    /// True as long as a further finding of the rule would be kept; a caller who need not build its words asks first.
    bool keeps(Rule rule) const { return kept_[static_cast<std::size_t>(rule)] < most_; }
    std::size_t most() const { return most_; }
    /// Takes over what `other` found.
    void append(const Findings& other);

    /// Of all findings of a rule, those that were not kept among them.
    std::size_t count(Rule rule) const { return counts_[static_cast<std::size_t>(rule)]; }
    std::size_t count(Severity severity) const;
    /// Findings of a rule that were counted and not kept.
    std::size_t notKept(Rule rule) const { return count(rule) - kept_[static_cast<std::size_t>(rule)]; }
    bool has(Rule rule) const { return count(rule) != 0; }
    /// By line and column.
    std::vector<Finding> sorted() const;

  private:
    std::size_t most_;
    StandardVersion version_ = StandardVersion::V20;
    std::vector<Finding> all_;
    std::array<std::size_t, ruleCount> counts_{}, kept_{}, tallied_{};
    std::array<std::size_t, 4> bySeverity_{};
};

}  // namespace welvane
