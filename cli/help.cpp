#include "help.h"

#include <algorithm>
#include <vector>

namespace zentor_cli {

namespace {

struct Example {
    const char* command;
    const char* line;
    const char* meaning;
};

constexpr Example kExamples[] = {
    {"formats", "zentor formats", "what can be converted"},
    {"plugins", "zentor plugins --load", "loads each plug-in, and says why one fails"},
    {"convert", "zentor convert run.csv", "makes run.vkjson here, and reads it back to check it"},
    {"convert", "zentor convert run.csv --faithful", "keeps every text and every digit"},
    {"convert", "zentor convert *.bvh -o takes --jobs 4 --keep-going", "a folder of captures, four at once"},
    {"convert", "sensor-log | zentor convert - --format csv -o - | jq .", "from and to a pipe"},
    {"convert", "zentor convert notes.log --as tsv", "by a converter that the extension does not tell"},
    {"info", "zentor info run.vkjson", "versions, time mode, numbers of nodes and samples, time span"},
    {"tree", "zentor tree walk.bvh '[0]'", "the first joint and what is below it"},
    {"get", "zentor get run.vkjson '[1][0]'", "one node in full"},
    {"get", "zentor get run.vkjson '[\"data1\"][\"data2\"]' --json", "the same by match names, for programs"},
    {"samples", "zentor samples walk.bvh Hips/ROTATION --from 0 --to 1.5", "the first second and a half"},
    {"samples", "zentor samples walk.bvh '[0][2]' --at 00:00:04:12 --format csv", "the latest sample at a time code"},
    {"validate", "zentor validate *.vkjson", "a line each: ok, or the first fault with its byte offset"},
    {"help", "zentor help convert", "the options and examples of a command"},
};

struct Status {
    const char* value;
    const char* meaning;
};

constexpr Status kStatuses[] = {
    {"0", "all went well"},
    {"1", "the library reported a failure, which is on standard error; of several inputs, at least one failed"},
    {"2", "the arguments are wrong"},
};

std::vector<const CLI::App*> CommandsOf(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App*) { return true; });
}

// Those that people see.
std::vector<const CLI::Option*> OptionsOf(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return !option->get_group().empty(); });
}

bool TakesValue(const CLI::Option& option) { return option.get_items_expected_max() != 0; }

// "-o, --output TEXT", or the name of an argument.
std::string NamesOf(const CLI::Option& option) {
    if (option.get_positional()) return option.get_name(true);
    std::string names;
    for (const std::string& name : option.get_snames()) names += (names.empty() ? "-" : ", -") + name;
    for (const std::string& name : option.get_lnames()) names += (names.empty() ? "--" : ", --") + name;
    return TakesValue(option) ? names + " VALUE" : names;
}

std::string UsageOf(const CLI::App& command) {
    std::string usage = "zentor " + command.get_name() + " [OPTION]...";
    for (const CLI::Option* option : OptionsOf(command)) {
        if (!option->get_positional()) continue;
        const std::string name = option->get_name(true) + (option->get_expected_max() > 1 ? "..." : "");
        usage += option->get_required() ? " " + name : " [" + name + "]";
    }
    return usage;
}

std::string Line(const std::string& left, const std::string& right) {
    constexpr std::size_t kColumn = 30;
    std::string line = "  " + left;
    if (line.size() + 2 > kColumn) return line + "\n" + std::string(kColumn, ' ') + right + "\n";
    line.resize(kColumn, ' ');
    return line + right + "\n";
}

std::string OptionLines(const CLI::App& app) {
    std::string lines;
    for (const CLI::Option* option : OptionsOf(app)) lines += Line(NamesOf(*option), option->get_description());
    return lines;
}

// Of a command, or of all for null.
std::string ExampleLines(const CLI::App* command) {
    std::string lines;
    for (const Example& example : kExamples) {
        if (command != nullptr && command->get_name() != example.command) continue;
        lines += std::string("  ") + example.line + "\n      " + example.meaning + "\n";
    }
    return lines;
}

std::string StatusLines() {
    std::string lines;
    for (const Status& status : kStatuses) lines += Line(status.value, status.meaning);
    return lines;
}

// A text for roff: hyphens that are copied as such, and no line that begins as a request does.
std::string Roff(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (escaped.empty() && (c == '.' || c == '\'')) escaped += "\\&";
        if (c == '\\') {
            escaped += "\\e";
        } else if (c == '-') {
            escaped += "\\-";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string RoffOptions(const CLI::App& app) {
    std::string page;
    for (const CLI::Option* option : OptionsOf(app)) {
        page += ".TP\n.B " + Roff(NamesOf(*option)) + "\n" + Roff(option->get_description()) + "\n";
    }
    return page;
}

// The names of a command's options, with a blank between two of them.
std::string FlagsOf(const CLI::App& app) {
    std::string flags;
    for (const CLI::Option* option : OptionsOf(app)) {
        for (const std::string& name : option->get_lnames()) flags += (flags.empty() ? "--" : " --") + name;
    }
    return flags;
}

std::string NamesOfCommands(const CLI::App& app) {
    std::string names;
    for (const CLI::App* command : CommandsOf(app)) names += (names.empty() ? "" : " ") + command->get_name();
    return names;
}

std::string BashScript(const CLI::App& app) {
    std::string script =
        "# Completion of the command zentor for bash.\n"
        "_zentor() {\n"
        "    local word=${COMP_WORDS[COMP_CWORD]} command= k\n"
        "    for ((k = 1; k < COMP_CWORD; ++k)); do\n"
        "        case ${COMP_WORDS[k]} in\n"
        "            -*) ;;\n"
        "            *) command=${COMP_WORDS[k]}; break ;;\n"
        "        esac\n"
        "    done\n"
        "    local options=\"" +
        FlagsOf(app) +
        "\"\n"
        "    case $command in\n"
        "        '') [[ $word == -* ]] || { mapfile -t COMPREPLY < <(compgen -W \"" +
        NamesOfCommands(app) +
        "\" -- \"$word\"); return; } ;;\n"
        "        help) mapfile -t COMPREPLY < <(compgen -W \"" +
        NamesOfCommands(app) + "\" -- \"$word\"); return ;;\n";
    for (const CLI::App* command : CommandsOf(app)) {
        script += "        " + command->get_name() + ") options+=\" " + FlagsOf(*command) + "\" ;;\n";
    }
    return script +
           "    esac\n"
           "    if [[ $word == -* ]]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$word\")\n"
           "    else\n"
           "        mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n"
           "        compopt -o filenames\n"
           "    fi\n"
           "}\n"
           "complete -F _zentor zentor\n";
}

// In single quotes, as zsh and fish take it.
std::string Quoted(std::string text, const char* quote) {
    for (std::size_t at = 0; (at = text.find('\'', at)) != std::string::npos; at += std::string(quote).size()) {
        text.replace(at, 1, quote);
    }
    return '\'' + text + '\'';
}

std::string ZshScript(const CLI::App& app) {
    const auto lines = [](const CLI::App& of) {
        std::string text;
        for (const CLI::Option* option : OptionsOf(of)) {
            std::string meaning = option->get_description();
            std::replace(meaning.begin(), meaning.end(), '[', '(');
            std::replace(meaning.begin(), meaning.end(), ']', ')');
            std::replace(meaning.begin(), meaning.end(), ':', ' ');
            for (const std::string& name : option->get_lnames()) {
                std::string argument = "--";
                argument.append(name).append("[").append(meaning).append(TakesValue(*option) ? "]:value:" : "]");
                text.append("        ").append(Quoted(argument, "'\\''")).append("\n");
            }
        }
        return text;
    };
    std::string script =
        "#compdef zentor\n"
        "_zentor() {\n"
        "    local -a common commands options\n"
        "    common=(\n" +
        lines(app) +
        "    )\n"
        "    commands=(\n";
    for (const CLI::App* command : CommandsOf(app)) {
        script += "        " + Quoted(command->get_name() + ":" + command->get_description(), "'\\''") + "\n";
    }
    script +=
        "    )\n"
        "    local command=${${words[2,CURRENT-1]:#-*}[1]}\n"
        "    if [[ -z $command ]]; then\n"
        "        _arguments $common '*:: :->commands'\n"
        "        _describe command commands\n"
        "        return\n"
        "    fi\n"
        "    case $command in\n"
        "        help) _describe command commands; return ;;\n";
    for (const CLI::App* command : CommandsOf(app)) {
        script += "        " + command->get_name() + ") options=(\n" + lines(*command) + "        ) ;;\n";
    }
    return script +
           "    esac\n"
           "    _arguments $common $options '*:file:_files'\n"
           "}\n"
           "_zentor \"$@\"\n";
}

std::string FishScript(const CLI::App& app) {
    const auto lines = [](const CLI::App& of, const std::string& condition) {
        std::string text;
        for (const CLI::Option* option : OptionsOf(of)) {
            for (const std::string& name : option->get_lnames()) {
                text.append("complete -c zentor").append(condition).append(" -l ").append(name);
                text.append(TakesValue(*option) ? " -r -d " : " -d ");
                text.append(Quoted(option->get_description(), "\\'")).append("\n");
            }
        }
        return text;
    };
    std::string script = "# Completion of the command zentor for fish.\n" + lines(app, "");
    for (const CLI::App* command : CommandsOf(app)) {
        script += "complete -c zentor -f -n __fish_use_subcommand -a " + command->get_name() + " -d " +
                  Quoted(command->get_description(), "\\'") + "\n" +
                  lines(*command, " -n '__fish_seen_subcommand_from " + command->get_name() + "'");
    }
    return script;
}

}  // namespace

std::string HelpText(const CLI::App& app, const CLI::App* command) {
    std::string text;
    if (command == nullptr) {
        text = app.get_description() + "\n\nUsage: zentor COMMAND [OPTION]... [ARGUMENT]...\n\nCommands:\n";
        for (const CLI::App* one : CommandsOf(app)) text += Line(one->get_name(), one->get_description());
    } else {
        text = command->get_description() + ".\n\nUsage: " + UsageOf(*command) + "\n\n" + OptionLines(*command);
    }
    text += "\nWith every command:\n" + OptionLines(app);
    return text + "\nExamples:\n" + ExampleLines(command) + "\nExit status:\n" + StatusLines();
}

std::string ManPage(const CLI::App& app) {
    std::string page = ".TH ZENTOR 1 \"\" \"zentor " ZENTOR_VERSION "\" \"User Commands\"\n.SH NAME\nzentor \\- " +
                       Roff("turn sensor and motion recordings into vkjson documents and look into them") +
                       "\n.SH SYNOPSIS\n.B zentor\nCOMMAND [OPTION]... [ARGUMENT]...\n.SH DESCRIPTION\n" +
                       Roff(app.get_description()) +
                       "\nWhere a document is read, a recording will do: it is converted on the fly.\n.SH COMMANDS\n";
    for (const CLI::App* command : CommandsOf(app)) {
        page +=
            ".SS " + Roff(UsageOf(*command)) + "\n" + Roff(command->get_description()) + ".\n" + RoffOptions(*command);
    }
    page += ".SH OPTIONS\nThey stand before or after the command.\n" + RoffOptions(app) + ".SH EXIT STATUS\n";
    for (const Status& status : kStatuses) {
        page += ".TP\n.B " + std::string(status.value) + "\n" + Roff(status.meaning) + ".\n";
    }
    page +=
        ".SH ENVIRONMENT\n.TP\n.B ZENTOR_PLUGIN_PATH\nFolders in which plug\\-ins are looked for first.\n"
        ".TP\n.B ZENTOR_TRACE\n1: says on standard error what plug\\-ins tell of their failures.\n.SH EXAMPLES\n";
    for (const Example& example : kExamples) {
        page += ".TP\n.B " + Roff(example.line) + "\n" + Roff(example.meaning) + "\n";
    }
    return page;
}

std::string CompletionScript(const CLI::App& app, const std::string& shell) {
    if (shell == "zsh") return ZshScript(app);
    return shell == "fish" ? FishScript(app) : BashScript(app);
}

}  // namespace zentor_cli
