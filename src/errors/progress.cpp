#include "errors/progress.h"

#include <algorithm>

#include "errors/host_suite.h"
#include "errors/host_tables.h"
#include "errors/raise.h"
#include "util/thread_slot.h"

namespace zentor {

namespace {

using std::chrono::steady_clock;

os::ThreadSlot current(nullptr);
std::chrono::milliseconds interval{50};

}  // namespace

Progress::Progress() noexcept
    : outer_(Current()), callback_(ReadHostExtensions().progress), asked_(steady_clock::now()) {
    current.Set(this);
}

Progress::~Progress() { current.Set(outer_); }

Progress* Progress::Current() noexcept { return static_cast<Progress*>(current.Get()); }

void Progress::BeginStep(double from, double to, std::uint64_t size) noexcept {
    if (total_ == 0) total_ = size;
    from_ = from;
    to_ = to;
    size_ = size;
}

void Progress::At(std::uint64_t position) {
    if (size_ != 0) {
        const double part = static_cast<double>(std::min(position, size_)) / static_cast<double>(size_);
        const double done = static_cast<double>(total_) * (from_ + (to_ - from_) * part);
        done_ = std::max(done_, static_cast<std::uint64_t>(done));
    }
    Poll();
}

void Progress::Poll() {
    if (callback_ == nullptr || steady_clock::now() - asked_ < interval) return;
    Ask();
}

void Progress::Finish() {
    done_ = total_;
    if (callback_ != nullptr) Ask();
}

void Progress::Ask() {
    if (end_ == nullptr) {
        try {
            if (callback_(ErrorContext(), done_, total_) == 0) end_ = &kCancelled;
        } catch (...) {
            end_ = &kUnknownException;
        }
        asked_ = steady_clock::now();
    }
    RaiseIfEnded();
}

void Progress::RaiseIfEnded() const {
    if (end_ != nullptr) Raise(*end_);
}

void BeginStep(double from, double to, std::uint64_t size) noexcept {
    if (Progress* const progress = Progress::Current()) progress->BeginStep(from, to, size);
}

void ReportProgress() {
    if (Progress* const progress = Progress::Current()) progress->Poll();
}

void ReportProgress(std::uint64_t position) {
    if (Progress* const progress = Progress::Current()) progress->At(position);
}

void FinishProgress() {
    if (Progress* const progress = Progress::Current()) progress->Finish();
}

void RaiseIfEnded() {
    if (const Progress* const progress = Progress::Current()) progress->RaiseIfEnded();
}

void SetProgressInterval(std::chrono::milliseconds newInterval) noexcept { interval = newInterval; }

}  // namespace zentor
