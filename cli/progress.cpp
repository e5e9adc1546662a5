#include "progress.h"

#include <chrono>
#include <cstdio>

#include "text_output.h"
#include "util/console.h"

namespace zentor_cli {

namespace {

std::string Describe(const std::string& what, const Amount& amount, int seconds) {
    const auto done = static_cast<double>(amount.done.load());
    const auto total = static_cast<double>(amount.total.load());
    char text[96];
    if (done <= 0 || total <= 0) {
        std::snprintf(text, sizeof text, " ... %d s", seconds);
    } else {
        const double rate = done / seconds;
        std::snprintf(text, sizeof text, " ... %.0f %%, %.1f MB/s, %.0f s left", 100 * done / total, rate / 1e6,
                      (total - done) / rate);
    }
    return what + static_cast<const char*>(text);
}

}  // namespace

Progress::Progress(std::function<std::string(int seconds)> describe, bool quiet) : describe_(std::move(describe)) {
    if (!quiet && zentor::os::IsErrorTerminal()) thread_ = std::thread(&Progress::Show, this);
}

Progress::Progress(const std::string& what, bool quiet)
    : Progress([this, shown = Printable(what)](int seconds) { return Describe(shown, amount_, seconds); }, quiet) {
    Library::ShowAmount(&amount_);
}

Progress::~Progress() {
    Library::ShowAmount(nullptr);
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
    for (int seconds = 1; !done_.wait_for(lock, std::chrono::seconds(1), [this] { return isDone_; }); ++seconds) {
        Clear();
        zentor::os::WriteError("\r" + describe_(seconds));
        isShown_ = true;
    }
    Clear();
}

void Progress::Clear() {
    if (isShown_) zentor::os::WriteError("\r\033[K");
    isShown_ = false;
}

}  // namespace zentor_cli
