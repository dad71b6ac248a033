#include "apps/corvane/CommandPlace.h"

#include <algorithm>

#include <CLI/CLI.hpp>

namespace corvane {
namespace {

bool takesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

const CLI::App* commandNamed(const CLI::App& parent, std::string_view name) {
    for (const CLI::App* command : shownCommands(parent)) {
        if (command->get_name() == name) return command;
    }
    return nullptr;
}

// Options of a command above are taken as well.
const CLI::Option* optionNamed(const CLI::App* command, const std::string& name) {
    for (; command; command = command->get_parent()) {
        if (const CLI::Option* option = command->get_option_no_throw(name)) return option;
    }
    return nullptr;
}

// The last one takes the rest of the words where it takes several.
const CLI::Option* argumentAt(const CLI::App& command, std::size_t position) {
    const auto arguments =
        command.get_options([](const CLI::Option* option) { return option->get_positional(); });
    if (position < arguments.size()) return arguments[position];
    const bool takesMore = !arguments.empty() && arguments.back()->get_items_expected_max() > 1;
    return takesMore ? arguments.back() : nullptr;
}

class Reader {
  public:
    explicit Reader(const CLI::App& root) { place_.command = &root; }

    void read(const std::string& word) {
        if (pending_) {
            keep(*pending_, word);
            pending_ = nullptr;
        } else if (optionsHaveEnded_ || !word.starts_with('-')) {
            readPlainWord(word);
        } else if (word == "--") {
            optionsHaveEnded_ = true;
        } else {
            readOption(word);
        }
    }

    CommandPlace placeOf(const std::string& word) {
        place_.typed = word;
        const bool isOption = !optionsHaveEnded_ && word.starts_with('-');
        if (pending_) {
            place_.value = pending_;
        } else if (isOption && word.find('=') != word.npos) {
            splitAt(word.find('='));
        } else if (isOption) {
            place_.takesOption = true;
        } else {
            place_.takesCommand = argumentCount_ == 0;
            place_.value = argumentAt(*place_.command, argumentCount_);
        }
        return std::move(place_);
    }

  private:
    void keep(const CLI::Option& option, const std::string& value) {
        if (option.check_lname("container")) place_.container = value;
    }

    void readPlainWord(const std::string& word) {
        const CLI::App* command = argumentCount_ == 0 ? commandNamed(*place_.command, word) : nullptr;
        if (command) {
            place_.command = command;
        } else {
            ++argumentCount_;
        }
    }

    void readOption(const std::string& word) {
        const std::size_t end = word.find('=');
        const CLI::Option* option = optionNamed(place_.command, word.substr(0, end));
        if (!option || !takesValue(*option)) return;
        if (end == word.npos) {
            pending_ = option;
        } else {
            keep(*option, word.substr(end + 1));
        }
    }

    void splitAt(std::size_t end) {
        place_.value = optionNamed(place_.command, place_.typed.substr(0, end));
        place_.fixed = place_.typed.substr(0, end + 1);
        place_.typed.erase(0, end + 1);
    }

    CommandPlace place_;
    const CLI::Option* pending_ = nullptr;
    std::size_t argumentCount_ = 0;
    bool optionsHaveEnded_ = false;
};

}  // namespace

CommandPlace commandPlace(const CLI::App& root, const std::vector<std::string>& words) {
    Reader reader(root);
    if (words.empty()) return reader.placeOf("");
    std::for_each(words.begin(), words.end() - 1, [&](const std::string& word) { reader.read(word); });
    return reader.placeOf(words.back());
}

// The parser's help leaves out what is in no group.
std::vector<const CLI::App*> shownCommands(const CLI::App& command) {
    return command.get_subcommands([](const CLI::App* below) { return !below->get_group().empty(); });
}

}  // namespace corvane
