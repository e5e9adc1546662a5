#include "entry/open_files.h"

#include <algorithm>

#include "conversion/document_copy.h"
#include "errors/call_scope.h"
#include "errors/notices.h"
#include "errors/progress.h"
#include "errors/raise.h"
#include "files/file_io.h"
#include "util/path_text.h"

namespace zentor {

namespace {

// A document that is open, and put at its output until that is kept. The handler goes first: it has mapped the output.
struct OpenedDocument {
    std::unique_ptr<PlacedFile> placed;
    std::unique_ptr<SensorFileHandlerImpl> handler;
};

OpenedDocument OpenDocument(const InputFile& input, const std::string& outputPath, const OpenOptions& options) {
    PreparedDocument document = PrepareInput(input, outputPath, options.conversion);
    const bool isConverted = document.IsConverted();
    if (document.placed) document.Place();  // before it is mapped: a mapped file cannot be renamed everywhere
    BeginStep(isConverted ? kDocumentMade : 0, 1, File_IO::SizeOf(document.record->documentPath));
    OpenedDocument opened;
    opened.placed = std::move(document.placed);
    opened.handler = std::make_unique<SensorFileHandlerImpl>(input.path, std::move(document.record), options.read);
    if (!isConverted && !outputPath.empty() && !File_IO::IsSameFile(input.path, outputPath)) {
        opened.placed = CopyBeside(input.path, outputPath, options.conversion.newOutput);
        opened.placed->Place();
    }
    return opened;
}

bool IsAmong(const std::multiset<std::string>& paths, const std::string& path) {
    return std::any_of(paths.begin(), paths.end(),
                       [&](const std::string& other) { return other == path || File_IO::IsSameFile(other, path); });
}

[[noreturn]] void RefuseOutput() { Raise(kCreateFile, Quoted("File_IO::Create")); }

}  // namespace

// An input that is being opened and an output that is being written, while the lock is not held.
class OpenFiles::Reservation {
public:
    Reservation(OpenFiles& files, std::unique_lock<std::mutex>& lock, const FileKey& input,
                const std::string& outputPath)
        : files_(files), lock_(lock), input_(files.inputsAtWork_.insert(input)) {
        try {
            output_ = files.outputsAtWork_.insert(outputPath);
        } catch (...) {
            files.inputsAtWork_.erase(input_);
            throw;
        }
        lock_.unlock();
    }
    ~Reservation() {
        if (!lock_.owns_lock()) lock_.lock();
        files_.inputsAtWork_.erase(input_);
        files_.outputsAtWork_.erase(output_);
        files_.reservationsChanged_.notify_all();
    }
    Reservation(const Reservation&) = delete;
    Reservation& operator=(const Reservation&) = delete;

private:
    OpenFiles& files_;
    std::unique_lock<std::mutex>& lock_;
    std::multiset<FileKey>::iterator input_;
    std::multiset<std::string>::iterator output_;
};

ISensorFileHandler* OpenFiles::Open(const InputFile& input, const std::string& outputPath, const OpenOptions& options) {
    const FileKey key = KeyOfInput(input.path, options.conversion);
    std::unique_lock lock(mutex_);
    WaitForOthers(lock, key, outputPath);
    SensorFileHandlerImpl* const open = TakeOpenOne(key);
    if (open == nullptr) {
        if (!outputPath.empty() && IsOpenDocument(outputPath)) RefuseOutput();
        const Reservation reservation(*this, lock, key, outputPath);
        OpenedDocument opened = OpenDocument(input, outputPath, options);
        FinishProgress();
        DeliverNotices();
        const FileKey document = KeyOfDocument(opened.handler->DocumentPath());
        lock.lock();
        ISensorFileHandler* const handler = Add(key, document, std::move(opened.handler));
        if (opened.placed) opened.placed->Keep();
        return handler;
    }
    if (outputPath.empty() || File_IO::IsSameFile(open->DocumentPath(), outputPath)) return open;
    try {
        if (File_IO::IsSameFile(input.path, outputPath) || IsOpenDocument(outputPath)) RefuseOutput();
        const Reservation reservation(*this, lock, key, outputPath);
        // The input's own bytes, even where the open document was converted from them.
        const auto copy = CopyBeside(input.path, outputPath, options.conversion.newOutput);
        FinishProgress();
        DeliverNotices();
        copy->Place();
        copy->Keep();
    } catch (...) {
        if (lock.owns_lock()) lock.unlock();
        Close(open);
        throw;
    }
    return open;
}

void OpenFiles::Place(const InputFile& input, const std::string& outputPath, const ConversionOptions& options) {
    const FileKey key = KeyOfInput(input.path, options);
    std::unique_lock lock(mutex_);
    WaitForOthers(lock, key, outputPath);
    if (IsOpenDocument(outputPath)) RefuseOutput();
    const Reservation reservation(*this, lock, key, outputPath);
    PreparedDocument document = PrepareInput(input, outputPath, options);
    if (!document.placed) {
        if (File_IO::IsSameFile(input.path, outputPath)) return;
        document.placed = CopyBeside(input.path, outputPath, options.newOutput);
    }
    FinishProgress();
    DeliverNotices();
    document.placed->Place();
    document.placed->Keep();
}

OpenFiles::FileKey OpenFiles::KeyOf(const std::string& path, const std::string& kind) {
    const auto file = File_IO::Identity(path);
    return file ? FileKey{*file, {}, kind} : FileKey{{}, path, kind};
}

// The extension chooses the converter, unless the host does.
OpenFiles::FileKey OpenFiles::KeyOfInput(const std::string& path, const ConversionOptions& options) {
    return KeyOf(path, LowerCaseAscii(ExtensionOf(path)) + '\0' + options.Kind());
}

void OpenFiles::WaitForOthers(std::unique_lock<std::mutex>& lock, const FileKey& input, const std::string& outputPath) {
    const Progress* const progress = Progress::Current();
    // A callback would wait for what is calling it.
    if (progress != nullptr && progress->IsNested() && IsBusy(input, outputPath)) {
        Raise(kInvalidPointer, Quoted("IZentor"));
    }
    reservationsChanged_.wait(lock, [&] { return !IsBusy(input, outputPath); });
}

bool OpenFiles::IsBusy(const FileKey& input, const std::string& outputPath) const {
    if (inputsAtWork_.contains(input)) return true;
    return !outputPath.empty() && IsAmong(outputsAtWork_, outputPath);
}

SensorFileHandlerImpl* OpenFiles::TakeOpenOne(const FileKey& input) {
    const auto [first, last] = entries_.equal_range(input);
    const auto found = std::find_if(first, last, [&](const auto& entry) {
        // The number of a file that is gone may be another's now. Those that can be told by their age cannot.
        return input.file.made != 0 || KeyOf(entry.second.handler->InputPath(), input.kind) == input;
    });
    if (found == last) return nullptr;
    ++found->second.useCount;
    return found->second.handler.get();
}

ISensorFileHandler* OpenFiles::Add(const FileKey& input, const FileKey& document,
                                   std::unique_ptr<SensorFileHandlerImpl> handler) {
    const auto mapped = documents_.insert(document);
    try {
        return entries_.emplace(input, Entry{std::move(handler), 1, mapped})->second.handler.get();
    } catch (...) {
        documents_.erase(mapped);
        throw;
    }
}

bool OpenFiles::IsOpenDocument(const std::string& path) const { return documents_.contains(KeyOfDocument(path)); }

bool OpenFiles::IsOpen(const std::string& path) {
    const std::lock_guard lock(mutex_);
    if (IsOpenDocument(path) || IsAmong(outputsAtWork_, path)) return true;
    const FileKey key = KeyOfDocument(path);
    return std::any_of(inputsAtWork_.begin(), inputsAtWork_.end(),
                       [&](const FileKey& input) { return input.file == key.file && input.path == key.path; });
}

bool OpenFiles::Close(const ISensorFileHandler* handler) {
    std::unique_ptr<SensorFileHandlerImpl> closed;  // goes outside the lock: it unmaps and deletes files
    const std::lock_guard lock(mutex_);
    if (entries_.empty()) Raise(kNoFileOpened);
    // By value: a pointer of somebody else's is never followed.
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const auto& entry) { return entry.second.handler.get() == handler; });
    if (found == entries_.end()) Raise(kInvalidFileHandler);
    // A callback of a query cannot end what is calling it.
    if (found->second.useCount == 1 && CallScope::IsIn(found->second.handler.get())) {
        Raise(kInvalidPointer, Quoted("ISensorFileHandler"));
    }
    if (--found->second.useCount != 0) return false;
    closed = std::move(found->second.handler);
    documents_.erase(found->second.document);
    entries_.erase(found);
    return true;
}

}  // namespace zentor
