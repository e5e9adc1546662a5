#include "errors/last_exception.h"

#include <utility>

#include "util/thread_slot.h"

namespace zentor {

namespace {

using Record = std::shared_ptr<const LastException>;

// Made when the library is loaded: a host may use up the system's slots later. Without one no thread has a record.
os::ThreadSlot slot([](void* record) { delete static_cast<Record*>(record); });

}  // namespace

std::shared_ptr<const LastException> GetLastException() noexcept {
    const auto* const record = static_cast<const Record*>(slot.Get());
    return record == nullptr ? nullptr : *record;
}

void RestoreLastException(Record record) noexcept {
    ClearLastException();
    if (record == nullptr) return;
    try {
        auto kept = std::make_unique<Record>(std::move(record));
        if (slot.Set(kept.get())) static_cast<void>(kept.release());
    } catch (...) {
        // The failure itself is still reported; only the record of it is missing.
    }
}

void SetLastException(LastException record) noexcept {
    try {
        RestoreLastException(std::make_shared<const LastException>(std::move(record)));
    } catch (...) {
        ClearLastException();
    }
}

void ClearLastException() noexcept {
    auto* const record = static_cast<Record*>(slot.Get());
    if (record == nullptr) return;
    slot.Set(nullptr);
    delete record;
}

}  // namespace zentor
