// Texts for people go through the catalogues: with one whose texts stand in brackets, nothing readable is
// left outside of them.
#include <regex>
#include <sstream>

#include "CommandFixture.h"

namespace corvane {
namespace {

constexpr std::string_view kOpening = "⟦";
constexpr std::string_view kClosing = "⟧";

std::string withoutTranslations(std::string_view text) {
    std::string rest;
    int depth = 0;
    while (!text.empty()) {
        const bool isOpening = text.starts_with(kOpening);
        const bool isBracket = isOpening || text.starts_with(kClosing);
        if (isBracket) depth += isOpening ? 1 : -1;
        if (!isBracket && depth == 0) rest += text.front();
        text.remove_prefix(isBracket ? kOpening.size() : 1);
    }
    return rest;
}

// What help says of a command or option stands behind its names, two blanks away or on a line of its own.
std::string withoutNames(const std::string& helpLine) {
    if (helpLine.starts_with(": corvane")) return {};
    if (!helpLine.starts_with("  ") || helpLine.starts_with("   ")) return helpLine;
    const std::size_t end = helpLine.find("  ", 2);
    return end == helpLine.npos ? std::string() : helpLine.substr(end);
}

// Lines that hold words besides translated ones, identifiers and signs.
std::string untranslatedLines(const std::string& text, bool isHelp) {
    static const std::regex kWord("[A-Za-z]{2,}");
    std::istringstream lines(withoutTranslations(text));
    std::string found;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("corvane: ")) line.erase(0, 9);
        if (std::regex_search(isHelp ? withoutNames(line) : line, kWord)) found += line + "\n";
    }
    return found;
}

class TranslationProcessTest : public CommandTest {
  protected:
    ProcessResult runInBrackets(const Command& command, const std::string& input = {}) const {
        ProcessEnvironment variables = environment();
        variables["LANGUAGE"] = "pseudo";
        variables["CORVANE_LOCALE_DIR"] = CORVANE_PSEUDO_CATALOGUES;
        return corvane_.run(command, variables, input);
    }
    void expectTranslated(const Command& command, const std::string& input = {}) const {
        SCOPED_TRACE(testing::PrintToString(command));
        const ProcessResult result = runInBrackets(command, input);
        const std::string all = result.output + result.errors;
        EXPECT_NE(all.find(kOpening), all.npos) << all;
        EXPECT_EQ(untranslatedLines(all, command.back() == "--help"), "") << all;
    }
};

TEST_F(TranslationProcessTest, WhatCommandsSay) {
    const Command kCommands[] = {
        {"task",                            "list"       },
        {"task",                            "add",         "Молоко", "--due", "tomorrow", "--repeat", "every 2 weeks on mon"},
        {"task",                          "add",                             "Хлеб", "--due", "friday 14:00", "--alert", "15m", "--priority", "50"},
        {"task",           "add",                        "Чай", "--parent", "Хлеб"},
        {"task",   "list"},
        {"task",                   "show",                       "Хлеб"},
        {"task",                     "due",                              "Чай", "none"},
        {"task",                            "repeat",                          "Молоко", "every month on the last friday"},
        {"task",                       "alert",                          "Хлеб", "none"},
        {"task",                            "region",                                 "Чай", "--clear"},
        {"task",                            "edit",                 "Чай", "--title", "Кофе"},
        {"task",                                 "move",                                         "Хлеб", "--first"},
        {"task",                         "copy",   "Хлеб"},
        {"task",                            "done",      "Молоко", "p2"},
        {"task", "undone",              "p2"},
        {"task",    "delete","p4", "--keep-subtasks", "--dry-run"},
        {"task",                                 "delete",                                         "p4"},
        {"list",                         "add","Дом", "--color", "#123456"},
        {"list",                            "rename",        "Дом", "Дача"},
        {"list",                        "color",                           "Дача", "none"},
        {"list",                            "isolate",   "Дача"},
        {"list",                        "list"                                    },
        {"list",   "clear-completed",    "--dry-run"},
        {"list",                            "delete",        "Дача"},
        {"account",                             "add",                                          "Анна"},
        {"account",                         "list"                    },
        {"account",                            "default",                              "Анна"},
        {"account",                "delete",                  "Анна", "--dry-run"},
        {"filters"                           },
        {"store",                                 "check"},
        {"explain",                         "Хлеб"                                        },
        {"today"                                },
        {"today",                         "--format",                                 "line"},
        {"import",                            "-",                                         "--dry-run"},
        {"--help"                          },
        {"task","add",                     "--help"},
        {"today",                            "--help"          },
    };
    for (const Command& command : kCommands) expectTranslated(command, "Суп\nСыр\n");
}

TEST_F(TranslationProcessTest, WhyCommandsFail) {
    expectTranslated({"task", "add", "Молоко"});
    const Command kCommands[] = {
        {"task",            "show",        "Сыр"                         },
        {"list",            "color",       "1",                               "ы"},
        {"account",                 "list",                      "--ы"                                },
        {"task",                 "add",                         "Чай",     "--priority", "100"},
        {"task",     "add",             "Чай",                                          "--due", "ы"},
        {"task",        "add", "Чай","--repeat", "ы"},
        {"task",                 "add",                         "Чай",                                              "--alert", "ы"},
        {"task",       "done"               },
        {"list"},
        {"tasks",                 "--where","1 =="                                                               },
        {"tasks",            "--where",                         "1 == '"},
        {"tasks",           "--where",                              "1 BEGINSWITH 2"                                             },
        {"tasks",         "--filter",                                                "ы"                                                        },
        {"import", "/"},
        {"config",             "ы"},
        {"task",                 "move","Молоко"           },
    };
    for (const Command& command : kCommands) {
        expectTranslated(command);
        EXPECT_NE(runInBrackets(command).exitCode, 0);
    }
}

std::vector<std::string> keysOf(const nlohmann::json& value) {
    const nlohmann::json flat = value.flatten();
    std::vector<std::string> keys;
    for (const auto& item : flat.items()) keys.push_back(item.key());
    return keys;
}

TEST_F(TranslationProcessTest, DataKeepsItsNames) {
    output({"task", "add", "Молоко", "--due", "today", "--repeat", "every day"});
    for (const Command& command : {
             Command{"--json", "task",     "list"},
             Command{"today",  "--format", "json"}
    }) {
        const Json inBrackets = Json::parse(runInBrackets(command).output);
        EXPECT_EQ(keysOf(inBrackets), keysOf(json(command)));
    }
}

}  // namespace
}  // namespace corvane
