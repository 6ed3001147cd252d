#include "cli/options.h"

#include <CLI/CLI.hpp>

namespace welvane {

namespace {

constexpr std::size_t helpColumn = 34;

CLI::Option* addSwitch(CLI::App& command, const VerbOption& row, bool& target) {
    return command.add_flag(std::string(row.names), target, std::string(row.help));
}

template <class Value>
CLI::Option* addValue(CLI::App& command, const VerbOption& row, Value& target) {
    CLI::Option* const option = command.add_option(std::string(row.names), target, std::string(row.help));
    return option->type_name(std::string(row.form));
}

void limitValues(CLI::Option& option, const VerbOption& row) {
    const OptionRules& rules = row.rules;
    if (!rules.words.empty() && rules.anyCase)
        option.check(CLI::IsMember(rules.words, CLI::ignore_case));
    else if (!rules.words.empty())
        option.check(CLI::IsMember(rules.words));
    if (rules.least == 0 && rules.most == 0) return;
    // The words of a refusal differ by the kind of number.
    if (std::holds_alternative<double*>(row.place))
        option.check(CLI::Range(rules.least, rules.most));
    else
        option.check(CLI::Range(static_cast<int>(rules.least), static_cast<int>(rules.most)));
}

void takeSeveral(CLI::Option& option, Several several) {
    if (several == Several::Repeated) option.expected(1)->take_all()->delimiter('\0');
    if (several == Several::Parted) option.expected(1, -1)->delimiter(',');
}

CLI::Option* addOption(CLI::App& command, const VerbOption& row) {
    CLI::Option* const option = std::visit(
        [&](auto* target) {
            if constexpr (std::is_same_v<decltype(target), bool*>)
                return addSwitch(command, row, *target);
            else
                return addValue(command, row, *target);
        },
        row.place);
    limitValues(*option, row);
    takeSeveral(*option, row.rules.several);
    if (row.rules.required) option->required();
    if (!row.rules.group.empty()) option->group(std::string(row.rules.group));
    if (!row.rules.excludes.empty()) option->excludes(std::string(row.rules.excludes));
    return option;
}

}  // namespace

void addOptions(VerbOptions& rows, std::string_view group, VerbOptions added) {
    for (VerbOption& row : added) {
        row.rules.group = group;
        rows.push_back(std::move(row));
    }
}

ReadArguments readArguments(const CommandSyntax& syntax, const std::vector<std::string>& arguments) {
    CLI::App command(std::string(syntax.summary) + ".", "welvane " + std::string(syntax.name));
    command.footer(syntax.footer);
    command.get_formatter()->column_width(helpColumn);
    std::vector<std::pair<CLI::Option*, bool*>> watched;
    const auto add = [&](const VerbOptions& rows) {
        for (const VerbOption& row : rows) {
            CLI::Option* const option = addOption(command, row);
            if (row.rules.given != nullptr) watched.emplace_back(option, row.rules.given);
        }
    };
    add(syntax.options);
    command.set_help_flag("-h,--help", "Print this help")->group(std::string(commonGroup));
    add(syntax.common);
    try {
        // The library takes the arguments from the back.
        command.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        return {ReadArguments::Outcome::Help, command.help()};
    } catch (const CLI::ParseError& error) {
        return {ReadArguments::Outcome::Fault, error.what()};
    }
    for (const auto& [option, given] : watched) *given = option->count() > 0;
    return {};
}

}  // namespace welvane
