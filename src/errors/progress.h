// Tells the host how far an operation is, and lets it cancel.
#pragma once

#include <chrono>
#include <cstdint>

#include "errors/error_table.h"

namespace zentor {

// One operation of the calling thread that can take long; what it calls tells through the functions below how far it
// is. Operations nest when callbacks call the library.
class Progress {
public:
    Progress() noexcept;
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Of the calling thread; null outside such operations.
    static Progress* Current() noexcept;
    // Whether a callback of another one has called this one.
    bool IsNested() const { return outer_ != nullptr; }

    // The work goes on with a step that takes it from one part of the whole to another (0 to 1), through `size` bytes.
    void BeginStep(double from, double to, std::uint64_t size) noexcept;
    // Asks the host when it has not been asked for a while. ZT_CANCELLED when the host wants that, ZT_UNKNOWN for an
    // exception out of the callback; from then on at every call.
    void At(std::uint64_t position);
    void Poll();
    // The last word before a result becomes one: asks the host at any rate.
    void Finish();
    void RaiseIfEnded() const;

private:
    void Ask();

    Progress* outer_;
    std::uint8_t (*callback_)(void* context, std::uint64_t done, std::uint64_t total);
    std::chrono::steady_clock::time_point asked_;
    std::uint64_t done_ = 0;
    std::uint64_t total_ = 0;
    std::uint64_t size_ = 0;  // of the step
    double from_ = 0;
    double to_ = 0;
    const ErrorEntry* end_ = nullptr;  // why the operation cannot go on
};

// The same for the operation of the calling thread, if there is one.
void BeginStep(double from, double to, std::uint64_t size) noexcept;
void ReportProgress();
void ReportProgress(std::uint64_t position);
void FinishProgress();
void RaiseIfEnded();

// The parts of the whole at which the steps of a conversion end.
inline constexpr double kInputChecked = 0.1;
inline constexpr double kDocumentMade = 0.7;

// For tests: how long the host is left alone; 50 ms otherwise.
void SetProgressInterval(std::chrono::milliseconds interval) noexcept;

}  // namespace zentor
