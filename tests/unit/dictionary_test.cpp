// The message dictionaries: what they hold in every language, the form in which they are stored, and how it is read.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "errors/dictionary/dictionary.h"
#include "errors/dictionary/dictionary_reader.h"
#include "errors/error_table.h"
#include "errors/locale.h"
#include "errors/message.h"
#include "errors/notice_table.h"
#include "util/resource.h"
#include "util/utf_codec.h"

namespace zentor_test {

using namespace lexkit_private;
using namespace zentor;

namespace {

constexpr const char* kLocales[] = {"en_US", "de_DE", "es_ES", "fr_FR", "it_IT",
                                    "ja_JP", "ko_KR", "pt_BR", "ru_RU", "zh_CN"};

using Texts = std::map<std::string, std::u16string>;

std::string_view StoredForm(const std::string& locale) { return os::FindOwnResource("dict", "zt_" + locale); }

// All entries, as the reader gives them.
std::vector<DictionaryEntry> EntriesOf(std::string_view stored) {
    const std::string bytes = WithoutStrayBytes(stored);
    std::vector<DictionaryEntry> entries;
    const auto reader = MakeDictionaryReader(bytes);
    DictionaryEntry entry;
    while (reader && reader->Next(entry)) entries.push_back(entry);
    return entries;
}

Texts TextsOf(const std::string& locale) {
    Texts texts;
    for (const DictionaryEntry& entry : EntriesOf(StoredForm(locale))) texts[entry.key] = entry.text;
    return texts;
}

// The English texts of the keys that the library raises, by key path; keys with several texts have none.
Texts DefaultTexts() {
    std::map<std::string, std::set<std::u16string>> all;
    const auto add = [&all](std::string_view key) {
        all[std::string(key.substr(0, key.find('=')))].insert(Utf8ToUtf16(key.substr(key.find('=') + 1)));
    };
    for (const ErrorEntry& entry : kErrorTable) add(entry.key);
    for (const NoticeEntry& entry : kNoticeTable) add(entry.key);
    Texts texts;
    for (const auto& [path, several] : all) texts[path] = several.size() == 1 ? *several.begin() : u"";
    return texts;
}

std::multiset<char16_t> PlaceholdersOf(const std::u16string& text) {
    std::multiset<char16_t> placeholders;
    for (std::size_t at = 0; (at = text.find(u'^', at)) != std::u16string::npos; ++at) {
        placeholders.insert(text.substr(at).size() > 1 ? text[at + 1] : u'^');
    }
    return placeholders;
}

std::string Utf16(const std::u16string& text, bool swapped) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += swapped ? high : low;
        bytes += swapped ? low : high;
    }
    return bytes;
}

}  // namespace

TEST(Dictionaries, EveryKeyInEveryLanguage) {
    const Texts defaults = DefaultTexts();
    const std::set<std::string> absent = {"$$$/ZTError/File_IO/Rename", "$$$/ZTError/SampleData/InvalidSampleTime",
                                          "$$$/ZTErrorFile_IO/Write/Failure"};
    for (const char* const locale : kLocales) {
        SCOPED_TRACE(locale);
        const Texts texts = TextsOf(locale);
        EXPECT_EQ(texts.size(), EntriesOf(StoredForm(locale)).size()) << "a key twice";
        std::set<std::u16string> changed;
        for (const auto& [key, text] : defaults) {
            EXPECT_EQ(text.empty(), absent.contains(key)) << key;
            if (absent.contains(key)) {
                EXPECT_FALSE(texts.contains(key)) << key;
                continue;
            }
            ASSERT_TRUE(texts.contains(key)) << key;
            const std::u16string& translated = texts.at(key);
            EXPECT_EQ(PlaceholdersOf(translated), PlaceholdersOf(text)) << key;
            EXPECT_EQ(translated.find_first_not_of(u" \t"), 0U) << key;
            EXPECT_EQ(translated.find_last_not_of(u" \t"), translated.size() - 1) << key;
            if (translated != text) changed.insert(text);
        }
        EXPECT_EQ(texts.size(), defaults.size() - absent.size()) << "a key that nobody raises";
        if (std::string(locale) == "en_US") {
            EXPECT_TRUE(changed.empty());
        } else {
            EXPECT_GT(changed.size(), texts.size() * 9 / 10) << "is it translated?";
        }
    }
}

TEST(Dictionaries, StoredForm) {
    for (const char* const locale : kLocales) {
        SCOPED_TRACE(locale);
        const std::string_view stored = StoredForm(locale);
        ASSERT_TRUE(stored.starts_with("\xFF\xFE"));
        const bool isEnglish = std::string(locale) == "en_US";
        const auto entries = EntriesOf(stored).size();
        std::size_t lineFeeds = 0;
        for (std::size_t at = 0; (at = stored.find('\n', at)) != std::string_view::npos; ++at) {
            ++lineFeeds;
            EXPECT_EQ(stored[at - 1], isEnglish ? '\0' : '\r');
        }
        EXPECT_GE(lineFeeds, entries);
        const std::string bytes = WithoutStrayBytes(stored);
        EXPECT_EQ(bytes.size(), stored.size() - (isEnglish ? 0 : lineFeeds));
        const std::string lineEnd = Utf16(u"\r\n", false);
        std::size_t lineEnds = 0;
        for (std::size_t at = 0; (at = bytes.find(lineEnd, at)) != std::string::npos; at += 4) ++lineEnds;
        EXPECT_EQ(lineEnds, entries);
        EXPECT_TRUE(bytes.ends_with(lineEnd));
        EXPECT_EQ(bytes.size() % 2, 0U);
    }
    EXPECT_EQ(StoredForm("DE_de").data(), StoredForm("de_DE").data());
    EXPECT_TRUE(StoredForm("xx_XX").empty());
    EXPECT_TRUE(os::FindOwnResource("other", "zt_en_US").empty());
}

TEST(Dictionaries, Forms) {
    const std::u16string text =
        u"\"$$$/A=one\"\r\n\"$$$/B=say \\\"two\\\" \\ = \u00e9\u3042\"\n\n"
        u"no entry\r\"$$$/C\"\r\n\"=d\"\r\n\"$$$/E=\"\r\n\"$$$/F=a\"b\"\r\n\"$$$/G=\u0a0d\u0d0a\"";
    const Texts expected = {{"$$$/A", u"one"}, {"$$$/B", u"say \"two\" \\ = \u00e9\u3042"}, {"$$$/G", u"\u0a0d\u0d0a"}};
    for (const std::string& bytes : {"\xFF\xFE" + Utf16(text, false), "\xFE\xFF" + Utf16(text, true), Utf16ToUtf8(text),
                                     "\xEF\xBB\xBF" + Utf16ToUtf8(text)}) {
        Texts texts;
        for (const DictionaryEntry& entry : EntriesOf(bytes)) texts[entry.key] = entry.text;
        EXPECT_EQ(texts, expected);
    }
    for (const std::string bytes : {"Wexstring Binary Format\0\1", "BUFF\1", "FFUB\1"}) {
        EXPECT_EQ(MakeDictionaryReader(bytes), nullptr);
        EXPECT_EQ(MessageDictionary(bytes).Size(), 0U);
    }
    EXPECT_EQ(MessageDictionary({}).Size(), 0U);
}

// Whatever happens to a dictionary, a key has its text or the English one.
TEST(Dictionaries, Damage) {
    const std::string good(StoredForm("de_DE"));
    const Texts texts = TextsOf("de_DE");
    // How many texts are as they were, and how many have become others.
    const auto compare = [&](const std::string& bytes) {
        std::pair<std::size_t, std::size_t> counts{0, 0};
        const MessageDictionary damaged(bytes);
        for (const auto& [key, text] : texts) {
            const std::u16string* const found = damaged.Find(key);
            if (found != nullptr) ++(*found == text ? counts.first : counts.second);
        }
        return counts;
    };
    std::size_t before = 0;
    for (std::size_t size = 0; size <= good.size(); size += size < 2000 ? 1 : 11) {
        const auto [right, wrong] = compare(good.substr(0, size));
        EXPECT_EQ(wrong, 0U) << size;
        EXPECT_TRUE(right == before || right == before + 1) << size;
        before = right;
    }
    EXPECT_GE(before + 1, texts.size());
    EXPECT_EQ(compare(good).first, texts.size());
    // What comes before the damage is as it was. It may end the reading, but makes no other text wrong than its own.
    for (std::size_t at = 2; at < good.size(); at += 127) {
        std::string bytes = good;
        bytes[at] = static_cast<char>(bytes[at] ^ 0x5A);
        const auto [right, wrong] = compare(bytes);
        // A line feed that no carriage return precedes says that the dictionary has none of the stray bytes.
        if (bytes[at] != '\n' && good[at] != '\r') {
            EXPECT_GE(right, compare(good.substr(0, at)).first) << at;
        }
        EXPECT_LE(wrong, 1U) << at;
    }
}

TEST(Dictionaries, MessagesFollowTheLocale) {
    const std::pair<const char*, const char*> cases[] = {
        {"de_DE", "Das Dateiformat wird nicht unterstützt."},
        {"xx_XX", "File Format Not Supported."},
        {"DE_de", "Das Dateiformat wird nicht unterstützt."},
        {"", "File Format Not Supported."},
        {nullptr, "File Format Not Supported."},
    };
    for (const auto& [locale, message] : cases) {
        SetLocale(locale);
        ReleaseDictionary();
        EXPECT_EQ(FormMessage(kFileFormatNotSupported.key, {}), message);
        // Keys that no dictionary has.
        EXPECT_EQ(FormMessage("$$$/ZTError/Unknown=unknown ^1", {5}), "unknown 5");
        EXPECT_EQ(FormMessage(kDiskFull.key, {"x"}), "x, Disk Full.");
        EXPECT_EQ(FormMessage("no key", {}), "");
    }
    ReleaseDictionary();
}

}  // namespace zentor_test
