#include "output_file.h"

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

bool IsSameFile(const std::string& left, const std::string& right) {
    bool isSame = false;
    os::IsSameFile(left, right, isSame);
    return isSame;
}

bool IsDocument(const std::string& path) { return path.ends_with(".vkjson"); }

std::uint64_t SizeOf(const std::string& path) {
    os::FileHandle file = os::kNoFile;
    std::uint64_t size = 0;
    if (os::OpenFile(path, true, os::Access::kRead, file) == os::Status::kOk) {
        os::GetFileLength(file, size);
        os::CloseFile(file);
    }
    return size;
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

std::uint64_t SaveDocument(Library& library, const std::string& inputPath, const std::string& path) {
    ISensorFileHandler* handler = nullptr;
    // Onto itself nothing is put, and the library is not to mind that there is something.
    const char* const output = IsSameFile(inputPath, path) && IsDocument(path) ? nullptr : path.c_str();
    library.Check(library.manager().OpenFile(&handler, inputPath.c_str(), output));
    if (handler != nullptr) library.Check(library.manager().CloseFile(&handler));
    return SizeOf(path);
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
