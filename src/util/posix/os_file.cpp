#include "util/os_file.h"

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <memory>

namespace zentor::os {

const char* const kPathSeparators = "/";

struct Folder {
    DIR* stream;
    std::string path;
};

namespace {

Status FromErrno() {
    switch (errno) {
        case ENOENT:
        case ENOTDIR:
            return Status::kNotFound;
        case EEXIST:
            return Status::kExists;
        case EACCES:
        case EPERM:
        case EROFS:
        case ETXTBSY:
            return Status::kDenied;
        case ENOSPC:
        case EDQUOT:
            return Status::kDiskFull;
        case EINVAL:  // a flag that the file system does not know
        case ENOSYS:
        case EOPNOTSUPP:
            return Status::kNotSupported;
        default:
            return Status::kFailed;
    }
}

Status Check(bool succeeded) { return succeeded ? Status::kOk : FromErrno(); }

int Descriptor(FileHandle file) { return static_cast<int>(file); }

PathKind KindOf(mode_t mode) {
    if (S_ISREG(mode)) return PathKind::kFile;
    return S_ISDIR(mode) ? PathKind::kFolder : PathKind::kOther;
}

// Opens without waiting for a pipe's other end, and takes nothing but regular files.
int OpenRegular(const std::string& path, int flags, mode_t mode) {
    const int descriptor = open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, mode);
    struct stat info;
    if (descriptor >= 0 && (fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode))) {
        close(descriptor);
        errno = EINVAL;
        return -1;
    }
    return descriptor;
}

}  // namespace

Status GetPathKind(const std::string& path, PathKind& kind) {
    struct stat info;
    kind = PathKind::kNone;
    if (stat(path.c_str(), &info) == 0) kind = KindOf(info.st_mode);
    return Status::kOk;
}

Status AbsolutePath(const std::string& path, std::string& absolute) {
    absolute = path;
    if (path.starts_with('/')) return Status::kOk;
    const std::unique_ptr<char, decltype(&free)> current(getcwd(nullptr, 0), &free);
    if (!current) return Status::kBadPath;
    absolute = std::string(current.get()) + "/" + path;
    return Status::kOk;
}

Status ResolveLinks(const std::string& path, std::string& resolved) {
    const std::unique_ptr<char, decltype(&free)> real(realpath(path.c_str(), nullptr), &free);
    resolved = real ? real.get() : path;
    return Status::kOk;
}

void CopyPermissions(const std::string& from, const std::string& to) {
    struct stat info;
    if (stat(from.c_str(), &info) != 0) return;
    // Only the owner of both can give one away, or an administrator; and that takes special bits from the mode.
    if (chown(to.c_str(), info.st_uid, info.st_gid) != 0 &&
        chown(to.c_str(), static_cast<uid_t>(-1), info.st_gid) != 0) {
        info.st_mode &= ~static_cast<mode_t>(S_IRWXG);  // they were for another group
    }
    chmod(to.c_str(), info.st_mode & 07777);
}

// The process's mask cannot be read without changing it for all threads, and a folder can have rules of its own: so a
// file without a name is asked what it got.
void GiveUsualPermissions(const std::string& path) {
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    const int probe = open(folder.empty() ? "." : folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    struct stat info;
    const bool isKnown = probe >= 0 && fstat(probe, &info) == 0;
    if (probe >= 0) close(probe);
    if (isKnown) {
        chmod(path.c_str(), info.st_mode & 0777);
        return;
    }
    const std::string other = path + ".probe";
    const int named = open(other.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (named < 0) return;
    if (fstat(named, &info) == 0) chmod(path.c_str(), info.st_mode & 0777);
    close(named);
    unlink(other.c_str());
}

Status GetFileIdentity(const std::string& path, FileIdentity& identity) {
    constexpr std::uint64_t kNanoseconds = 1000000000;
    struct statx info;
    if (statx(AT_FDCWD, path.c_str(), 0, STATX_INO | STATX_BTIME, &info) == 0) {
        identity = {makedev(info.stx_dev_major, info.stx_dev_minor), info.stx_ino, 0};
        if ((info.stx_mask & STATX_BTIME) == 0) return Status::kOk;
        identity.made = static_cast<std::uint64_t>(info.stx_btime.tv_sec) * kNanoseconds + info.stx_btime.tv_nsec;
        return Status::kOk;
    }
    if (errno != ENOSYS && errno != EPERM) return FromErrno();
    struct stat basic;  // an older system, or a sandbox of another time
    if (stat(path.c_str(), &basic) != 0) return FromErrno();
    identity = {basic.st_dev, basic.st_ino, 0};
    return Status::kOk;
}

Status IsSameFile(const std::string& a, const std::string& b, bool& same) {
    FileIdentity first;
    FileIdentity second;
    same = GetFileIdentity(a, first) == Status::kOk && GetFileIdentity(b, second) == Status::kOk && first == second;
    return Status::kOk;
}

Status CreateEmptyFile(const std::string& path, CreateOptions options) {
    const mode_t mode = options.ownerOnly ? 0600 : 0666;
    // First as a new file: then it is known whose it is when something fails.
    const int made = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (made >= 0) {
        if (close(made) == 0) return Status::kOk;
        const Status status = FromErrno();
        unlink(path.c_str());
        return status;
    }
    if (errno != EEXIST || options.exclusive) return FromErrno();
    const int descriptor = OpenRegular(path, O_RDWR | O_CREAT | O_TRUNC, mode);
    return Check(descriptor >= 0 && close(descriptor) == 0);
}

Status OpenFile(const std::string& path, bool, Access access, FileHandle& file) {
    constexpr int kFlags[] = {O_RDONLY, O_RDWR, O_RDWR | O_APPEND};
    const int descriptor = OpenRegular(path, kFlags[static_cast<int>(access)], 0);
    file = descriptor < 0 ? kNoFile : static_cast<FileHandle>(descriptor);
    return Check(descriptor >= 0);
}

Status CloseFile(FileHandle file) { return Check(close(Descriptor(file)) == 0); }

Status DeleteFileAt(const std::string& path) { return Check(unlink(path.c_str()) == 0); }

Status MoveFileTo(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return Status::kOk;
    if (FromErrno() != Status::kNotSupported) return FromErrno();
    // A file system without this operation: a second name and the first one gone come closest. Without second names
    // either, only the moment between the look and the renaming is open to others.
    if (link(from.c_str(), to.c_str()) == 0) return Check(unlink(from.c_str()) == 0);
    if (errno != EPERM && FromErrno() != Status::kNotSupported) return FromErrno();
    struct stat info;
    if (lstat(to.c_str(), &info) == 0) return Status::kExists;
    return Check(rename(from.c_str(), to.c_str()) == 0);
}

Status ExchangeFiles(const std::string& a, const std::string& b) {
    return Check(renameat2(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str(), RENAME_EXCHANGE) == 0);
}

Status SyncFile(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return FromErrno();
    const Status status = Check(fsync(descriptor) == 0);
    close(descriptor);
    return status;
}

Status SeekFile(FileHandle file, std::int64_t offset, SeekMode mode, std::uint64_t& position) {
    constexpr int kOrigins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    const off_t reached = lseek(Descriptor(file), offset, kOrigins[static_cast<int>(mode)]);
    position = static_cast<std::uint64_t>(reached);
    return Check(reached >= 0);
}

Status ReadFromFile(FileHandle file, void* buffer, std::size_t count, std::size_t& done) {
    ssize_t got = 0;
    do {
        got = read(Descriptor(file), buffer, count);
    } while (got < 0 && errno == EINTR);
    done = got < 0 ? 0 : static_cast<std::size_t>(got);
    return Check(got >= 0);
}

Status WriteToFile(FileHandle file, const void* buffer, std::size_t count, std::size_t& done) {
    // A write may stop early without being finished: only the next call tells why.
    for (done = 0; done < count;) {
        const ssize_t put = write(Descriptor(file), static_cast<const char*>(buffer) + done, count - done);
        if (put < 0 && errno != EINTR) return FromErrno();
        if (put > 0) done += static_cast<std::size_t>(put);
    }
    return Status::kOk;
}

Status EndFileHere(FileHandle file) {
    const off_t here = lseek(Descriptor(file), 0, SEEK_CUR);
    return Check(here >= 0 && ftruncate(Descriptor(file), here) == 0);
}

Status GetFileLength(FileHandle file, std::uint64_t& length) {
    struct stat info;
    const bool known = fstat(Descriptor(file), &info) == 0;
    length = known ? static_cast<std::uint64_t>(info.st_size) : 0;
    return Check(known);
}

Status GetFileSize(const std::string& path, std::uint64_t& size) {
    struct stat info;
    if (stat(path.c_str(), &info) != 0) return FromErrno();
    size = static_cast<std::uint64_t>(info.st_size);
    return Status::kOk;
}

Status TempFolder(std::string& path) {
    const char* chosen = getenv("TMPDIR");
    path = chosen != nullptr && *chosen == '/' ? chosen : "/tmp";
    PathKind kind;
    GetPathKind(path, kind);
    return kind == PathKind::kFolder ? Status::kOk : Status::kNotFound;
}

Status CreateTempFile(const std::string& folder, std::string& path) {
    path = folder + "/ZTTXXXXXX";
    const int descriptor = mkostemp(path.data(), O_CLOEXEC);
    if (descriptor < 0) return FromErrno();
    if (close(descriptor) == 0) return Status::kOk;
    const Status status = FromErrno();
    unlink(path.c_str());
    return status;
}

Status OpenTempFile(const std::string& folder, FileHandle& file) {
    int descriptor = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC | O_EXCL, 0600);
    if (descriptor < 0) {  // not on every file system
        std::string path = folder + "/ZTTXXXXXX";
        descriptor = mkostemp(path.data(), O_CLOEXEC);
        if (descriptor >= 0) unlink(path.c_str());
    }
    file = descriptor < 0 ? kNoFile : static_cast<FileHandle>(descriptor);
    return Check(descriptor >= 0);
}

Status OpenFolder(const std::string& path, Folder*& folder) {
    folder = nullptr;
    auto opened = std::make_unique<Folder>(Folder{nullptr, path});
    opened->stream = opendir(path.c_str());
    if (opened->stream == nullptr) return FromErrno();
    folder = opened.release();
    return Status::kOk;
}

Status NextEntry(Folder* folder, std::string& name, PathKind& kind) {
    do {
        errno = 0;
        const dirent* entry = readdir(folder->stream);
        if (entry == nullptr) return errno == 0 ? Status::kNotFound : FromErrno();
        name = entry->d_name;
    } while (name == "." || name == "..");
    return GetPathKind(folder->path + "/" + name, kind);
}

Status CloseFolder(Folder* folder) {
    const std::unique_ptr<Folder> owned(folder);
    return Check(closedir(folder->stream) == 0);
}

}  // namespace zentor::os
