// The exported functions and the manager's life, as a host sees them.
#include <gtest/gtest.h>

#include <cstring>
#include <thread>

#include "recording_host.h"
#include "test_folder.h"

namespace zentor_test {

using FormatList = std::vector<std::pair<std::string, std::string>>;

// Slot k of an object's function table, as a C function.
template <class Function>
Function* Slot(void* object, std::size_t k) {
    void** const table = *static_cast<void***>(object);
    Function* function = nullptr;
    std::memcpy(&function, &table[k], sizeof function);
    return function;
}

TEST(Manager, IsSharedAndCounted) {
    IZentor* first = nullptr;
    IZentor* second = nullptr;
    int context = 0;
    TakeReports();
    CreateZentor_1(&first, nullptr, nullptr, "en_US", &context, &Suite(), nullptr);
    CreateZentor_1(&second, nullptr, nullptr, "de_DE", &context, &Suite(), nullptr);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first, second);
    DestroyZentor_1(&first, &context);
    EXPECT_EQ(first, nullptr);
    // The other reference still works: this reaches the manager and comes back with its code.
    IVkjsonStream* stream = nullptr;
    EXPECT_EQ(second->ConvertFile(&stream, "", 0), 2U);
    EXPECT_EQ(Reports().at(0).context, &context);
    IZentor* const gone = second;
    DestroyZentor_1(&second, &context);
    TakeReports();
    // One time too often, and with what is no manager.
    IZentor* stale = gone;
    DestroyZentor_1(&stale, &context);
    EXPECT_EQ(OnlyReport(), "1 Invalid pointer to \"IZentor\".");
    const Manager fresh;
    IZentor* foreign = reinterpret_cast<IZentor*>(&context);
    DestroyZentor_1(&foreign, &context);
    EXPECT_EQ(OnlyReport(), "1 Invalid pointer to \"IZentor\".");
    EXPECT_EQ(static_cast<void*>(foreign), &context);
}

TEST(Manager, NullPointersAreReported) {
    Manager manager;
    TakeReports();
    IZentor* none = nullptr;
    ISensorFileHandler* handler = nullptr;
    IVkjsonStream* stream = nullptr;
    CreateZentor_1(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(OnlyReport(), "1 Invalid pointer to \"IZentor\".");
    DestroyZentor_1(nullptr, nullptr);
    EXPECT_EQ(OnlyReport(), "1 Invalid pointer to \"IZentor\".");
    DestroyZentor_1(&none, nullptr);
    EXPECT_EQ(OnlyReport(), "1 Invalid pointer to \"IZentor\".");
    EXPECT_EQ(manager->OpenFile(nullptr, "x", nullptr), 1U);
    EXPECT_EQ(OnlyReport(), "1 Invalid pointer to \"ISensorFileHandler\".");
    EXPECT_EQ(manager->OpenFile(&handler, nullptr, nullptr), 2U);
    EXPECT_EQ(OnlyReport(), "2 Input file path is NULL.");
    EXPECT_EQ(manager->CloseFile(nullptr), 1U);
    EXPECT_EQ(manager->CloseFile(&handler), 1U);
    TakeReports();
    EXPECT_EQ(manager->ConvertFile(nullptr, "x", 0), 1U);
    EXPECT_EQ(OnlyReport(), "1 Invalid pointer to \"IZentor\".");
    EXPECT_EQ(manager->ConvertFile(&stream, nullptr, 0), 2U);
    EXPECT_EQ(OnlyReport(), "2 Input file path is NULL.");
    EXPECT_EQ(manager->ReleaseStream(nullptr), 1U);
    EXPECT_EQ(OnlyReport(), "1 Invalid pointer to \"IVkjsonStream\".");
    EXPECT_EQ(manager->ReleaseStream(&stream), 1U);
    EXPECT_EQ(OnlyReport(), "1 Invalid pointer to \"IVkjsonStream\".");
    GetLastException_1(nullptr, nullptr, 0);
    EXPECT_TRUE(Reports().empty());
}

TEST(Manager, ForeignHandlersAndStreamsAreRefused) {
    Manager manager;
    TakeReports();
    std::uint64_t other = 0;
    auto* handler = reinterpret_cast<ISensorFileHandler*>(&other);
    auto* stream = reinterpret_cast<IVkjsonStream*>(&other);
    EXPECT_EQ(manager->CloseFile(&handler), 26U);
    EXPECT_EQ(OnlyReport(), "26 No file is opened by Zentor.");
    EXPECT_EQ(manager->ReleaseStream(&stream), 56U);
    EXPECT_EQ(OnlyReport(), "56 No stream created by Zentor.");
    const TestFolder folder;
    IVkjsonStream* real = nullptr;
    ASSERT_EQ(manager->ConvertFile(&real, folder.Write("a.csv", "a\n1\n").c_str(), 0), 0U);
    EXPECT_EQ(manager->ReleaseStream(&stream), 57U);
    EXPECT_EQ(OnlyReport(), "57 VKJSON Stream is not created by this Zentor instance.");
    EXPECT_EQ(manager->ReleaseStream(&real), 0U);
    EXPECT_EQ(real, nullptr);
}

TEST(Exports, FormatsComeInOrder) {
    FormatList formats;
    GetSupportedFormats_1(&formats, nullptr, &Suite());
    EXPECT_EQ(formats, (FormatList{{"bvh", "Biovision Hierarchy"},
                                   {"csv", "Comma Seperated Value"},
                                   {"json", "JSON"},
                                   {"tsv", "Tab Seperated Value"},
                                   {"txt", "Tab Seperated Value"},
                                   {"vkjson", "Vektra JSON"}}));
}

TEST(Exports, MessagesInTenLanguages) {
    const std::pair<const char*, const char*> locales[] = {
        {"en_US", "File Format Not Supported."},           {"de_DE", "Das Dateiformat wird nicht unterstützt."},
        {"es_ES", "Formato de archivo no admitido."},      {"fr_FR", "Ce format de fichier n’est pas pris en charge."},
        {"it_IT", "Il formato di file non è supportato."}, {"ja_JP", "このファイル形式はサポートされていません。"},
        {"ko_KR", "지원되지 않는 파일 형식입니다."},       {"pt_BR", "Formato de arquivo não suportado."},
        {"ru_RU", "Формат файла не поддерживается."},      {"zh_CN", "不支持该文件格式。"},
        {"nl_NL", "File Format Not Supported."},
    };
    const TestFolder folder;
    const std::string input = folder.Write("a.unknown", "x");
    for (const auto& [locale, message] : locales) {
        IZentor* zentor = nullptr;
        CreateZentor_1(&zentor, nullptr, nullptr, locale, nullptr, &Suite(), nullptr);
        ASSERT_NE(zentor, nullptr);
        IZentor* second = nullptr;  // whose locale is too late
        CreateZentor_1(&second, nullptr, nullptr, "ru_RU", nullptr, &Suite(), nullptr);
        IVkjsonStream* stream = nullptr;
        EXPECT_EQ(zentor->ConvertFile(&stream, input.c_str(), 0), 25U);
        EXPECT_EQ(OnlyReport(), "25 " + std::string(message));
        std::string text;
        GetLocalizedErrorMsg_1("$$$/ZTError/FileFormatNotSupported=Other text.", nullptr, nullptr, nullptr, nullptr,
                               &text);
        EXPECT_EQ(text, std::string(locale) == "nl_NL" ? "Other text." : message);
        DestroyZentor_1(&second, nullptr);
        DestroyZentor_1(&zentor, nullptr);
    }
}

TEST(Exports, LastExceptionBelongsToItsThreadAndIsCleared) {
    Manager manager;
    LastException(true);
    IVkjsonStream* stream = nullptr;
    ASSERT_EQ(manager->ConvertFile(&stream, "no such file.csv", 0), 4U);
    const Report expected{nullptr, 4, "File not exist at input path:\"no such file.csv\".", -1, -1};
    EXPECT_EQ(LastException(false), expected);
    std::thread([] { EXPECT_EQ(LastException(false), (Report{nullptr, 0, "Unknown exception", 0, 0})); }).join();
    EXPECT_EQ(LastException(true), expected);
    EXPECT_EQ(LastException(false), (Report{nullptr, 0, "Unknown exception", 0, 0}));
    TakeReports();
}

// A callback may use the library: what it is told stays, and clearing comes after it.
TEST(Exports, LastExceptionWhileItsCallbackFails) {
    Manager manager;
    IVkjsonStream* stream = nullptr;
    for (const bool clear : {false, true}) {
        ASSERT_EQ(manager->ConvertFile(&stream, "", 0), 2U);
        struct Nested {
            IZentor* zentor;
            std::string message;
        } nested{manager.operator->(), {}};
        GetLastException_1(
            &nested,
            [](void* context, std::uint32_t, const char* message, std::int64_t, std::int64_t) {
                auto* const inner = static_cast<Nested*>(context);
                IVkjsonStream* none = nullptr;
                inner->zentor->ConvertFile(&none, "missing.csv", 0);
                inner->message = message;
            },
            clear ? 1 : 0);
        EXPECT_EQ(nested.message, "Input file path is NULL.");
        EXPECT_EQ(LastException(true).code, clear ? 0U : 4U);
    }
    TakeReports();
}

TEST(Exports, MessagesAreFormedFromKeys) {
    const Manager manager;
    const struct {
        const char* key;
        const char* parameters[4];
        const char* message;
    } cases[] = {
        {"$$$/ZTError/NoFileOpened=No file is opened by Zentor.", {}, "No file is opened by Zentor."},
        {"$$$/X=^1 and ^2, ^3, ^4, ^1", {"a", "b", "c", "d"}, "a and b, c, d, ^1"},
        {"$$$/X=[^1]", {nullptr}, "[]"},
        {"$$$/X=^1", {"gr\xC3\xBC\xC3\x9F \xF0\x9F\x98\x80"}, "gr\xC3\xBC\xC3\x9F \xF0\x9F\x98\x80"},
        {"no separator", {}, ""},
        {nullptr, {}, ""},
    };
    for (const auto& c : cases) {
        std::string message = "untouched";
        GetLocalizedErrorMsg_1(c.key, c.parameters[0], c.parameters[1], c.parameters[2], c.parameters[3], &message);
        EXPECT_EQ(message, c.message);
    }
}

TEST(Exports, LibraryCallbacksIgnoreForeignObjects) {
    IZentor* zentor = nullptr;
    const ZT_LibraryCallbacks* callbacks = nullptr;
    CreateZentor_1(&zentor, nullptr, nullptr, nullptr, nullptr, &Suite(), &callbacks);
    ASSERT_NE(callbacks, nullptr);
    std::uint64_t other = 0;
    auto* foreign = reinterpret_cast<ZT_PLUGIN::ISharedObject*>(&other);
    callbacks->acquire(foreign);
    callbacks->release(foreign);
    EXPECT_EQ(callbacks->getInternal(foreign), nullptr);
    EXPECT_EQ(other, 0U);
    DestroyZentor_1(&zentor, nullptr);
}

// The order of the functions is the contract with hosts of other compilers.
TEST(Tables, SlotsStandInOrder) {
    Manager manager;
    const TestFolder folder;
    const std::string input = folder.Write("a.csv", "a\n1\n");
    void* const zentor = manager.operator->();
    void* stream = nullptr;
    void* handler = nullptr;
    ASSERT_EQ(
        (Slot<std::uint32_t(void*, void**, const char*, std::uint8_t)>(zentor, 2)(zentor, &stream, input.c_str(), 0)),
        0U);
    EXPECT_EQ((Slot<std::uint32_t(void*, void**, const char*, const char*)>(zentor, 0)(zentor, &handler, "", nullptr)),
              2U);
    EXPECT_EQ((Slot<std::uint32_t(void*, void**)>(zentor, 1)(zentor, &handler)), 1U);
    for (const std::size_t k : {5, 5, 6, 6, 6}) Slot<void(void*)>(zentor, k)(zentor);  // released more than acquired
    EXPECT_NE(Slot<void*(void*)>(zentor, 7)(zentor), nullptr);
    Slot<void(void*, std::uint32_t)>(zentor, 8)(zentor, 1);
    Slot<void(void*, std::uint32_t)>(zentor, 4)(zentor, 1);

    const auto size = Slot<std::uint32_t(void*)>(stream, 3)(stream);
    EXPECT_GT(size, 100U);
    char start[2];
    const std::uint32_t two = 2;
    EXPECT_EQ((Slot<std::uint32_t(void*, void*, const std::uint32_t*)>(stream, 0)(stream, start, &two)), 2U);
    EXPECT_EQ(std::string(start, 2), "{\"");
    EXPECT_EQ(Slot<std::uint32_t(void*)>(stream, 4)(stream), size - 2);
    EXPECT_EQ(Slot<std::uint32_t(void*)>(stream, 5)(stream), 0U);
    EXPECT_TRUE(std::filesystem::exists(PathOf(Slot<const char*(void*)>(stream, 2)(stream))));
    EXPECT_EQ((Slot<std::uint32_t(void*, const char*)>(stream, 1)(stream, (folder / "b.vkjson").c_str())), 0U);
    for (const std::size_t k : {7, 8, 8, 8}) Slot<void(void*)>(stream, k)(stream);
    EXPECT_NE(Slot<void*(void*)>(stream, 9)(stream), nullptr);
    Slot<void(void*, std::uint32_t)>(stream, 10)(stream, 1);
    Slot<void(void*, std::uint32_t)>(stream, 6)(stream, 1);
    EXPECT_EQ((Slot<std::uint32_t(void*, void**)>(zentor, 3)(zentor, &stream)), 0U);
    EXPECT_EQ(stream, nullptr);
    TakeReports();
}

}  // namespace zentor_test
