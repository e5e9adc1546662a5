#include "files/placed_file.h"

#include <charconv>
#include <random>
#include <string_view>

#include "errors/exception.h"
#include "errors/last_exception.h"
#include "errors/raise.h"
#include "files/file_io.h"
#include "format/words.h"

namespace zentor {

namespace {

constexpr int kAttempts = 100;

[[noreturn]] void RefuseTarget() { Raise(kCreateFile, Quoted("File_IO::Create")); }

// Exchanging files goes by their folder's permissions alone; a file that is protected itself is not to be replaced.
void CheckWritable(const std::string& path) {
    FileHandle file = kNoFile;
    if (os::OpenFile(path, true, Access::kReadWrite, file) != os::Status::kOk) RefuseTarget();
    os::CloseFile(file);
}

std::string UniqueName() {
    std::random_device random;
    const std::uint64_t number = (std::uint64_t{random()} << 32) | random();
    char digits[16];
    const char* const end = std::to_chars(digits, std::end(digits), number, 16).ptr;
    return "ZTT" + std::string(static_cast<const char*>(digits), end) + "." + std::string(words::kExtension);
}

std::string PathIn(const std::string& folder, const std::string& name) {
    const std::string_view separators = os::kPathSeparators;
    const bool isSeparated = !folder.empty() && separators.find(folder.back()) != std::string_view::npos;
    return isSeparated ? folder + name : folder + separators.back() + name;
}

}  // namespace

std::string CheckTarget(const std::string& target, bool isNew) {
    const std::size_t separator = target.find_last_of(os::kPathSeparators);
    // The separator stays: the folder may be the root.
    std::string folder = target.substr(0, separator == std::string::npos ? 0 : separator + 1);
    if (File_IO::GetFileMode(folder) != PathKind::kFolder) Raise(kDirectoryDoesNotExist);
    const PathKind kind = File_IO::GetFileMode(target);
    if (kind == PathKind::kFile) {
        if (isNew) RefuseTarget();
        CheckWritable(target);
    } else if (kind != PathKind::kNone) {
        Raise(kNotAFile, Quoted("File_IO::Create"));
    }
    return folder;
}

std::string CreateUniqueFile(const std::string& folder) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        std::string path = PathIn(folder, UniqueName());
        try {
            if (File_IO::Create(path, {.exclusive = true, .ownerOnly = true})) return path;
        } catch (const ns_sensor::ZT_Exception&) {
            break;
        }
    }
    Raise(kTempFile, Quoted("File_IO::GetTempFile"));
}

PlacedFile::PlacedFile(std::string target, bool isNew)
    : target_(std::move(target)), isNew_(isNew), path_(CreateUniqueFile(CheckTarget(target_, isNew))) {}

void PlacedFile::Place() {
    if (File_IO::GetFileMode(target_) == PathKind::kNone) {
        os::GiveUsualPermissions(path_);
        File_IO::Rename(path_, target_);
    } else if (isNew_) {
        RefuseTarget();  // it has come meanwhile
    } else {
        os::CopyPermissions(target_, path_);
        File_IO::Sync(path_);  // before what was there can go
        File_IO::Exchange(target_, path_);
        replacedPath_.swap(path_);
    }
    path_.swap(target_);  // nothing can fail once the files have changed places
}

void PlacedFile::Keep() noexcept {
    isKept_ = true;
    if (!replacedPath_.empty()) DeleteQuietly(replacedPath_);
}

PlacedFile::~PlacedFile() {
    if (isKept_) return;
    const auto failure = GetLastException();  // the one that is being reported
    try {
        if (!replacedPath_.empty()) {
            File_IO::Exchange(path_, replacedPath_);
            path_.swap(replacedPath_);
        }
        DeleteQuietly(path_);
    } catch (...) {
        // Both stay where they are rather than that the one that was there before is lost.
        if (failure) SetLastException(*failure);
    }
}

}  // namespace zentor
