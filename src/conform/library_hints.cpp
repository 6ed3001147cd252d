#include "conform/library_hints.h"

#include <algorithm>

#include "shared/text.h"

namespace welvane {

namespace {

/// More unknown names than this are damage, and telling each once is not worth the memory.
constexpr std::size_t mostUnknown = 100'000;

}  // namespace

bool LibraryHints::knows(std::string_view unit) const {
    return !plainDepthUnit(unit).empty() || (library_ != nullptr && knownUnit(*library_, unit));
}

void LibraryHints::judgeUnit(const HeaderFields& fields) {
    if (library_ == nullptr || library_->units.empty() || fields.unit.empty() || knows(fields.unit)) return;
    if (unknown_.size() < mostUnknown && unknown_.insert("." + upper(fields.unit)).second)
        findings_.add(Rule::U001, fields.at(fields.unit), fields.unit);
}

void LibraryHints::judgeCurve(const HeaderFields& fields) {
    if (library_ == nullptr || library_->curves.empty() || fields.mnem.empty()) return;
    const std::string_view mnem = fields.mnem;
    const bool known = std::any_of(library_->curves.begin(), library_->curves.end(),
                                   [mnem](const Curve& curve) { return sameText(curve.mnem, mnem); });
    if (!known && unknown_.size() < mostUnknown && unknown_.insert(upper(mnem)).second)
        findings_.add(Rule::U002, fields.at(mnem), mnem);
}

}  // namespace welvane
