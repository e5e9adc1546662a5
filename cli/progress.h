// Shows on a terminal that long work goes on.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "library.h"

namespace zentor_cli {

// After a second, and then every second, a line with how far the work is; nothing unless standard error is a terminal.
// The line goes with the object.
class Progress {
public:
    // `describe` is asked on another thread, with the seconds since the beginning.
    Progress(std::function<std::string(int seconds)> describe, bool quiet);
    // Of what the calling thread does: "WHAT ... 45 %, 12.3 MB/s, 5 s left".
    Progress(const std::string& what, bool quiet);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Hides the line while something else is written.
    template <class Write>
    void Pause(Write&& write) {
        const std::lock_guard lock(mutex_);
        Clear();
        write();
    }

private:
    void Show();
    void Clear();

    Amount amount_;
    std::function<std::string(int)> describe_;
    std::mutex mutex_;
    std::condition_variable done_;
    bool isDone_ = false;
    bool isShown_ = false;
    std::thread thread_;
};

}  // namespace zentor_cli
