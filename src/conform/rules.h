#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

/// The rules of the LAS standard that a file is held against: one table, from which findings, help and the page
/// docs/conform.md take their words.
namespace welvane {

/// Which text of the standard holds. A file without a usable VERS line is judged by 2.0.
enum class StandardVersion : std::uint8_t { V12, V20, V30 };
inline constexpr std::size_t standardVersions = 3;
/// "1.2", "2.0", "3.0".
std::string_view versionText(StandardVersion version);

/// How much a finding weighs: Error is forbidden by the standard, Warning makes readers stumble where the standard is
/// silent or its editions differ, Hint is a habit. None: the rule does not hold in this version.
enum class Severity : std::uint8_t { None, Hint, Warning, Error };
/// "error", "warning", "hint"; "" for None.
std::string_view severityText(Severity severity);

/// F: the file, S: sections, H: header lines, V: ~Version, W: ~Well, C: ~Curve, D: data, U: the library, X: LAS 3.0.
enum class Rule : std::uint8_t {
    F001,
    F002,
    F003,
    F004,
    F005,
    F006,
    F007,
    S001,
    S002,
    S003,
    S004,
    S005,
    S006,
    S007,
    S008,
    S009,
    S010,
    S011,
    S012,
    H001,
    H002,
    H003,
    H004,
    H005,
    H006,
    H007,
    H008,
    H009,
    H010,
    V001,
    V002,
    V003,
    V004,
    V005,
    W001,
    W002,
    W003,
    W004,
    W005,
    W006,
    W007,
    W008,
    W009,
    W010,
    W011,
    W012,
    W013,
    W014,
    W015,
    W016,
    W017,
    W018,
    W019,
    C001,
    C002,
    C003,
    D001,
    D002,
    D003,
    D004,
    D005,
    D006,
    D007,
    D008,
    D009,
    D010,
    D011,
    D012,
    D013,
    D014,
    U001,
    U002,
    X001,
    X002,
    X003,
    X004,
    X005
};
inline constexpr std::size_t ruleCount = static_cast<std::size_t>(Rule::X005) + 1;

struct ConformRule {
    Rule rule;
    std::string_view id;
    std::array<Severity, standardVersions> severity;  ///< in 1.2, 2.0 and 3.0
    std::string_view what;                            ///< what is wrong, in a few words
    std::string_view why;                             ///< what comes of it
    std::string_view mend;                            ///< what can be done; what needs a choice begins with "ask"

    Severity in(StandardVersion version) const { return severity[static_cast<std::size_t>(version)]; }
};

/// In the order of Rule.
std::span<const ConformRule> conformRules();
const ConformRule& ruleOf(Rule rule);
/// By its id, case ignored.
std::optional<Rule> findRule(std::string_view id);

}  // namespace welvane
