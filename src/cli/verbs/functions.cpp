#include "functions/functions.h"

#include <memory>

#include "cli/json_document.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"

namespace welvane {

namespace {

constexpr std::string_view intro =
    "A function makes a channel out of another. It stands behind \"|\" in a ~Curve line of a filter, or of --curve:\n\n"
    "  welvane run well.las -o new.las --curve \"DPHI.V/V : Porosity | FUN=BULKDEN2PORO,RHOB,2.65,1.0\"\n\n"
    "Behind the key stand the channel to read and the arguments, divided by commas. A value in () is the usual one;\n"
    "it has to be written all the same.\n";

Json asJson(const FunctionEntry& entry) {
    Json arguments = Json::array();
    for (const FunctionArgument& argument : entry.arguments)
        arguments.push(
            Json::object({{"name", argument.name}, {"unit", argument.unit}, {"default", argument.defaultText}}));
    return Json::object({{"code", static_cast<int>(entry.code)},
                         {"key", entry.key},
                         {"description", entry.description},
                         {"mnem", entry.suggestedMnem},
                         {"arguments", arguments},
                         {"example", entry.example}});
}

std::string argumentText(const FunctionArgument& argument) {
    std::string text(argument.name);
    if (!argument.unit.empty()) text.append(" in ").append(argument.unit);
    if (!argument.defaultText.empty()) text.append(" (").append(argument.defaultText).append(")");
    return text;
}

std::string asText(const FunctionEntry& entry) {
    const std::string indent(20, ' ');
    std::string text = paddedLeft(std::to_string(static_cast<int>(entry.code)), 3) + "  " + padded(entry.key, 15) +
                       std::string(entry.description) + "\n";
    const char* label = "Arguments  ";
    for (const FunctionArgument& argument : entry.arguments) {
        text += indent + label + argumentText(argument) + "\n";
        label = "           ";
    }
    if (!entry.suggestedMnem.empty()) text += indent + "Makes      " + std::string(entry.suggestedMnem) + "\n";
    return text + indent + "Example    " + std::string(entry.example) + "\n";
}

ExitCode performFunctions(Console& console, const std::string& key) {
    const FunctionEntry* const only = key.empty() ? nullptr : findFunction(key);
    if (!key.empty() && only == nullptr) throw Refusal(key, "there is no function of this name");
    Json all = Json::array();
    std::string text = key.empty() ? std::string(intro) : std::string();
    for (const FunctionEntry& entry : functionCatalogue()) {
        if (only != nullptr && &entry != only) continue;
        all.push(asJson(entry));
        text += (text.empty() ? "" : "\n") + asText(entry);
    }
    console.print(console.options().json ? ownDocument({{"functions", all}}).dump(2) + "\n" : text);
    return ExitCode::Done;
}

}  // namespace

VerbSyntax declareFunctions() {
    const auto key = std::make_shared<std::string>();
    return {{{"KEY", key.get(), "", "One function alone"}},
            [key](Console& console) { return performFunctions(console, *key); }};
}

}  // namespace welvane
