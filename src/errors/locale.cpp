#include "errors/locale.h"

#include <mutex>

namespace zentor {

namespace {

std::mutex localeMutex;
std::string current = kDefaultLocale;

}  // namespace

std::string Locale() {
    const std::lock_guard lock(localeMutex);
    return current;
}

void SetLocale(const char* locale) {
    const std::lock_guard lock(localeMutex);
    current = locale == nullptr || *locale == '\0' ? kDefaultLocale : locale;
}

}  // namespace zentor
