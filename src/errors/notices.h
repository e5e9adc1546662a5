// What a conversion has changed or left out, counted for the host, and why it has been refused.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "errors/error_table.h"
#include "zentor/zentor.h"

namespace zentor {

// In an input: a byte offset, and a line from 1 on. -1: not known.
struct InputPlace {
    std::int64_t offset = -1;
    std::int64_t line = -1;
};

// The notices of one operation of the calling thread. Operations nest when callbacks call the library.
class Notices {
public:
    Notices() noexcept;
    ~Notices();
    Notices(const Notices&) = delete;
    Notices& operator=(const Notices&) = delete;

    // Of the calling thread; null outside such operations.
    static Notices* Current() noexcept;
    // Whether the host has a callback for them.
    bool AreWanted() const { return callback_ != nullptr; }
    // The one that comes first in the input tells where; of places that are not known, the first.
    void Add(ZT_NoticeKind kind, const InputPlace& place, std::uint64_t count) noexcept;
    // In a converter's own words; one that is no UTF-8 is shown with replacement characters.
    void Add(std::string_view message, const InputPlace& place, std::uint64_t count);
    // Whether one at this offset would tell where.
    bool IsFirst(ZT_NoticeKind kind, std::int64_t offset) const {
        const Counted& counted = kinds_[kind];
        return counted.count == 0 || offset < counted.first.offset;
    }
    // Keeps why the input is refused, whatever becomes of the exception on its way.
    void Refuse(const ErrorEntry& why, const InputPlace& place) noexcept {
        refusal_ = &why;
        refusedAt_ = place;
    }
    // Raises it again; nothing when there is none.
    void RaiseIfRefused() const;

    // Hands it to the host at once: why a converter refuses the input, in its own words. ZT_UNKNOWN as for Deliver.
    void TellReason(std::string_view message, const InputPlace& place);

    // Hands them to the host, by ascending kind. ZT_UNKNOWN for an exception out of the callback.
    void Deliver();

private:
    struct Counted {
        std::uint64_t count = 0;
        InputPlace first;
    };

    Notices* outer_;
    decltype(ZT_HostExtensions::notice) callback_;
    std::array<Counted, ZT_NOTICE_FRAME_RATE + 1> kinds_{};
    struct Own {
        std::string message;
        Counted counted;
    };
    std::vector<Own> own_;
    const ErrorEntry* refusal_ = nullptr;
    InputPlace refusedAt_;
};

// The same for the operation of the calling thread, if there is one.
bool AreNoticesWanted() noexcept;
void AddNotice(ZT_NoticeKind kind, const InputPlace& place, std::uint64_t count = 1) noexcept;
void DeliverNotices();
void TellReason(std::string_view message, const InputPlace& place);
// Refuses the input, with a place in it.
[[noreturn]] void RefuseInput(const ErrorEntry& why, const InputPlace& place);
void RaiseIfRefused();

}  // namespace zentor
