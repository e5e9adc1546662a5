#include "progress.h"

#include <chrono>

#include "util/console.h"

namespace zentor_cli {

Progress::Progress(std::string what, bool quiet) : what_(std::move(what)) {
    if (!quiet && zentor::os::IsErrorTerminal()) thread_ = std::thread(&Progress::Show, this);
}

Progress::~Progress() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        isDone_ = true;
    }
    done_.notify_one();
    thread_.join();
}

void Progress::Show() {
    std::unique_lock lock(mutex_);
    int seconds = 0;
    while (!done_.wait_for(lock, std::chrono::seconds(1), [this] { return isDone_; })) {
        zentor::os::WriteError("\r" + what_ + " ... " + std::to_string(++seconds) + " s");
    }
    if (seconds != 0) zentor::os::WriteError("\r\033[K");
}

}  // namespace zentor_cli
