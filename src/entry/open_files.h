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

// Thread-safe. Documents are opened outside the lock: threads that open different files do not wait for each other;
// those that open the same one, or want the same output, wait for the first.
class OpenFiles final : public OpenDocuments {
public:
    // The handler of an input, opened now or before; `outputPath` is absolute or empty. Codes of PrepareInput,
    // CheckOutput, CopyBeside, OutputPlacement and SensorFileHandlerImpl; 7 when the output is an open document.
    ISensorFileHandler* Open(const InputFile& input, const std::string& outputPath);
    // Gives one use back; true when it was the last. Codes 1 (the last one, while a query of the handler is calling
    // this thread), 26, 27.
    bool Close(const ISensorFileHandler* handler);

    bool IsOpen(const std::string& path) override;

private:
    struct Entry {
        std::unique_ptr<SensorFileHandlerImpl> handler;
        std::uint64_t useCount;
    };
    class Reservation;

    // These are called under the lock.
    bool IsBusy(const std::string& inputPath, const std::string& outputPath) const;
    bool IsOpenDocument(const std::string& path) const;
    SensorFileHandlerImpl* TakeOpenOne(const std::string& inputPath);

    std::mutex mutex_;
    std::condition_variable reservationsChanged_;
    std::map<std::string, Entry> entries_;  // by absolute input path
    std::multiset<std::string> inputsAtWork_;
    std::multiset<std::string> outputsAtWork_;
};

}  // namespace zentor
