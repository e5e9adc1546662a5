// Help, the manual page and completions for shells: all made from what the parser knows of the arguments, and one table
// of examples.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace zentor_cli {

// What a command does, its arguments, examples and exit statuses; the whole program's for null.
std::string HelpText(const CLI::App& app, const CLI::App* command);

// The manual page of the program, with all commands, for man.
std::string ManPage(const CLI::App& app);

// The script that lets a shell complete arguments: "bash", "zsh" or "fish".
std::string CompletionScript(const CLI::App& app, const std::string& shell);

}  // namespace zentor_cli
