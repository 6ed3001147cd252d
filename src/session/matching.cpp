#include "session/matching.h"

#include <algorithm>
#include <array>
#include <deque>
#include <string>
#include <unordered_map>
#include <utility>

#include "reference/reference_tables.h"
#include "session/session_setup.h"
#include "shared/text.h"

namespace welvane {

namespace {

/// Columns of the four slots as lists of mnemonics by place (place 0 is not used), and where each column came from: the
/// working form of the alignment.
struct ColumnOrder {
    std::array<std::vector<std::string>, slotCount> mnems;
    std::array<std::vector<int>, slotCount> origin;
};

/// Places that the alignment looks at; they are worked out from the channel counts and not from what was moved since.
struct SearchPlaces {
    int lastTarget = 0;                          ///< places 1 to this one are matched
    std::array<int, slotCount> first{}, last{};  ///< candidates of each slot
    std::array<bool, slotCount> loaded{};
    int lastPlace = 0;
};

SearchPlaces searchPlaces(const Session& session, bool wide) {
    SearchPlaces places;
    places.lastPlace = session.tables.srd[0].columns() - 1;
    places.lastTarget = wide ? places.lastPlace : std::min(session.channelCount(0), places.lastPlace);
    for (int slot = 0; slot < slotCount; ++slot) {
        places.loaded[slot] = session.loaded(slot);
        const int base = session.columnBase(slot);
        places.first[slot] = wide ? 1 : base + 1;
        places.last[slot] = wide ? places.lastPlace : std::min(base + session.channelCount(slot), places.lastPlace);
    }
    return places;
}

template <class Value>
void moveItem(std::vector<Value>& list, int from, int to) {
    const auto begin = list.begin();
    if (from < to) std::rotate(begin + from, begin + from + 1, begin + to + 1);
    if (to < from) std::rotate(begin + to, begin + from, begin + from + 1);
}

/// Places after the compaction: element p is the place that stood there before. Empty places go behind one by one; each
/// test counts, and twice the column count of tests end it.
template <class IsEmpty>
std::vector<int> compactedPlaces(int lastPlace, IsEmpty&& isEmpty) {
    std::deque<int> waiting;
    for (int place = 1; place <= lastPlace; ++place) waiting.push_back(place);
    std::vector<int> result{0};
    const int bound = 2 * (lastPlace + 1);
    for (int guard = 1; guard <= bound && !waiting.empty(); ++guard) {
        const int place = waiting.front();
        waiting.pop_front();
        if (isEmpty(place) && !waiting.empty())
            waiting.push_back(place);
        else
            result.push_back(place);
    }
    result.insert(result.end(), waiting.begin(), waiting.end());
    return result;
}

template <class Value>
std::vector<Value> reordered(const std::vector<Value>& list, const std::vector<int>& places) {
    std::vector<Value> result;
    result.reserve(list.size());
    for (const int place : places) result.push_back(list[place]);
    return result;
}

/// Mnemonics and curve groups as numbers, equal but for case meaning equal. Number 0 is the empty text.
class MnemNumbers {
  public:
    explicit MnemNumbers(const ReferenceTables& reference) {
        number("");
        std::unordered_map<std::string, int> groups;
        for (const Curve& curve : reference.curves) {
            const auto [group, isNew] = groups.try_emplace(upper(curve.group), static_cast<int>(members_.size()));
            if (isNew) members_.emplace_back();
            const int mnem = number(curve.mnem);
            members_[group->second].push_back(mnem);
            groupOf_.try_emplace(mnem, group->second);
        }
    }

    int number(std::string_view text) {
        return numbers_.try_emplace(upper(text), static_cast<int>(numbers_.size())).first->second;
    }
    int count() const { return static_cast<int>(numbers_.size()); }
    /// Members of the group of the first row that names the mnemonic, in table order.
    const std::vector<int>& groupMembersOf(std::string_view mnem) {
        static const std::vector<int> none;
        const auto found = groupOf_.find(number(trim(mnem)));
        return found == groupOf_.end() || trim(mnem).empty() ? none : members_[found->second];
    }

  private:
    std::unordered_map<std::string, int> numbers_;
    std::unordered_map<int, int> groupOf_;
    std::vector<std::vector<int>> members_;
};

/// One slot's columns as numbers, with the count of each number among the candidate places.
class NumberedColumns {
  public:
    NumberedColumns(const std::vector<std::string>& mnems, int first, int last, MnemNumbers& numbers)
        : first_(first), last_(last) {
        for (const std::string& mnem : mnems) numbers_.push_back(numbers.number(mnem));
    }
    void countCandidates(int numberCount) {
        present_.assign(static_cast<std::size_t>(numberCount), 0);
        for (int place = first_; place <= last_; ++place) ++present_[numbers_[place]];
    }
    int at(int place) const { return numbers_[place]; }
    bool isCandidate(int number) const { return present_[number] > 0; }
    /// First candidate place of a number that is among the candidates.
    int firstPlace(int number) const {
        int place = first_;
        while (numbers_[place] != number) ++place;
        return place;
    }
    void move(int from, int to) {
        const int low = std::min(from, to), high = std::max(from, to);
        const auto count = [&](int change) {
            for (int place = std::max(low, first_); place <= std::min(high, last_); ++place)
                present_[numbers_[place]] += change;
        };
        const bool inside = low >= first_ && high <= last_;
        // A move within the candidates changes none of their counts; another lets one in and out.
        if (!inside) count(-1);
        moveItem(numbers_, from, to);
        if (!inside) count(1);
    }

  private:
    std::vector<int> numbers_, present_;
    int first_, last_;
};

void applyOrder(Session& session, const ColumnOrder& order) {
    for (int slot = 0; slot < slotCount; ++slot) {
        if (!session.loaded(slot)) continue;
        Table& table = session.tables.srd[slot];
        const Table before = table;
        for (int place = 1; place < table.columns(); ++place) {
            const int origin = order.origin[slot][place];
            if (origin == place) continue;
            for (int row = 0; row < table.rows(); ++row) table.cell(row, place) = before.cell(row, origin);
        }
    }
}

void markShared(Session& session) {
    for (int column = 1; column < session.tables.srd[0].columns(); ++column) {
        int sharing = 0;
        const auto isFilled = [&](int slot) {
            return session.loaded(slot) && !session.tables.srd[slot].text(SlotRow::Mnem, column).empty();
        };
        for (int slot = 0; slot < slotCount; ++slot) sharing += isFilled(slot) ? 1 : 0;
        if (sharing < 2) continue;
        for (int slot = 0; slot < slotCount; ++slot) {
            if (!isFilled(slot)) continue;
            const std::string& index = session.tables.srd[slot].text(SlotRow::Index, column);
            std::size_t channel = 0;
            for (const char c : index) channel = channel * 10 + static_cast<std::size_t>(c - '0');
            if (channel < session.channels[slot].size()) session.channels[slot][channel].spliced = true;
        }
    }
}

ColumnOrder columnOrder(const Session& session) {
    ColumnOrder order;
    for (int slot = 0; slot < slotCount; ++slot) {
        const Table& table = session.tables.srd[slot];
        order.mnems[slot].emplace_back();
        order.origin[slot].push_back(0);
        for (int column = 1; column < session.tables.srd[0].columns(); ++column) {
            order.mnems[slot].push_back(column < table.columns() ? table.text(SlotRow::Mnem, column) : std::string());
            order.origin[slot].push_back(column);
        }
    }
    return order;
}

/// The alignment by upper-casing once and looking groups up by hash. Test: AlignmentEqualsThePlainScan
void align(const ReferenceTables& reference, const Session& session, bool wide, ColumnOrder& order) {
    const SearchPlaces places = searchPlaces(session, wide);
    MnemNumbers numbers(reference);
    std::vector<NumberedColumns> columns;
    for (int slot = 0; slot < slotCount; ++slot)
        columns.emplace_back(order.mnems[slot], places.first[slot], places.last[slot], numbers);
    for (NumberedColumns& column : columns) column.countCandidates(numbers.count());
    const auto moveColumn = [&](int slot, int from, int to) {
        columns[slot].move(from, to);
        moveItem(order.origin[slot], from, to);
    };
    const std::array<std::vector<std::string>, slotCount> before = std::move(order.mnems);
    for (int slot = 0; slot + 1 < slotCount; ++slot) {
        if (!places.loaded[slot] || !places.loaded[slot + 1]) continue;
        for (int target = 1; target <= places.lastTarget; ++target) {
            const int mnem = columns[slot].at(target);
            if (mnem == 0) continue;
            for (int other = slot + 1; other < slotCount; ++other) {
                if (!places.loaded[other]) continue;
                if (columns[other].isCandidate(mnem)) {
                    moveColumn(other, columns[other].firstPlace(mnem), target);
                    continue;
                }
                if (!wide && columns[other].at(target) != 0) continue;
                for (const int member : numbers.groupMembersOf(before[slot][order.origin[slot][target]])) {
                    if (!columns[other].isCandidate(member)) continue;
                    moveColumn(other, columns[other].firstPlace(member), target);
                    break;
                }
            }
        }
    }
    const std::vector<int> compacted = compactedPlaces(places.lastPlace, [&](int place) {
        for (int slot = 0; slot < slotCount; ++slot)
            if (places.loaded[slot] && columns[slot].at(place) != 0) return false;
        return true;
    });
    for (int slot = 0; slot < slotCount; ++slot) {
        if (places.loaded[slot]) order.origin[slot] = reordered(order.origin[slot], compacted);
        order.mnems[slot] = reordered(before[slot], order.origin[slot]);
    }
}

void splice(App& app, Session& session, bool wide) {
    ColumnOrder order = columnOrder(session);
    align(app.reference, session, wide, order);
    applyOrder(session, order);
    markShared(session);
    fillNewGrid(session);
}

}  // namespace

void spliceGuess(App& app, Session& session) {
    splice(app, session, false);
}
void spliceGuessNew(App& app, Session& session) {
    splice(app, session, true);
}

}  // namespace welvane
