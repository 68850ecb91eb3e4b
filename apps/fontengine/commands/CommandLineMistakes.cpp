#include "commands/CommandLineMistakes.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace Vell::Tool {

namespace {

constexpr const char* endOfOptions = "--";

/// After `--`, every word is an argument.
bool isOption(const std::string& word, const std::vector<std::string>& words) {
    const auto end = std::find(words.begin(), words.end(), endOfOptions);
    return word.size() > 1 && word.front() == '-' && std::find(words.begin(), end, word) != end;
}

std::string describeMissingCommand(const std::vector<std::string>& words) {
    const char* const advice = "'fontengine --help' lists the commands";
    if (words.empty()) {
        return fmt::format("a command is missing: {}", advice);
    }
    if (words.front() == endOfOptions) {
        return words.size() == 1
                   ? fmt::format("a command is missing before '--': {}", advice)
                   : fmt::format("a command must come before '--', not '{}' after it", words[1]);
    }
    return fmt::format("unknown {} '{}': {}", isOption(words.front(), words) ? "option" : "command",
                       words.front(), advice);
}

std::optional<std::string> describeUnknownWord(const CLI::App& app, const CLI::App& command,
                                               const std::vector<std::string>& words) {
    for (const std::string& word : app.remaining(true)) {
        if (word != endOfOptions) {
            return isOption(word, words)
                       ? fmt::format("'{}' has no option '{}'", command.get_name(), word)
                       : fmt::format("'{}' takes no further argument: '{}'", command.get_name(), word);
        }
    }
    return std::nullopt;
}

std::optional<std::string> describeRepeatedOption(const CLI::App& command) {
    for (const CLI::Option* option : command.get_options()) {
        if (option->count() > 1) {
            return fmt::format("{} is given more than once: '{}' and '{}'", option->get_name(),
                               option->results()[0], option->results()[1]);
        }
    }
    return std::nullopt;
}

std::optional<std::string> describeMissingOption(const CLI::App& command) {
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_required() && option->count() == 0) {
            const std::string value = option->get_positional() ? "" : " " + option->get_type_name();
            return fmt::format("'{}' needs {}{}", command.get_name(), option->get_name(), value);
        }
    }
    return std::nullopt;
}

/// CLI11 puts the name of the option before a colon.
std::optional<std::string> describeMissingValue(const CLI::ParseError& error) {
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) == nullptr) {
        return std::nullopt;
    }
    const std::string text = error.what();
    return text.substr(0, text.find(':')) + " needs a value";
}

} // namespace

std::string describeMistake(const CLI::App& app, const CLI::ParseError& error,
                            const std::vector<std::string>& words) {
    const auto commands = app.get_subcommands();
    if (commands.empty()) {
        return describeMissingCommand(words);
    }
    // A mistyped word is often the reason why something else is missing, so it comes first.
    for (const auto& mistake :
         {describeUnknownWord(app, *commands.front(), words), describeRepeatedOption(*commands.front()),
          describeMissingValue(error), describeMissingOption(*commands.front())}) {
        if (mistake) {
            return *mistake;
        }
    }
    return error.what();
}

} // namespace Vell::Tool
