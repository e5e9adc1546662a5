#include "errors/dictionary/dictionary.h"

#include <mutex>

#include "errors/dictionary/dictionary_reader.h"
#include "errors/locale.h"
#include "util/resource.h"
#include "util/utf_codec.h"

namespace zentor {

namespace {

std::mutex activeMutex;
std::shared_ptr<const MessageDictionary> active;

std::shared_ptr<const MessageDictionary> ActiveDictionary() {
    const std::lock_guard lock(activeMutex);
    if (!active) active = std::make_shared<const MessageDictionary>(os::FindOwnResource("dict", "zt_" + Locale()));
    return active;
}

}  // namespace

MessageDictionary::MessageDictionary(std::string_view stored) {
    const std::string bytes = lexkit_private::WithoutStrayBytes(stored);
    const auto reader = lexkit_private::MakeDictionaryReader(bytes);
    if (!reader) return;
    lexkit_private::DictionaryEntry entry;
    while (reader->Next(entry)) texts_.try_emplace(std::move(entry.key), std::move(entry.text));
}

const std::u16string* MessageDictionary::Find(std::string_view keyPath) const {
    const auto found = texts_.find(keyPath);
    return found == texts_.end() ? nullptr : &found->second;
}

std::u16string LookUpMessage(std::string_view key) {
    const std::size_t separator = key.find('=');
    const auto dictionary = ActiveDictionary();
    if (const std::u16string* const text = dictionary->Find(key.substr(0, separator))) return *text;
    if (separator == std::string_view::npos) return {};
    return Utf8ToUtf16(key.substr(separator + 1));
}

void ReleaseDictionary() noexcept {
    const std::lock_guard lock(activeMutex);
    active = nullptr;
}

}  // namespace zentor
