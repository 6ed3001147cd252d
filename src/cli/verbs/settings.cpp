#include <memory>

#include "app/preference_rows.h"
#include "app/setting_keys.h"
#include "app/startup.h"
#include "cli/json_document.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/verbs.h"
#include "shared/failure.h"
#include "shared/table.h"
#include "shared/text.h"

namespace welvane {

namespace {

struct SettingsChoices {
    std::string action = "list", key, value;
    bool hasValue = false;
};

std::string valueOf(Console& console, const SettingKey& key) {
    const std::string fallback =
        key.defaultText == "<program>" ? console.platform().programFolder() : std::string(key.defaultText);
    return console.platform().settings().get(key.name, fallback);
}

const SettingKey& needKey(const std::string& name) {
    const SettingKey* const key = findSettingKey(name);
    if (key == nullptr) throw UsageFault("there is no setting '" + name + "' (welvane settings lists them)");
    return *key;
}

/// The preferences by their names, each with its key.
std::string namedLines(Console& console) {
    const StartupSettings& settings = console.app().settings;
    TextTable table("lll");
    for (const Preference& preference : preferenceRows())
        table.add({preferenceName(preference, settings.units), "= " + shownText(preferenceText(preference, settings)),
                   preference.key.empty() ? "(only shown)" : std::string(preference.key)});
    return table.text("");
}

Json namedEntries(Console& console) {
    const StartupSettings& settings = console.app().settings;
    Json entries = Json::array();
    for (const Preference& preference : preferenceRows())
        entries.push(Json::object({{"row", at(preference.row)},
                                   {"name", preferenceName(preference, settings.units)},
                                   {"value", utf8Text(preferenceText(preference, settings))},
                                   {"key", preference.key}}));
    return entries;
}

ExitCode listAll(Console& console) {
    if (console.options().json) {
        Json all = Json::object();
        for (const SettingKey& key : settingKeys()) all.add(key.name, utf8Text(valueOf(console, key)));
        console.print(ownDocument({{"settings", std::move(all)}, {"preferences", namedEntries(console)}}).dump(2) +
                      "\n");
        return ExitCode::Done;
    }
    std::size_t names = 0;
    for (const SettingKey& key : settingKeys()) names = std::max(names, key.name.size());
    for (const SettingKey& key : settingKeys()) {
        // Short values leave their meaning in one column; a long one pushes its own out.
        constexpr std::size_t valueWidth = 44;
        const std::string line = padded(key.name, names) + " = " +
                                 padded(shownText(valueOf(console, key)), valueWidth) + "  " + std::string(key.help);
        console.print(line + "\n");
    }
    console.print("\nThe same by name:\n" + namedLines(console));
    return ExitCode::Done;
}

void printValue(Console& console, std::string_view name, const std::string& value) {
    console.print(console.options().json
                      ? ownDocument({{"settings", Json::object({{name, utf8Text(value)}})}}).dump(2) + "\n"
                      : value + "\n");
}

ExitCode getOne(Console& console, const std::string& name) {
    StartupSettings settings = console.app().settings;
    const SettingKey* const known = findSettingKey(name);
    if (const auto named = known == nullptr ? findPreference(name, settings) : std::nullopt) {
        settings.units = named->units;
        printValue(console, preferenceName(*named->preference, named->units),
                   preferenceText(*named->preference, settings));
        return ExitCode::Done;
    }
    const SettingKey& key = needKey(name);
    printValue(console, key.name, valueOf(console, key));
    return ExitCode::Done;
}

void store(Console& console, const SettingKey& key, const std::string& value) {
    if (!console.platform().settings().put(key.name, value))
        throw Refusal(std::string(key.name),
                      "the settings could not be written: " + console.platform().settings().whyNotKept());
}

/// One field of a setting by the name of its preference; the others stay.
ExitCode setNamed(Console& console, const NamedPreference& named, const std::string& value) {
    const Preference& preference = *named.preference;
    const std::string name = preferenceName(preference, named.units);
    if (preference.key.empty()) throw Refusal(name, "it is only shown: every file that is selected is checked");
    StartupSettings settings = console.app().settings;
    const SettingKey& key = needKey(std::string(preference.key));
    std::string kept;
    try {
        setPreference(settings, preference, value, named.units);
        kept = key.corrected(preferenceKeyText(preference, settings));
    } catch (const RunTimeFailure& failure) {
        throw Refusal(name, failure.what());
    }
    const std::string meant = preferenceText(preference, settings);
    settings.matrix = preference.key == "mdenDef" ? parseMatrixTable(kept) : settings.matrix;
    settings.format = preference.key == "formatdef" ? parseFormatDefaults(kept) : settings.format;
    const std::string taken = preferenceText(preference, settings);
    const bool otherCountry = preference.row == PreferenceRow::Country && !sameText(value, taken);
    if (taken != meant || otherCountry) console.user().note(name + ": " + value + " is kept as " + taken);
    store(console, key, kept);
    return ExitCode::Done;
}

ExitCode setOne(Console& console, const std::string& name, const std::string& value) {
    const SettingKey* const known = findSettingKey(name);
    if (const auto named = known == nullptr ? findPreference(name, console.app().settings) : std::nullopt)
        return setNamed(console, *named, value);
    const SettingKey& key = needKey(name);
    std::string kept;
    try {
        kept = key.corrected(value);
    } catch (const RunTimeFailure& failure) {
        throw Refusal(std::string(key.name), failure.what());
    }
    if (kept != value) console.user().note(std::string(key.name) + ": " + value + " is kept as " + kept);
    store(console, key, kept);
    return ExitCode::Done;
}

ExitCode performSettings(Console& console, const SettingsChoices& choices) {
    if (choices.action == "list") {
        if (!choices.key.empty()) throw UsageFault("list takes no key");
        return listAll(console);
    }
    if (choices.key.empty()) throw UsageFault(choices.action + " needs a key");
    if (choices.action == "get") {
        if (choices.hasValue) throw UsageFault("get takes one key");
        return getOne(console, choices.key);
    }
    if (!choices.hasValue) throw UsageFault("set needs a key and a value");
    return setOne(console, choices.key, choices.value);
}

}  // namespace

VerbSyntax declareSettings() {
    const auto choices = std::make_shared<SettingsChoices>();
    return {
        {{"ACTION", &choices->action, "", "list (default), get or set", {.words = {"list", "get", "set"}}},
         {"KEY", &choices->key, "", "Name of a setting, or of a preference as list shows it; its case does not matter"},
         {"VALUE", &choices->value, "", "New value, checked and corrected as at start", {.given = &choices->hasValue}}},
        [choices](Console& console) { return performSettings(console, *choices); }};
}

}  // namespace welvane
