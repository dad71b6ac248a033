// `corvane config`: the settings that the programs of the app group share.
#include <array>
#include <charconv>
#include <memory>
#include <optional>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/CommandText.h"
#include "model/CorvaneUserDefaults.h"
#include "model/GSData.h"
#include "queries/TaskFilters.h"

namespace corvane {
namespace {

struct Setting {
    std::string key;
    bool isFlag = false;
    std::int64_t largest = 0;                            ///< of a number, which starts at 0
    std::optional<std::uint32_t> filter = std::nullopt;  ///< whose tasks order it is
};

std::vector<Setting> settings() {
    constexpr std::int64_t kLastTasksOrder = 2;
    std::vector<Setting> result = {
        {"ShowOverdueTasksList", true},
        { "ListsOrder",                 false,    1},
        { std::string(kAlertDefaultHourKey),                 false,   23},
        { std::string(kAlertDefaultMinuteKey),                 false,   59},
    };
    for (std::uint32_t filter = 0; filter < kTaskFilterCount; ++filter) {
        const std::string_view key = tasksOrderKeyForFilter(filter);
        if (!key.empty()) result.push_back({std::string(key), false, kLastTasksOrder, filter});
    }
    return result;
}

Setting settingWithKey(const std::string& key) {
    for (Setting& setting : settings()) {
        if (setting.key == key) return setting;
    }
    throw CommandFailure(translated("there is no setting \"%@\"; corvane config lists them", key), kUsage);
}

// A tasks order has 16 bits of what is stored.
std::int64_t numberOf(const Setting& setting) {
    return setting.filter ? GSData::tasksOrderForFilter(*setting.filter)
                          : corvaneUserDefaults().integerForKey(setting.key);
}

std::string valueText(const Setting& setting) {
    if (setting.isFlag) return corvaneUserDefaults().boolForKey(setting.key) ? "yes" : "no";
    return std::to_string(numberOf(setting));
}

std::optional<bool> flagFromText(std::string_view text) {
    for (const std::string_view word : {"yes", "true", "on", "1"}) {
        if (text == word) return true;
    }
    for (const std::string_view word : {"no", "false", "off", "0"}) {
        if (text == word) return false;
    }
    return std::nullopt;
}

PropertyList valueFromText(const Setting& setting, const std::string& text) {
    if (setting.isFlag) {
        if (const auto flag = flagFromText(text)) return {*flag};
        throw CommandFailure(translated("%1$@ takes yes or no, not \"%2$@\"", setting.key, text), kUsage);
    }
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    if (isWhole && number >= 0 && number <= setting.largest) return {number};
    throw CommandFailure(
        translated("%1$@ takes a number from 0 to %2$d, not \"%3$@\"", setting.key, setting.largest, text),
        kUsage);
}

nlohmann::json valueJson(const Setting& setting) {
    if (setting.isFlag) return corvaneUserDefaults().boolForKey(setting.key);
    return numberOf(setting);
}

void printSettings(Program& program, const std::vector<Setting>& shown) {
    if (program.options.json) {
        nlohmann::json object = nlohmann::json::object();
        for (const Setting& setting : shown) object[setting.key] = valueJson(setting);
        return program.printData(object.dump());
    }
    for (const Setting& setting : shown) {
        program.printLine(shown.size() == 1 ? valueText(setting) : setting.key + " " + valueText(setting));
    }
}

struct ConfigOptions {
    std::string key;
    std::string value;
    bool unset = false;
};

void runConfig(Program& program, const ConfigOptions& options) {
    if (options.key.empty()) {
        if (options.unset) throw CommandFailure(translated("--unset takes the key of a setting"), kUsage);
        return printSettings(program, settings());
    }
    const Setting setting = settingWithKey(options.key);
    if (options.unset && !options.value.empty()) {
        throw CommandFailure(translated("a value and --unset exclude each other"), kUsage);
    }
    if (options.value.empty() && !options.unset) return printSettings(program, {setting});
    const bool written =
        options.unset ? corvaneUserDefaults().removeObjectForKey(setting.key)
                      : corvaneUserDefaults().setObject(setting.key, valueFromText(setting, options.value));
    if (!written) throw CommandFailure(translated("the settings could not be written"));
}

}  // namespace

std::vector<std::string> settingKeys() {
    std::vector<std::string> keys;
    for (const Setting& setting : settings()) keys.push_back(setting.key);
    return keys;
}

void addConfigCommand(CLI::App& app, Program& program) {
    const auto options = std::make_shared<ConfigOptions>();
    CLI::App& command =
        *app.add_subcommand("config", translated("List, show and change the shared settings"));
    command.add_option("key", options->key, translated("A setting"));
    command.add_option("value", options->value, translated("What to set it to"));
    command.add_flag("--unset", options->unset, translated("Go back to the default"));
    command.callback([&program, options] { runConfig(program, *options); });
}

}  // namespace corvane
