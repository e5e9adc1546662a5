// What a host hears of long work, and what its cancelling leaves.
#include "errors/progress.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "entry/zentor_impl.h"
#include "files/file_io.h"
#include "host_suite.h"
#include "test_folder.h"

namespace zentor {

namespace {

using zentor_test::PathOf;
using zentor_test::ReadWhole;
using zentor_test::TemporaryFiles;
using zentor_test::TestFolder;

// Hears of every step while it lives. `answer` gets the number of the call, from 1 on.
class Listener {
public:
    explicit Listener(std::function<bool(int)> answer) {
        listener = this;
        answer_ = std::move(answer);
        OfferHostSuite(&zentor_test::Suite());
        SetProgressInterval(std::chrono::milliseconds(0));
        zentor_test::Extensions().progress = [](void*, std::uint64_t done, std::uint64_t total) {
            listener->heard.emplace_back(done, total);
            return std::uint8_t{listener->answer_(static_cast<int>(listener->heard.size()))};
        };
    }
    ~Listener() {
        zentor_test::Extensions().progress = nullptr;
        SetProgressInterval(std::chrono::milliseconds(50));
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    std::vector<std::pair<std::uint64_t, std::uint64_t>> heard;

private:
    static inline Listener* listener = nullptr;
    std::function<bool(int)> answer_;
};

struct Input {
    std::string name;
    std::string content;
};

std::vector<Input> Inputs() {
    std::string table = "a,b\n";
    std::string json = "[0";
    std::string capture = "HIERARCHY\nROOT a\n{\nCHANNELS 2 Xposition Yrotation\n}\nFrames: 1\nFrame Time: 0.01\n";
    for (int k = 0; k < 5000; ++k) {
        table += "1.5,x\n";
        json += ",1.5";
    }
    for (int k = 0; k < 40000; ++k) capture += "1.25123456 -3.1234567\n";
    return {{"in.csv", table}, {"in.json", json + "]"}, {"in.bvh", capture}};
}

// Opens the input; with an output, keeps the document there.
std::uint32_t Open(ZentorImpl& zentor, const std::string& input, const std::string& output) {
    ISensorFileHandler* handler = nullptr;
    const std::uint32_t code = zentor.OpenFile(&handler, input.c_str(), output.c_str());
    if (handler != nullptr) zentor.CloseFile(&handler);
    return code;
}

std::size_t EntriesOf(const TestFolder& folder) {
    const std::filesystem::directory_iterator entries(PathOf(folder.Path()));
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

}  // namespace

TEST(Progress, RisesToTheWhole) {
    const TestFolder folder;
    for (const Input& made : Inputs()) {
        const std::string input = folder.Write(made.name, made.content);
        ZentorImpl zentor;
        const Listener listener([](int) { return true; });
        EXPECT_EQ(Open(zentor, input, ""), 0U);
        ASSERT_GT(listener.heard.size(), 10U) << made.name;
        std::uint64_t last = 0;
        for (const auto& [done, total] : listener.heard) {
            EXPECT_EQ(total, made.content.size()) << made.name;
            EXPECT_LE(done, total);
            EXPECT_GE(done, last) << made.name;
            last = done;
        }
        EXPECT_EQ(last, made.content.size());
        EXPECT_GT(listener.heard[listener.heard.size() / 2].first, 0U) << made.name;
    }
}

TEST(Progress, CancellingAnywhereLeavesNothing) {
    const TestFolder folder;
    const std::size_t before = TemporaryFiles();
    for (const Input& made : Inputs()) {
        const TestFolder outputs;
        const std::string input = folder.Write(made.name, made.content);
        const std::string old = outputs.Write("old.vkjson", "before");
        const std::string fresh = outputs.Path() + "/fresh.vkjson";
        int calls = 0;
        const std::function<std::uint32_t(ZentorImpl&)> works[] = {
            [&](ZentorImpl& zentor) { return Open(zentor, input, old); },
            [&](ZentorImpl& zentor) { return Open(zentor, input, fresh); },
            [&](ZentorImpl& zentor) { return Open(zentor, input, ""); },
            [&](ZentorImpl& zentor) {
                IVkjsonStream* stream = nullptr;
                return zentor.ConvertFile(&stream, input.c_str(), 1);
            }};
        for (const auto& work : works) {
            for (int n = 1;; n += 1 + calls / 10) {
                ZentorImpl zentor;
                const Listener listener([n](int call) { return call != n; });
                const std::uint32_t code = work(zentor);
                calls = static_cast<int>(listener.heard.size());
                if (code == 0) break;
                EXPECT_EQ(code, ZT_CANCELLED);
                EXPECT_EQ(calls, n) << "was asked again";
                EXPECT_EQ(ReadWhole(old), "before") << made.name << n;
                EXPECT_EQ(EntriesOf(outputs), 1U) << made.name << n;
                EXPECT_EQ(TemporaryFiles(), before) << made.name << n;
            }
            outputs.Write("old.vkjson", "before");
            DeleteQuietly(fresh);
        }
    }
}

TEST(Progress, CallbacksMayUseTheLibraryButNotWhatCallsThem) {
    const TestFolder folder;
    const std::string input = folder.Write("in.csv", "a\n1\n");
    const std::string other = folder.Write("other.csv", "a\n1\n");
    ZentorImpl zentor;
    std::vector<std::uint32_t> codes;
    {
        bool isInside = false;
        const Listener listener([&](int) {
            if (std::exchange(isInside, true)) return true;
            codes = {Open(zentor, input, ""), Open(zentor, other, ""),
                     Open(zentor, other, folder.Path() + "/o.vkjson")};
            return true;
        });
        EXPECT_EQ(Open(zentor, input, ""), 0U);
    }
    EXPECT_EQ(codes, (std::vector<std::uint32_t>{ZT_INVALID_POINTER, 0, 0}));
    const Listener listener([](int) -> bool { throw std::runtime_error("of the host's"); });
    EXPECT_EQ(Open(zentor, input, ""), ZT_UNKNOWN);
}

TEST(Notices, AnExceptionOutOfTheCallbackLeavesNothing) {
    const TestFolder folder;
    const std::string input = folder.Write("in.csv", "a,b\n1,\n");
    const std::string output = folder.Write("out.vkjson", "before");
    const std::size_t before = TemporaryFiles();
    ZentorImpl zentor;
    zentor_test::Suite();
    zentor_test::Extensions().notice = [](void*, std::uint32_t, const char*, std::uint64_t, std::int64_t,
                                          std::int64_t) { throw std::runtime_error("of the host's"); };
    OfferHostSuite(&zentor_test::Suite());
    EXPECT_EQ(Open(zentor, input, output), ZT_UNKNOWN);
    EXPECT_EQ(Open(zentor, input, ""), ZT_UNKNOWN);
    zentor_test::Extensions().notice = nullptr;
    EXPECT_EQ(ReadWhole(output), "before");
    EXPECT_EQ(EntriesOf(folder), 2U);
    EXPECT_EQ(TemporaryFiles(), before);
}

}  // namespace zentor
