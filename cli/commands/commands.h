// The commands. Each throws LibraryFailure, or WrongUsage.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "document.h"

namespace zentor_cli {

// What stands before or after every command.
struct CommonOptions {
    bool json = false;
    bool quiet = false;
    std::string locale = "en_US";
    bool privateCopy = false;
    bool faithful = false;
    std::string converter;                // by whom inputs are converted; empty: who they belong to
    std::vector<std::string> parameters;  // for it, "key=value"
};

struct ConvertOptions {
    std::vector<std::string> inputs;  // "-": standard input
    std::string output;  // empty: the input's name with ".vkjson", in the current folder; "-": standard output
    std::string format;  // of standard input: an extension
    bool force = false;
    bool noValidate = false;
    bool keepGoing = false;
    unsigned jobs = 1;
};

struct SamplesOptions {
    std::optional<std::string> from;
    std::optional<std::string> to;
    std::optional<std::string> at;
    std::optional<std::string> format;  // "text", "csv" or "json"
};

void RunFormats(Library& library, const CommonOptions& common);
// Whether all modules can be used, as far as that was looked for: `load`, by loading them.
bool RunPlugins(Library& library, const CommonOptions& common, bool load);
// Whether all inputs have been converted; what failed has been said.
bool RunConvert(Library& library, const CommonOptions& common, const ConvertOptions& options);
void RunInfo(Library& library, const CommonOptions& common, const std::string& path);
// Nodes are named by data paths or by display names. `node`: whose children to show; empty: the whole outline.
void RunTree(Library& library, const CommonOptions& common, const std::string& path, const std::string& node);
void RunGet(Library& library, const CommonOptions& common, const std::string& path, const std::string& node);
void RunSamples(Library& library, const CommonOptions& common, const std::string& path, const std::string& node,
                const SamplesOptions& options);
// Whether all documents are good.
bool RunValidate(Library& library, const CommonOptions& common, const std::vector<std::string>& paths);

// Opens a document, or converts a supported file and opens the result.
std::unique_ptr<Document> OpenShowingProgress(Library& library, const CommonOptions& common, const std::string& path);

}  // namespace zentor_cli
