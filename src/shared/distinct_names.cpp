#include "shared/distinct_names.h"

#include <cstddef>
#include <numeric>
#include <unordered_map>
#include <unordered_set>

#include "shared/text.h"

namespace welvane {

namespace {

void number(std::vector<std::string>& names) {
    std::unordered_set<std::string> taken;
    for (const std::string& name : names) taken.insert(upper(name));
    std::unordered_map<std::string, std::size_t> lastNumber;  // by upper-cased name, of the names met so far
    for (std::string& name : names) {
        const auto [met, first] = lastNumber.try_emplace(upper(name), 0);
        if (first) continue;
        std::string numbered;
        do numbered = name + "_" + std::to_string(++met->second);
        while (!taken.insert(upper(numbered)).second);
        name = std::move(numbered);
    }
}

/// The names in groups of equal ones, so that a whole group is pushed on at once.
class PushedNames {
  public:
    explicit PushedNames(const std::vector<std::string>& names) : groupOf_(names.size()) {
        for (std::size_t i = 0; i < names.size(); ++i) groupOf_[i] = join(newGroup(upper(names[i])));
    }

    /// Each other name that equals name i, but never the first one, goes one step on.
    void pushOthers(std::size_t i) {
        const std::size_t all = find(groupOf_[i]);
        const bool depthStays = i != 0 && find(groupOf_[0]) == all;
        const std::size_t staying = depthStays ? 2 : 1;
        const std::string name = groups_[all].name;
        const std::string next = pushed(name);
        if (groups_[all].size == staying || next == name) return;

        const std::size_t kept = newGroup(name);
        groups_[kept].size = staying;
        groups_[all].size -= staying;
        groups_[all].name = next;
        groupNamed_[name] = kept;
        groupOf_[i] = kept;
        if (depthStays) groupOf_[0] = kept;
        join(all);
    }

    /// What name i became, spelled as `given` where no digit took a letter's place.
    std::string spelled(std::size_t i, const std::string& given) {
        std::string name = groups_[find(groupOf_[i])].name;
        for (std::size_t at = 0; at < given.size() && at < name.size(); ++at)
            if (upperChar(given[at]) == name[at]) name[at] = given[at];
        return name;
    }

  private:
    struct Group {
        std::size_t parent;
        std::string name;
        std::size_t size = 1;
    };

    static std::string pushed(std::string name) {
        const bool numbered = name.size() >= 2 && name[name.size() - 2] == '_';
        if (!numbered) return name + "_1";
        if (!isDigit(name.back())) return name;
        const int next = name.back() - '0' + 1;
        name.pop_back();
        return name + std::to_string(next);
    }

    std::size_t newGroup(std::string name) {
        groups_.push_back({.parent = groups_.size(), .name = std::move(name)});
        return groups_.size() - 1;
    }
    std::size_t find(std::size_t group) {
        while (groups_[group].parent != group) {
            groups_[group].parent = groups_[groups_[group].parent].parent;
            group = groups_[group].parent;
        }
        return group;
    }
    /// Puts a group to the one that has its name already; the group that both are now.
    std::size_t join(std::size_t group) {
        const auto [other, alone] = groupNamed_.try_emplace(groups_[group].name, group);
        if (alone) return group;
        const std::size_t root = find(other->second);
        groups_[group].parent = root;
        groups_[root].size += groups_[group].size;
        return root;
    }

    std::vector<Group> groups_;
    std::vector<std::size_t> groupOf_;  ///< by the index of the name
    std::unordered_map<std::string, std::size_t> groupNamed_;
};

}  // namespace

void makeDistinct(std::vector<std::string>& names, FigureRules rules) {
    if (rules == FigureRules::trueFigures) return number(names);
    PushedNames groups(names);
    for (std::size_t i = 0; i < names.size(); ++i) groups.pushOthers(i);
    for (std::size_t i = 0; i < names.size(); ++i) names[i] = groups.spelled(i, names[i]);
}

}  // namespace welvane
