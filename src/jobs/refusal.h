#pragma once

#include <stdexcept>
#include <string>

#include "las/data_refusal.h"

/// How a job says No.
namespace welvane {

/// What would help: a choice that the request could make. The words are the caller's, who knows what it is called
/// there.
enum class Remedy {
    None,
    Force,         ///< to replace a file that is there
    Loose,         ///< to read data of no regular shape line by line
    From,          ///< to name the top of the output
    To,            ///< to name its bottom
    Step,          ///< to name its step
    DecimalComma,  ///< to read a comma inside numbers as a point
    Units,         ///< to name the unit
    IndexUnit,     ///< to name the unit of the index
    Delimiter,     ///< to name what parts the columns of a table
    DataRow,       ///< to name the first line of data of a table
    Checker,       ///< to name the checker, or to set it once for all
    Timeout,       ///< to give the checker more time
    LineEnds,      ///< to repair the line ends
    Rebuild        ///< to write a new header
};

/// What would help where data cannot be read.
constexpr Remedy remedyFor(DataRefusal::Help help) {
    switch (help) {
        case DataRefusal::Help::Loose:
            return Remedy::Loose;
        case DataRefusal::Help::DecimalComma:
            return Remedy::DecimalComma;
        case DataRefusal::Help::IndexUnit:
            return Remedy::IndexUnit;
        case DataRefusal::Help::None:
            break;
    }
    return Remedy::None;
}

/// Why something cannot be done, in words, and what would help.
struct Reason {
    std::string text{};  ///< one line; "" when nothing stands against it
    Remedy remedy = Remedy::None;
    bool none() const { return text.empty(); }
};

/// Why a job, or one file of it, was not done: because of a file, or of a choice in the request.
struct Fault {
    std::string file{};    ///< "" when it is not about a file
    std::string choice{};  ///< name of the choice that cannot be followed, in words as in "apply-depths"; else ""
    Reason reason{};
    bool senseless = false;  ///< the choice makes no sense whatever the files are
    std::size_t line = 0;    ///< of the file, from 1, where one line is the reason, which names it too; else 0
};

/// Thrown by a job that cannot do its work. Nothing of its output is there.
struct Refusal : std::runtime_error {
    explicit Refusal(Fault why) : std::runtime_error(textOf(why)), fault(std::move(why)) {}
    Refusal(const std::string& file, Reason reason) : Refusal(Fault{file, "", std::move(reason)}) {}
    Refusal(const std::string& file, const std::string& reason, Remedy remedy = Remedy::None)
        : Refusal(file, Reason{reason, remedy}) {}

    Fault fault;

  private:
    static std::string textOf(const Fault& why) {
        const std::string& about = why.choice.empty() ? why.file : why.choice;
        return about.empty() ? why.reason.text : about + ": " + why.reason.text;
    }
};

/// A choice that these files cannot follow, and one that makes no sense at all.
inline Refusal refusedChoice(const std::string& choice, const std::string& reason) {
    return Refusal(Fault{"", choice, {reason}, false});
}
inline Refusal senselessChoice(const std::string& choice, const std::string& reason) {
    return Refusal(Fault{"", choice, {reason}, true});
}

}  // namespace welvane
