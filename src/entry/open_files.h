// The documents that are open, and how often.
#pragma once

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "conversion/driver.h"
#include "conversion/open_documents.h"
#include "reader/sensor_file_handler.h"

namespace zentor {

struct OpenOptions {
    ReadOptions read;
    ConversionOptions conversion;
};

// Thread-safe. Documents are opened outside the lock: threads that open different files do not wait for each other;
// those that open the same one, or want the same output, wait for the first.
class OpenFiles final : public OpenDocuments {
public:
    // The handler of an input, opened now or before, whatever path with the same extension leads to it; `outputPath` is
    // absolute or empty. Codes of PrepareInput, CopyBeside, PlacedFile::Place and SensorFileHandlerImpl;
    // ZT_FILE_CREATE when the output is an open document.
    ISensorFileHandler* Open(const InputFile& input, const std::string& outputPath, const OpenOptions& options);
    // Puts the document that stands for an input at an absolute output path without reading it. Codes of Open.
    void Place(const InputFile& input, const std::string& outputPath, const ConversionOptions& options);
    // Gives one use back; true when it was the last. Codes ZT_INVALID_POINTER (the last one, while a query of the
    // handler is calling this thread), ZT_NO_FILE_OPENED, ZT_INVALID_FILE_HANDLER.
    bool Close(const ISensorFileHandler* handler);

    bool IsOpen(const std::string& path) override;

private:
    // A file, whatever path leads to it; the kind tells what is made of one file in several ways. Where the file system
    // does not tell files from each other, the path has to do.
    struct FileKey {
        os::FileIdentity file;
        std::string path;  // where the file system does not tell
        std::string kind;

        auto operator<=>(const FileKey&) const = default;
    };
    struct Entry {
        std::unique_ptr<SensorFileHandlerImpl> handler;
        std::uint64_t useCount;
        std::multiset<FileKey>::iterator document;
    };
    class Reservation;

    static FileKey KeyOf(const std::string& path, const std::string& kind);
    static FileKey KeyOfInput(const std::string& path, const ConversionOptions& options);
    static FileKey KeyOfDocument(const std::string& path) { return KeyOf(path, {}); }

    // These are called under the lock.
    // Code ZT_INVALID_POINTER when a callback wants what is at work.
    void WaitForOthers(std::unique_lock<std::mutex>& lock, const FileKey& input, const std::string& outputPath);
    bool IsBusy(const FileKey& input, const std::string& outputPath) const;
    bool IsOpenDocument(const std::string& path) const;
    SensorFileHandlerImpl* TakeOpenOne(const FileKey& input);
    ISensorFileHandler* Add(const FileKey& input, const FileKey& document,
                            std::unique_ptr<SensorFileHandlerImpl> handler);

    std::mutex mutex_;
    std::condition_variable reservationsChanged_;
    std::multimap<FileKey, Entry> entries_;  // by input
    std::multiset<FileKey> documents_;       // what is mapped
    std::multiset<FileKey> inputsAtWork_;
    std::multiset<std::string> outputsAtWork_;
};

}  // namespace zentor
