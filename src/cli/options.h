#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// The options of a verb as a table of rows: read by the command line, printed by the help.
namespace welvane {

/// Where the value of an option goes; its type says what is read.
using OptionPlace = std::variant<bool*, int*, double*, std::uint64_t*, std::string*, std::vector<std::string>*>;

/// Texts behind one option.
enum class Several {
    AsTyped,   ///< one, or for a list all that follow
    Repeated,  ///< one at a time, the option may come again; nothing parts a text
    Parted,    ///< all that follow, parted by commas too
};

/// What else there is to say of an option.
struct OptionRules {
    std::string_view group{};  ///< heading in the help; "" for the plain one
    bool required = false;
    Several several = Several::AsTyped;
    std::vector<std::string> words{};  ///< the only values; empty for any
    bool anyCase = false;              ///< of these words
    double least = 0, most = 0;        ///< bounds of a number; none where both are 0
    std::string_view excludes{};       ///< an option that cannot stand beside it
    bool anyBytes = false;             ///< a place for files of any kind, where others want LAS text
    bool* given = nullptr;             ///< set when the option was named, be it with an empty text
};

/// One option. `names` are "-o,--output" for instance, "--yes,!--no" for a switch with its opposite, or "FILE" for a
/// value that is known by its place.
struct VerbOption {
    std::string_view names;
    OptionPlace place;
    std::string_view form;  ///< how the help shows the value; "" for a switch or a place
    std::string_view help;
    OptionRules rules{};
};

using VerbOptions = std::vector<VerbOption>;

/// The heading of the options that every verb knows.
inline constexpr std::string_view commonGroup = "Common options";

/// Adds rows, all under one heading of the help.
void addOptions(VerbOptions& rows, std::string_view group, VerbOptions added);

/// The command line of one verb.
struct CommandSyntax {
    std::string_view name, summary;
    std::string footer;
    VerbOptions options;
    VerbOptions common;  ///< those of every verb, behind its own in the help
};

/// What became of the arguments: the options' places are filled, or there is something to print.
struct ReadArguments {
    enum class Outcome { Ready, Help, Fault };
    Outcome outcome = Outcome::Ready;
    std::string text;  ///< the help, or what is wrong with the arguments
};
/// Reads the arguments behind the verb's name.
ReadArguments readArguments(const CommandSyntax& syntax, const std::vector<std::string>& arguments);

}  // namespace welvane
