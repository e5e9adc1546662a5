#include "errors/notices.h"

#include <string>
#include <string_view>

#include "errors/host_suite.h"
#include "errors/host_tables.h"
#include "errors/message.h"
#include "errors/notice_table.h"
#include "errors/raise.h"
#include "util/thread_slot.h"
#include "util/utf_codec.h"

namespace zentor {

namespace {

os::ThreadSlot current(nullptr);

}  // namespace

Notices::Notices() noexcept : outer_(Current()), callback_(ReadHostExtensions().notice) { current.Set(this); }

Notices::~Notices() { current.Set(outer_); }

Notices* Notices::Current() noexcept { return static_cast<Notices*>(current.Get()); }

void Notices::Add(ZT_NoticeKind kind, const InputPlace& place, std::uint64_t count) noexcept {
    Counted& counted = kinds_[kind];
    if (counted.count == 0 || (place.line > 0 && place.offset < counted.first.offset)) counted.first = place;
    counted.count += count;
}

void Notices::Add(std::string_view message, const InputPlace& place, std::uint64_t count) {
    own_.push_back({Utf16ToUtf8(Utf8ToUtf16(message)), {count, place}});
}

void Notices::RaiseIfRefused() const {
    if (refusal_ != nullptr) Raise({*refusal_, refusedAt_.offset, refusedAt_.line});
}

void Notices::TellReason(std::string_view message, const InputPlace& place) {
    if (callback_ == nullptr) return;
    const std::string text = Utf16ToUtf8(Utf8ToUtf16(message));
    CallHost(callback_, ErrorContext(), static_cast<std::uint32_t>(ZT_NOTICE_REASON), text.c_str(), std::uint64_t{1},
             place.offset, place.line);
}

void Notices::Deliver() {
    if (callback_ == nullptr) return;
    for (const NoticeEntry& entry : kNoticeTable) {
        const Counted& counted = kinds_[entry.kind];
        if (counted.count == 0) continue;
        const std::string message = FormMessage(entry.key, {ZT_ErrorParam(counted.count)});
        CallHost(callback_, ErrorContext(), static_cast<std::uint32_t>(entry.kind), message.c_str(), counted.count,
                 counted.first.offset, counted.first.line);
    }
    for (const Own& own : own_) {
        CallHost(callback_, ErrorContext(), static_cast<std::uint32_t>(ZT_NOTICE_OF_CONVERTER), own.message.c_str(),
                 own.counted.count, own.counted.first.offset, own.counted.first.line);
    }
    kinds_ = {};
    own_.clear();
}

bool AreNoticesWanted() noexcept {
    const Notices* const notices = Notices::Current();
    return notices != nullptr && notices->AreWanted();
}

void AddNotice(ZT_NoticeKind kind, const InputPlace& place, std::uint64_t count) noexcept {
    if (Notices* const notices = Notices::Current()) notices->Add(kind, place, count);
}

void RefuseInput(const ErrorEntry& why, const InputPlace& place) {
    if (Notices* const notices = Notices::Current()) notices->Refuse(why, place);
    Raise({why, place.offset, place.line});
}

void RaiseIfRefused() {
    if (const Notices* const notices = Notices::Current()) notices->RaiseIfRefused();
}

void DeliverNotices() {
    if (Notices* const notices = Notices::Current()) notices->Deliver();
}

void TellReason(std::string_view message, const InputPlace& place) {
    if (Notices* const notices = Notices::Current()) notices->TellReason(message, place);
}

}  // namespace zentor
