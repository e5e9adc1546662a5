// Shows on a terminal that long work goes on.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace zentor_cli {

// After a second, and then every second, a line with the time taken; nothing unless standard error is a terminal. The
// line goes with the object.
class Progress {
public:
    Progress(std::string what, bool quiet);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    void Show();

    std::string what_;
    std::mutex mutex_;
    std::condition_variable done_;
    bool isDone_ = false;
    std::thread thread_;
};

}  // namespace zentor_cli
