#include "output_file.h"

#include <random>
#include <vector>

#include "standard_output.h"
#include "util/console.h"
#include "util/os_file.h"

namespace zentor_cli {

namespace os = zentor::os;

namespace {

constexpr std::uint32_t kPieceSize = 0x100000;

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of(os::kPathSeparators);
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

os::PathKind KindOf(const std::string& path) {
    os::PathKind kind = os::PathKind::kNone;
    os::GetPathKind(path, kind);
    return kind;
}

std::string NameBeside(const std::string& path) {
    std::random_device random;
    return FolderOf(path) + "zentor-" + std::to_string(random()) + ".part";
}

}  // namespace

std::string DefaultOutputName(const std::string& inputPath) {
    const std::string name = inputPath.substr(FolderOf(inputPath).size());
    return name.substr(0, name.rfind('.')) + ".vkjson";
}

void CheckOutputPath(Library& library, const std::string& path, bool force) {
    const std::string folder = FolderOf(path);
    if (!folder.empty() && KindOf(folder) != os::PathKind::kFolder) {
        library.Fail(ZT_OUTPUT_FOLDER, "$$$/ZTError/DirectoryDoesNotExists=VKJSON output directory does not exists.");
    }
    const os::PathKind kind = KindOf(path);
    if (kind == os::PathKind::kFolder || kind == os::PathKind::kOther) throw LibraryFailure(path + " is not a file");
    if (kind == os::PathKind::kFile && !force) throw LibraryFailure(path + " exists already; --force replaces it");
}

void SaveWhole(Library& library, Stream& stream, const std::string& inputPath, const std::string& path, bool force) {
    bool isInput = false;
    os::IsSameFile(inputPath, path, isInput);
    if (isInput) {
        library.Check(stream->SaveTo(path.c_str()));
        return;
    }
    const std::string part = NameBeside(path);
    library.Check(stream->SaveTo(part.c_str()));
    // A file that has come into being meanwhile is not replaced either, unless it may be.
    const os::Status moved = force ? os::ReplaceFileBy(part, path) : os::MoveFileTo(part, path);
    if (moved == os::Status::kOk) return;
    os::DeleteFileAt(part);
    throw LibraryFailure(
        path + (moved == os::Status::kExists ? " exists already; --force replaces it" : " cannot be put in its place"));
}

void WriteToStandardOutput(Library& library, Stream& stream) {
    os::SetBinaryOutput();
    std::vector<char> piece(kPieceSize);
    while (stream->Remaining() != 0) {
        const std::uint32_t got = stream->Read(piece.data(), &kPieceSize);
        if (got == 0) library.Check(ZT_FILE_READ);
        WriteOutput({piece.data(), got});
    }
    FlushOutput();
}

}  // namespace zentor_cli
