#include "conform/findings.h"

#include <algorithm>
#include <tuple>

namespace welvane {

namespace {

constexpr std::size_t longestText = 120;

std::size_t indexOf(Rule rule) {
    return static_cast<std::size_t>(rule);
}

}  // namespace

void Findings::add(Rule rule, TextPlace place, std::string_view text, std::string what, bool mendable,
                   Severity severity) {
    const Severity own = ruleOf(rule).in(version_);
    if (own == Severity::None) return;
    const Severity weight = severity == Severity::None ? own : std::min(severity, own);
    ++counts_[indexOf(rule)];
    ++bySeverity_[static_cast<std::size_t>(weight)];
    if (kept_[indexOf(rule)] >= most_) return;
    ++kept_[indexOf(rule)];
    if (what.empty()) what = ruleOf(rule).what;
    all_.push_back({.rule = rule,
                    .severity = weight,
                    .place = place,
                    .text = std::string(text.substr(0, longestText)),
                    .what = std::move(what),
                    .mendable = mendable});
}

void Findings::tally(Rule rule, TextPlace place, std::string_view text, std::string_view what, bool mendable) {
    std::size_t& first = tallied_[indexOf(rule)];
    if (first != 0) {
        ++all_[first - 1].count;
        return;
    }
    const std::size_t before = all_.size();
    add(rule, place, text, std::string(what), mendable);
    if (all_.size() != before) first = all_.size();
}

void Findings::append(const Findings& other) {
    for (std::size_t rule = 0; rule < ruleCount; ++rule) {
        counts_[rule] += other.counts_[rule];
        kept_[rule] += other.kept_[rule];
    }
    for (std::size_t severity = 0; severity < bySeverity_.size(); ++severity)
        bySeverity_[severity] += other.bySeverity_[severity];
    all_.insert(all_.end(), other.all_.begin(), other.all_.end());
}

std::size_t Findings::count(Severity severity) const {
    return bySeverity_[static_cast<std::size_t>(severity)];
}

std::vector<Finding> Findings::sorted() const {
    std::vector<Finding> all = all_;
    std::stable_sort(all.begin(), all.end(), [](const Finding& one, const Finding& other) {
        return std::tie(one.place.line, one.place.column, one.rule) <
               std::tie(other.place.line, other.place.column, other.rule);
    });
    return all;
}

}  // namespace welvane
