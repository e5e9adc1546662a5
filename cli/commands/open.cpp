#include "commands/commands.h"
#include "progress.h"

namespace zentor_cli {

std::unique_ptr<Document> OpenShowingProgress(Library& library, const CommonOptions& common, const std::string& path) {
    const Progress progress("reading " + path, common.quiet);
    return std::make_unique<Document>(library, path);
}

}  // namespace zentor_cli
