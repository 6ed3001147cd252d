#pragma once

#include <map>
#include <string>
#include <string_view>

#include "jobs/session_lines.h"
#include "shared/table.h"

/// A table told by what differs from another one, which stands again wherever the same file is loaded.
namespace welvane {

/// Texts that stand for something else wherever the table is read, such as the path of an input: what they are called,
/// and what they mean now.
using NamedTexts = std::map<std::string, std::string>;

/// What the columns or rows of both tables are known by, so that one that only moved is told in a word.
enum class TableKey {
    Place,       ///< nothing moves
    InputIndex,  ///< columns, by the row that numbers an input's channels
    FirstLink,   ///< columns, by the first input channel that feeds them
    LineMnem     ///< rows, by their mnemonic
};

enum class Telling {
    Changes,  ///< what differs
    Settings  ///< and each setting of a row, whatever it is: the other table may have other ones elsewhere
};

/// Lines that make `table` of `base`; "" where there are none.
std::string tableChanges(const Table& base, const Table& table, TableKey key, Telling telling, const NamedTexts& named);
/// The table that the lines make of the other one. RunTimeFailure, with the line, for what cannot be read.
Table changedTable(const Table& base, const SessionPart& part, TableKey key, const NamedTexts& named);

}  // namespace welvane
