#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "app/setting_keys.h"
#include "cli/shown_text.h"
#include "cli/verbs.h"
#include "shared/failure.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct SettingsChoices {
    std::string action = "list", key, value;
    CLI::Option* valueOption = nullptr;
};

std::string valueOf(Workbench& bench, const SettingKey& key) {
    const std::string fallback =
        key.defaultText == "<program>" ? bench.platform().programFolder() : std::string(key.defaultText);
    return bench.platform().settings().get(key.name, fallback);
}

const SettingKey& needKey(const std::string& name) {
    const SettingKey* const key = findSettingKey(name);
    if (key == nullptr) throw UsageFault("there is no setting '" + name + "' (welvane settings lists them)");
    return *key;
}

ExitCode listAll(Workbench& bench) {
    if (bench.options().json) {
        nlohmann::ordered_json all;
        for (const SettingKey& key : settingKeys()) all[std::string(key.name)] = utf8Text(valueOf(bench, key));
        bench.print(all.dump(2) + "\n");
        return ExitCode::Done;
    }
    std::size_t names = 0;
    for (const SettingKey& key : settingKeys()) names = std::max(names, key.name.size());
    for (const SettingKey& key : settingKeys()) {
        // Short values leave their meaning in one column; a long one pushes its own out.
        constexpr std::size_t valueWidth = 44;
        const std::string line = padded(key.name, names) + " = " + padded(shownText(valueOf(bench, key)), valueWidth) +
                                 "  " + std::string(key.help);
        bench.print(line + "\n");
    }
    return ExitCode::Done;
}

ExitCode getOne(Workbench& bench, const std::string& name) {
    const SettingKey& key = needKey(name);
    const std::string value = valueOf(bench, key);
    if (bench.options().json)
        bench.print(nlohmann::ordered_json{{std::string(key.name), utf8Text(value)}}.dump(2) + "\n");
    else
        bench.print(value + "\n");
    return ExitCode::Done;
}

ExitCode setOne(Workbench& bench, const std::string& name, const std::string& value) {
    const SettingKey& key = needKey(name);
    std::string kept;
    try {
        kept = key.corrected(value);
    } catch (const RunTimeFailure& failure) {
        throw Refusal(std::string(key.name), failure.what());
    }
    if (kept != value) bench.user().note(std::string(key.name) + ": " + value + " is kept as " + kept);
    if (!bench.platform().settings().put(key.name, kept))
        throw Refusal(std::string(key.name), "the settings could not be written");
    return ExitCode::Done;
}

ExitCode performSettings(Workbench& bench, const SettingsChoices& choices) {
    const bool hasValue = choices.valueOption->count() > 0;
    if (choices.action == "list") {
        if (!choices.key.empty()) throw UsageFault("list takes no key");
        return listAll(bench);
    }
    if (choices.key.empty()) throw UsageFault(choices.action + " needs a key");
    if (choices.action == "get") {
        if (hasValue) throw UsageFault("get takes one key");
        return getOne(bench, choices.key);
    }
    if (!hasValue) throw UsageFault("set needs a key and a value");
    return setOne(bench, choices.key, choices.value);
}

}  // namespace

VerbRun declareSettings(CLI::App& command) {
    const auto choices = std::make_shared<SettingsChoices>();
    command.add_option("ACTION", choices->action, "list (default), get or set")
        ->check(CLI::IsMember({"list", "get", "set"}))
        ->type_name("");
    command.add_option("KEY", choices->key, "Name of a setting; its case does not matter")->type_name("");
    choices->valueOption =
        command.add_option("VALUE", choices->value, "New value, checked and corrected as at start")->type_name("");
    return [choices](Workbench& bench) { return performSettings(bench, *choices); };
}

}  // namespace welvane
