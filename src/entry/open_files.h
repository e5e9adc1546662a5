// The documents that are open, and how often.
#pragma once

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "conversion/driver.h"
#include "reader/sensor_file_handler.h"

namespace zentor {

// Thread-safe. Documents are opened outside the lock: threads that open different files do not wait for each other,
// those that open the same one wait for the first.
class OpenFiles {
public:
    // The handler of an input, opened now or before; `outputPath` is absolute or empty. Codes of PrepareInput,
    // OutputPlacement, CopyDocument and SensorFileHandlerImpl; 7 when the output is an open document.
    ISensorFileHandler* Open(const InputFile& input, const std::string& outputPath);
    // Gives one use back; true when it was the last. Codes 26, 27.
    bool Close(const ISensorFileHandler* handler);

private:
    struct Entry {
        std::unique_ptr<SensorFileHandlerImpl> handler;
        std::uint64_t useCount;
    };
    class OpeningScope;

    // Counts one more use; null when the input is not open.
    SensorFileHandlerImpl* TakeOpenOne(std::unique_lock<std::mutex>& lock, const std::string& inputPath);
    void CheckOutputIsNotOpen(const std::string& outputPath);

    std::mutex mutex_;
    std::condition_variable opened_;
    std::map<std::string, Entry> entries_;  // by absolute input path
    std::set<std::string> opening_;
};

}  // namespace zentor
