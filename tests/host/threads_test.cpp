// Threads that open, query and close the same and different files at once.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "test_folder.h"
#include "zentor/records.h"

namespace {

using zentor_test::TestFolder;
using zentor_test::Utf8Of;

constexpr int kThreads = 4;
constexpr int kRounds = 40;

std::atomic<int> reports{0};

IZentor* CreateManager() {
    static const ZT_StaticDataCallbacks staticData = [] {
        ZT_StaticDataCallbacks table{};
        table.setNumber = [](void* number, double value) { *static_cast<double*>(number) = value; };
        return table;
    }();
    static const ZT_HostSuite suite = [] {
        ZT_HostSuite table{};
        table.staticData = &staticData;
        table.reportError = [](void*, std::uint32_t, const char*, std::int64_t, std::int64_t) { ++reports; };
        return table;
    }();
    IZentor* manager = nullptr;
    CreateZentor_1(&manager, nullptr, nullptr, "en_US", nullptr, &suite, nullptr);
    return manager;
}

// Runs `body` in all threads, each with a number of its own.
void InThreads(const std::function<void(int)>& body) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) threads.emplace_back(body, thread);
    for (std::thread& thread : threads) thread.join();
}

std::string TableOf(int number) { return "n\n" + std::to_string(number) + "\n"; }

double FirstValue(ISensorFileHandler* handler) {
    ZT_StaticDataInfo info;
    if (handler->GetStaticDataInfo("[0][0]", &info) != 0) return -1;
    const double* const value = boost::get<double>(&info.value);
    return value == nullptr ? -1 : *value;
}

// The same through the suite, whose callbacks get what this thread hands over.
double FirstValueOfClient(ISensorFileHandler* handler) {
    double value = -1;
    return handler->GetStaticDataInfoClient("[0][0]", &value) == 0 ? value : -1;
}

// The document of a table; empty when that failed.
std::string Converted(IZentor* manager, const std::string& table) {
    IVkjsonStream* stream = nullptr;
    if (manager->ConvertFile(&stream, table.c_str(), 1) != 0) return {};
    std::string document(stream->Size(), '\0');
    const auto size = static_cast<std::uint32_t>(document.size());
    if (stream->Read(document.data(), &size) != size || manager->ReleaseStream(&stream) != 0) return {};
    return document;
}

std::uint32_t LastCode() {
    std::uint32_t last = 0;
    GetLastException_1(
        &last,
        [](void* code, std::uint32_t value, const char*, std::int64_t, std::int64_t) {
            *static_cast<std::uint32_t*>(code) = value;
        },
        1);
    return last;
}

}  // namespace

// The first who ask a group for a child by name, or a node for samples, find out for the others.
TEST(Threads, AskOneDocumentForTheFirstTimeAtOnce) {
    const TestFolder folder;
    IZentor* manager = CreateManager();
    ASSERT_NE(manager, nullptr);
    std::string table = "a,b,c\n";
    for (int row = 0; row < 300; ++row) table += "1,2," + std::to_string(row) + "\n";
    const std::string path = folder.Write("table.csv", table);
    const std::string capture = folder.Write("c.bvh",
                                             "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 1 Xposition\n}\n"
                                             "MOTION\nFrames: 3\nFrame Time: 0.04\n1\n2\n3\n");
    std::atomic<int> wrong{0};
    for (int round = 0; round < kRounds / 4; ++round) {
        ISensorFileHandler* document = nullptr;
        ISensorFileHandler* motion = nullptr;
        ASSERT_EQ(manager->OpenFile(&document, path.c_str(), nullptr), 0U);
        ASSERT_EQ(manager->OpenFile(&motion, capture.c_str(), nullptr), 0U);
        InThreads([&](int thread) {
            ZT_StaticDataInfo info;
            DynamicDataSampleSet samples;
            for (int k = 0; k < 4; ++k) {
                // The third of the columns, each of which is a group and 300 values.
                const int row = (k * 7 + thread) % 300;
                const std::string name = "[\"data602\"][\"data" + std::to_string(603 + row) + "\"]";
                const bool isRight =
                    document->GetStaticDataInfo(name.c_str(), &info) == 0 && boost::get<double>(info.value) == row;
                if (!isRight) ++wrong;
                if (motion->GetDynamicSamples("[0][1]", {0, 1}, {1, 1}, &samples) != 0 || samples.samples.size() != 3) {
                    ++wrong;
                }
            }
        });
        manager->CloseFile(&document);
        manager->CloseFile(&motion);
    }
    EXPECT_EQ(wrong, 0);
    DestroyZentor_1(&manager, nullptr);
}

TEST(Threads, SameAndDifferentFiles) {
    reports = 0;
    const TestFolder folder;
    const std::size_t temporary = zentor_test::TemporaryFiles();
    IZentor* manager = CreateManager();
    ASSERT_NE(manager, nullptr);
    const std::string shared = folder.Write("shared.csv", TableOf(1000));
    const std::string broken = folder.Write("broken.vkjson", "{\"version\"");
    for (int thread = 0; thread < kThreads; ++thread) {
        folder.Write("own" + std::to_string(thread) + ".csv", TableOf(thread));
    }
    std::atomic<int> wrong{0};
    const auto expect = [&](bool holds) {
        if (!holds) ++wrong;
    };
    std::vector<ISensorFileHandler*> kept(kThreads);
    InThreads([&](int thread) {
        const std::string own = folder / ("own" + std::to_string(thread) + ".csv");
        const std::string output = folder / ("out" + std::to_string(thread) + ".vkjson");
        for (int round = 0; round < kRounds; ++round) {
            ISensorFileHandler* sharedHandler = nullptr;
            ISensorFileHandler* ownHandler = nullptr;
            ISensorFileHandler* none = nullptr;
            expect(manager->OpenFile(&sharedHandler, shared.c_str(), nullptr) == 0);
            expect(manager->OpenFile(&ownHandler, own.c_str(), round % 2 == 0 ? nullptr : output.c_str()) == 0);
            // Every thread has failures of its own.
            const bool isDamaged = (thread + round) % 2 == 0;
            const std::string missing = folder / "missing";
            const std::uint32_t code = isDamaged ? 32 : 4;
            expect(manager->OpenFile(&none, isDamaged ? broken.c_str() : missing.c_str(), nullptr) == code);
            expect(none == nullptr && LastCode() == code);
            if (sharedHandler == nullptr || ownHandler == nullptr) continue;
            expect(FirstValue(ownHandler) == thread && FirstValueOfClient(ownHandler) == thread);
            ZT_FileInfo info;
            expect(sharedHandler->GetFileInfo(&info) == 0 && info.version == "vkjson2.0.0");
            expect(FirstValue(sharedHandler) == 1000);
            expect(manager->CloseFile(&ownHandler) == 0 && ownHandler == nullptr);
            expect(manager->CloseFile(&sharedHandler) == 0);
        }
        ISensorFileHandler*& last = kept[static_cast<std::size_t>(thread)];
        expect(manager->OpenFile(&last, output.c_str(), nullptr) == 0 && FirstValue(last) == thread);
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(reports, kThreads * kRounds);
    for (ISensorFileHandler* handler : kept) {
        ISensorFileHandler* again = handler;
        EXPECT_EQ(manager->CloseFile(&handler), 0U);
        EXPECT_EQ(manager->CloseFile(&again), again == kept.back() ? 26U : 27U) << "nothing is open after the last";
    }
    DestroyZentor_1(&manager, nullptr);
    EXPECT_EQ(zentor_test::TemporaryFiles(), temporary);
}

TEST(Threads, OneOpensForAll) {
    const TestFolder folder;
    IZentor* manager = CreateManager();
    const std::string table = folder.Write("a.csv", TableOf(7));
    for (int round = 0; round < kRounds; ++round) {
        std::vector<ISensorFileHandler*> handlers(kThreads);
        InThreads([&](int thread) {
            const std::string spelling = thread % 2 == 0 ? table : folder.Path() + "/./a.csv";
            manager->OpenFile(&handlers[static_cast<std::size_t>(thread)], spelling.c_str(), nullptr);
        });
        for (ISensorFileHandler* const handler : handlers) EXPECT_EQ(handler, handlers[0]);
        ASSERT_NE(handlers[0], nullptr);
        EXPECT_EQ(FirstValue(handlers[0]), 7);
        InThreads([&](int thread) { manager->CloseFile(&handlers[static_cast<std::size_t>(thread)]); });
        EXPECT_EQ(std::count(handlers.begin(), handlers.end(), nullptr), 1) << "only the last close takes it away";
        EXPECT_EQ(manager->CloseFile(&handlers[0]), handlers[0] == nullptr ? 1U : 26U);
    }
    DestroyZentor_1(&manager, nullptr);
}

TEST(Threads, OneOutputForDifferentInputs) {
    const TestFolder folder;
    IZentor* manager = CreateManager();
    const std::string output = folder.Write("out.vkjson", "before");
    for (int thread = 0; thread < kThreads; ++thread) {
        folder.Write(std::to_string(thread) + ".csv", TableOf(thread));
    }
    std::atomic<int> wrong{0};
    InThreads([&](int thread) {
        const std::string table = folder / (std::to_string(thread) + ".csv");
        for (int round = 0; round < kRounds; ++round) {
            ISensorFileHandler* handler = nullptr;
            const ZT_Result result = manager->OpenFile(&handler, table.c_str(), output.c_str());
            // The output of one that is open is refused to the others.
            if (result != (handler == nullptr ? 7U : 0U)) ++wrong;
            if (handler == nullptr) continue;
            if (FirstValue(handler) != thread) ++wrong;
            if (manager->CloseFile(&handler) != 0) ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
    DestroyZentor_1(&manager, nullptr);
    EXPECT_EQ(folder.FileCount(), std::size_t{kThreads} + 1);
}

TEST(Threads, TablesConvertedAtOnce) {
    const TestFolder folder;
    const std::size_t temporary = zentor_test::TemporaryFiles();
    IZentor* manager = CreateManager();
    const auto tableOf = [&](int thread) { return folder / (std::to_string(thread) + ".csv"); };
    std::vector<std::string> alone;
    for (int thread = 0; thread < kThreads; ++thread) {
        folder.Write(std::to_string(thread) + ".csv", TableOf(thread));
        alone.push_back(Converted(manager, tableOf(thread)));
        ASSERT_NE(alone.back(), "");
    }
    std::atomic<int> wrong{0};
    InThreads([&](int thread) {
        for (int round = 0; round < kRounds; ++round) {
            const int number = (thread + round) % kThreads;  // the same table and different ones
            if (Converted(manager, tableOf(number)) != alone[static_cast<std::size_t>(number)]) ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(zentor_test::TemporaryFiles(), temporary);
    DestroyZentor_1(&manager, nullptr);
}

TEST(Threads, ManagersComeAndGo) {
    const TestFolder folder;
    const std::string table = folder.Write("a.csv", TableOf(3));
    std::atomic<int> wrong{0};
    InThreads([&](int) {
        for (int round = 0; round < kRounds; ++round) {
            IZentor* manager = CreateManager();
            IVkjsonStream* stream = nullptr;
            if (manager->ConvertFile(&stream, table.c_str(), 1) != 0 || manager->ReleaseStream(&stream) != 0) ++wrong;
            DestroyZentor_1(&manager, nullptr);
        }
    });
    EXPECT_EQ(wrong, 0);
}
