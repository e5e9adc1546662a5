#include "entry/open_files.h"

#include <algorithm>

#include "conversion/document_copy.h"
#include "conversion/output_placement.h"
#include "errors/raise.h"
#include "util/file_io.h"

namespace zentor {

namespace {

std::unique_ptr<SensorFileHandlerImpl> OpenDocument(const InputFile& input, const std::string& outputPath) {
    std::shared_ptr<DocumentRecord> record = PrepareInput(input, outputPath);
    if (outputPath.empty()) return std::make_unique<SensorFileHandlerImpl>(input.path, std::move(record));
    if (record->isTemporary) {
        // Before it is mapped: a mapped file cannot be renamed everywhere.
        OutputPlacement placement(record, outputPath);
        auto handler = std::make_unique<SensorFileHandlerImpl>(input.path, record);
        placement.Keep();
        return handler;
    }
    CheckOutputFolder(outputPath);
    auto handler = std::make_unique<SensorFileHandlerImpl>(input.path, record);
    if (!File_IO::IsSameFile(input.path, outputPath)) CopyDocument(input.path, outputPath);
    return handler;
}

}  // namespace

// An input that is being opened. The others who want it wait until this ends.
class OpenFiles::OpeningScope {
public:
    OpeningScope(OpenFiles& files, std::unique_lock<std::mutex>& lock, const std::string& inputPath)
        : files_(files), lock_(lock), place_(files.opening_.insert(inputPath).first) {
        lock_.unlock();
    }
    ~OpeningScope() {
        if (!lock_.owns_lock()) lock_.lock();
        files_.opening_.erase(place_);
        files_.opened_.notify_all();
    }
    OpeningScope(const OpeningScope&) = delete;
    OpeningScope& operator=(const OpeningScope&) = delete;

private:
    OpenFiles& files_;
    std::unique_lock<std::mutex>& lock_;
    std::set<std::string>::iterator place_;
};

ISensorFileHandler* OpenFiles::Open(const InputFile& input, const std::string& outputPath) {
    std::unique_lock lock(mutex_);
    if (SensorFileHandlerImpl* const handler = TakeOpenOne(lock, input.path)) {
        const bool isAtOutput = outputPath.empty() || File_IO::IsSameFile(handler->DocumentPath(), outputPath);
        if (isAtOutput) return handler;
        try {
            CheckOutputIsNotOpen(outputPath);
            lock.unlock();
            CheckOutputFolder(outputPath);
            CopyDocument(input.path, outputPath);
        } catch (...) {
            if (lock.owns_lock()) lock.unlock();
            Close(handler);
            throw;
        }
        return handler;
    }
    if (!outputPath.empty()) CheckOutputIsNotOpen(outputPath);
    const OpeningScope opening(*this, lock, input.path);
    auto handler = OpenDocument(input, outputPath);
    SensorFileHandlerImpl* const opened = handler.get();
    lock.lock();
    entries_.emplace(input.path, Entry{std::move(handler), 1});
    return opened;
}

SensorFileHandlerImpl* OpenFiles::TakeOpenOne(std::unique_lock<std::mutex>& lock, const std::string& inputPath) {
    opened_.wait(lock, [&] { return !opening_.contains(inputPath); });
    const auto found = entries_.find(inputPath);
    if (found == entries_.end()) return nullptr;
    ++found->second.useCount;
    return found->second.handler.get();
}

// An open document is mapped; writing to its file would pull it away from under its handler.
void OpenFiles::CheckOutputIsNotOpen(const std::string& outputPath) {
    for (const auto& [path, entry] : entries_) {
        if (File_IO::IsSameFile(entry.handler->DocumentPath(), outputPath)) {
            Raise(kCreateFile, Quoted("File_IO::Create"));
        }
    }
}

bool OpenFiles::Close(const ISensorFileHandler* handler) {
    std::unique_ptr<SensorFileHandlerImpl> closed;  // goes outside the lock: it unmaps and deletes files
    const std::lock_guard lock(mutex_);
    if (entries_.empty()) Raise(kNoFileOpened);
    // By value: a pointer of somebody else's is never followed.
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const auto& entry) { return entry.second.handler.get() == handler; });
    if (found == entries_.end()) Raise(kInvalidFileHandler);
    if (--found->second.useCount != 0) return false;
    closed = std::move(found->second.handler);
    entries_.erase(found);
    return true;
}

}  // namespace zentor
