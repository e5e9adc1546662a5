#include "standard_input.h"

#include <memory>
#include <utility>
#include <vector>

#include "library.h"
#include "util/console.h"
#include "util/os_file.h"

namespace zentor_cli {

namespace os = zentor::os;

namespace {

void Require(os::Status status) {
    if (status == os::Status::kDiskFull) throw LibraryFailure("no room for standard input in the temporary folder");
    if (status != os::Status::kOk) throw LibraryFailure("standard input cannot be kept in the temporary folder");
}

void CopyInput(const std::string& path) {
    constexpr std::size_t kPiece = 0x100000;
    os::FileHandle file = os::kNoFile;
    Require(os::OpenFile(path, false, os::Access::kReadWrite, file));
    const std::unique_ptr<os::FileHandle, void (*)(os::FileHandle*)> closer(
        &file, [](os::FileHandle* open) { os::CloseFile(*open); });
    std::vector<char> piece(kPiece);
    for (std::size_t got = 0; os::ReadInput(piece.data(), piece.size(), got) && got != 0;) {
        if (os::IsStopWanted()) throw Stopped();
        std::size_t done = 0;
        Require(os::WriteToFile(file, piece.data(), got, done));
        if (done != got) Require(os::Status::kDiskFull);
    }
}

}  // namespace

StandardInput::StandardInput(const std::string& extension) {
    std::string folder;
    Require(os::TempFolder(folder));
    Require(os::CreateTempFile(folder, name_));
    try {
        std::string path = name_ + '.' + extension;
        Require(os::CreateEmptyFile(path, {.exclusive = true, .ownerOnly = true}));
        path_ = std::move(path);  // from here on it is ours
        CopyInput(path_);
    } catch (...) {
        if (!path_.empty()) os::DeleteFileAt(path_);
        os::DeleteFileAt(name_);
        throw;
    }
}

StandardInput::~StandardInput() {
    os::DeleteFileAt(path_);
    os::DeleteFileAt(name_);
}

}  // namespace zentor_cli
