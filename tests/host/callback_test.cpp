// Callbacks that do what a host should not do in them: they close what is calling them, or let exceptions out.
#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>
#include <vector>

#include "test_folder.h"
#include "zentor/zentor.h"

namespace {

using zentor_test::TestFolder;

// What every callback does. Reports are kept in any case.
std::function<void()> act;
std::vector<std::string> reports;

void Act() {
    if (const auto acting = act) acting();  // a copy: it may set another
}

const ZT_HostSuite& Suite() {
    static const ZT_DataPathCallbacks dataPaths{
        sizeof(ZT_DataPathCallbacks), [](void*, const char*, std::int64_t, std::uint64_t, std::uint8_t) { Act(); }};
    static const ZT_NodeInfoCallbacks nodeInfo{
        sizeof(ZT_NodeInfoCallbacks),
        [](void*, std::uint32_t, const char*, std::uint64_t, const char*, std::uint64_t) { Act(); }};
    static const ZT_StaticDataCallbacks staticData = [] {
        ZT_StaticDataCallbacks table{};
        table.setNumber = [](void*, double) { Act(); };
        return table;
    }();
    static const ZT_DynamicDataCallbacks dynamicData = [] {
        ZT_DynamicDataCallbacks table{};
        table.setNames = [](void*, const char*, std::uint64_t, const char*, std::uint64_t) { Act(); };
        return table;
    }();
    static const ZT_SampleCallbacks samples = [] {
        ZT_SampleCallbacks table{};
        table.addNumberArray = [](void*, const char*, std::uint64_t, const double*, std::uint64_t) { Act(); };
        return table;
    }();
    static const ZT_FileInfoCallbacks fileInfo = [] {
        ZT_FileInfoCallbacks table{};
        table.setFileInfo = [](void*, std::uint32_t, std::uint32_t, const char*, std::uint64_t, const char*,
                               std::uint64_t) { Act(); };
        return table;
    }();
    static const ZT_HostSuite suite = [] {
        ZT_HostSuite table{};
        table.dataPaths = &dataPaths;
        table.nodeInfo = &nodeInfo;
        table.staticData = &staticData;
        table.dynamicData = &dynamicData;
        table.samples = &samples;
        table.fileInfo = &fileInfo;
        table.addFormat = [](void*, const char*, const char*) { Act(); };
        table.localizedMessage = [](void*, const char*, std::uint64_t) { Act(); };
        table.reportError = [](void*, std::uint32_t code, const char* message, std::int64_t, std::int64_t) {
            reports.push_back(std::to_string(code) + " " + message);
            Act();
        };
        return table;
    }();
    return suite;
}

constexpr const char* kCapture =
    "HIERARCHY\nROOT a\n{\nOFFSET 1 2 3\nCHANNELS 2 Xposition Yposition\n}\nMOTION\nFrames: 2\nFrame Time: 0.01\n1 "
    "2\n3 "
    "4\n";

// A manager with an open capture.
struct Host {
    Host() {
        reports.clear();
        CreateZentor_1(&zentor, nullptr, nullptr, "en_US", nullptr, &Suite(), nullptr);
        EXPECT_EQ(zentor->OpenFile(&handler, input.c_str(), nullptr), 0U);
    }
    ~Host() {
        act = nullptr;
        DestroyZentor_1(&zentor, nullptr);
        EXPECT_EQ(zentor, nullptr);
    }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    const TestFolder folder;
    const std::string input = folder.Write("a.bvh", kCapture);
    IZentor* zentor = nullptr;
    ISensorFileHandler* handler = nullptr;
};

struct Query {
    const char* name;
    ZT_Result (*run)(ISensorFileHandler& handler);
    bool fails = false;  // its only callback is the report
};

const Query kQueries[] = {
    {"root children", [](auto& handler) { return handler.GetRootChildrenClient(nullptr); }},
    {"group children", [](auto& handler) { return handler.GetGroupChildrenClient("[0]", nullptr); }},
    {"child info", [](auto& handler) { return handler.GetGroupChildInfoClient("[0]", nullptr); }},
    {"dynamic data", [](auto& handler) { return handler.GetDynamicDataInfoClient("[0][1]", nullptr); }},
    {"samples",
     [](auto& handler) {
         return handler.GetDynamicSamplesClient("[0][1]", {0, 1}, {1, 1}, nullptr);
     }},
    {"one sample",
     [](auto& handler) {
         return handler.GetDynamicSampleClient("[0][1]", {0, 1}, nullptr);
     }},
    {"file info", [](auto& handler) { return handler.GetFileInfoClient(nullptr); }},
    {"report", [](auto& handler) { return handler.GetStaticDataInfoClient("[0]", nullptr); }, true},
};

std::string LastException() {
    std::string last;
    GetLastException_1(
        &last,
        [](void* text, std::uint32_t code, const char* message, std::int64_t, std::int64_t) {
            *static_cast<std::string*>(text) = std::to_string(code) + " " + message;
        },
        0);
    return last;
}

constexpr const char* kUnknown = "23 Unknown exception occurred.";

}  // namespace

TEST(Callbacks, CannotCloseWhatCallsThem) {
    for (const Query& query : kQueries) {
        Host host;
        int calls = 0;
        act = [&] {
            act = nullptr;
            ++calls;
            ISensorFileHandler* closed = host.handler;
            EXPECT_EQ(host.zentor->CloseFile(&closed), 1U) << query.name;
            EXPECT_EQ(closed, host.handler);
            IZentor* destroyed = host.zentor;
            DestroyZentor_1(&destroyed, nullptr);
            EXPECT_EQ(destroyed, host.zentor);
            EXPECT_EQ(reports.back(), "1 Invalid pointer to \"IZentor\".");
            // Everything else works, and so does giving back what was taken in the callback.
            IZentor* again = nullptr;
            CreateZentor_1(&again, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
            EXPECT_EQ(again->OpenFile(&closed, host.input.c_str(), nullptr), 0U);
            EXPECT_EQ(closed, host.handler);
            EXPECT_EQ(closed->GetFileInfoClient(nullptr), 0U);
            EXPECT_EQ(again->CloseFile(&closed), 0U);
            EXPECT_NE(closed, nullptr);
            DestroyZentor_1(&again, nullptr);
            EXPECT_EQ(again, nullptr);
        };
        EXPECT_EQ(query.run(*host.handler), query.fails ? 33U : 0U) << query.name;
        EXPECT_EQ(calls, 1) << query.name;
        EXPECT_EQ(host.handler->GetFileInfoClient(nullptr), 0U);
        EXPECT_EQ(host.zentor->CloseFile(&host.handler), 0U) << "outside a callback it can";
        EXPECT_EQ(host.handler, nullptr);
    }
}

TEST(Callbacks, CannotReleaseTheStreamThatCallsThem) {
    Host host;
    IVkjsonStream* stream = nullptr;
    ASSERT_EQ(host.zentor->ConvertFile(&stream, host.input.c_str(), 0), 0U);
    act = [&] {
        act = nullptr;
        IVkjsonStream* released = stream;
        EXPECT_EQ(host.zentor->ReleaseStream(&released), 1U);
        EXPECT_EQ(released, stream);
        EXPECT_EQ(reports.back(), "1 Invalid pointer to \"IVkjsonStream\".");
    };
    EXPECT_EQ(stream->SaveTo(nullptr), 2U);
    EXPECT_EQ(reports.size(), 2U);
    EXPECT_EQ(host.zentor->ReleaseStream(&stream), 0U);
    EXPECT_EQ(stream, nullptr);
}

TEST(Callbacks, ExceptionsBecomeCode23) {
    const std::function<void()> throwing[] = {[] { throw 5; }, [] { throw std::bad_alloc(); }};
    for (const auto& thrown : throwing) {
        Host host;
        for (const Query& query : kQueries) {
            act = thrown;
            reports.clear();
            EXPECT_EQ(query.run(*host.handler), 23U) << query.name;
            // A report that fails is not reported.
            EXPECT_EQ(reports.size(), 1U);
            EXPECT_EQ(reports.back().substr(0, 2), query.fails ? "33" : "23");
            EXPECT_EQ(LastException(), kUnknown) << query.name;
            act = nullptr;
            EXPECT_EQ(host.handler->GetFileInfoClient(nullptr), 0U) << "the handler is as usable as before";
        }
        act = [&] {
            act = nullptr;
            thrown();
        };
        reports.clear();
        GetSupportedFormats_1(nullptr, nullptr, nullptr);
        EXPECT_EQ(reports, std::vector<std::string>{kUnknown});
        act = thrown;
        reports.clear();
        IVkjsonStream* stream = nullptr;
        EXPECT_EQ(host.zentor->ConvertFile(&stream, "", 0), 23U);
        GetLocalizedErrorMsg_1("$$$/X=x", nullptr, nullptr, nullptr, nullptr, nullptr);
        IZentor* none = nullptr;
        DestroyZentor_1(&none, nullptr);
        EXPECT_EQ(reports, (std::vector<std::string>{"2 Input file path is NULL.", kUnknown,
                                                     "1 Invalid pointer to \"IZentor\"."}));
        EXPECT_EQ(LastException(), kUnknown);
        act = nullptr;
    }
}

TEST(Callbacks, ExceptionOutOfTheLastException) {
    Host host;
    IVkjsonStream* stream = nullptr;
    ASSERT_EQ(host.zentor->ConvertFile(&stream, "", 0), 2U);
    GetLastException_1(
        nullptr, [](void*, std::uint32_t, const char*, std::int64_t, std::int64_t) { throw 5; }, 1);
    EXPECT_EQ(LastException(), kUnknown);
}

// Messages and names are in the language of the manager, as long as there is one.
TEST(Locale, EndsWithTheLastManager) {
    const auto messageNow = [] {
        IZentor* none = nullptr;
        reports.clear();
        DestroyZentor_1(&none, nullptr);
        return reports.back();
    };
    const std::string english = messageNow();
    EXPECT_EQ(english, "1 Invalid pointer to \"IZentor\".");
    IZentor* zentor = nullptr;
    CreateZentor_1(&zentor, nullptr, nullptr, "de_DE", nullptr, &Suite(), nullptr);
    const std::string german = messageNow();
    EXPECT_NE(german, english);
    DestroyZentor_1(&zentor, nullptr);
    EXPECT_EQ(messageNow(), english);
    CreateZentor_1(&zentor, nullptr, nullptr, "de_DE", nullptr, &Suite(), nullptr);
    EXPECT_EQ(messageNow(), german);
    DestroyZentor_1(&zentor, nullptr);
}
