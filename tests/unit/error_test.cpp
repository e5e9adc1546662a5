// Errors: message texts, raising, the table of codes, and reports to the host.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <set>
#include <thread>
#include <vector>

#include "errors/host_boundary.h"
#include "errors/host_tables.h"
#include "errors/last_exception.h"
#include "errors/raise.h"
#include "failure.h"
#include "host_suite.h"
#include "util/thread_slot.h"

namespace zentor_test {

using namespace zentor;

namespace {

// The calling thread's record, which is empty afterwards.
LastException TakeLastException() {
    const auto last = GetLastException();
    ClearLastException();
    return last == nullptr ? LastException() : *last;
}

struct Report {
    void* context;
    std::uint32_t code;
    std::string message;
    std::int64_t extra1;
    std::int64_t extra2;

    bool operator==(const Report&) const = default;
};

std::vector<Report> reports;

void KeepReport(void* context, std::uint32_t code, const char* message, std::int64_t extra1, std::int64_t extra2) {
    reports.push_back({context, code, message, extra1, extra2});
}

}  // namespace

// A host can have used up what the system has; that costs no more than what would be kept in the slot.
TEST(ThreadSlot, NoneLeft) {
    constexpr std::size_t kMoreThanAnySystemHas = 10000;
    std::vector<std::unique_ptr<os::ThreadSlot>> slots;
    int value = 0;
    bool isUsable = true;
    while (isUsable && slots.size() < kMoreThanAnySystemHas) {
        slots.push_back(std::make_unique<os::ThreadSlot>(nullptr));
        isUsable = slots.back()->Set(&value);
        if (isUsable) slots.back()->Set(nullptr);
    }
    EXPECT_FALSE(isUsable);
    EXPECT_EQ(slots.back()->Get(), nullptr);
    // The library's own were made when it was loaded.
    SetLastException({7, "kept", -1, -1});
    EXPECT_EQ(TakeLastException().code, 7U);
}

// A host that was compiled with another version of the header has tables of another length: nothing beyond their end is
// read, and nothing that lies across it is used.
TEST(HostTables, ShortAndLongOnes) {
    const ZT_StaticDataCallbacks full = [] {
        ZT_StaticDataCallbacks table{};
        table.setNames = [](void*, const char*, std::uint64_t, const char*, std::uint64_t) {};
        table.setNumber = [](void*, double) {};
        table.setString = [](void*, const char*, std::uint64_t) {};
        table.setBoolean = [](void*, std::uint8_t) {};
        table.setNumberArray = [](void*, const double*, std::uint64_t) {};
        return table;
    }();
    for (std::uint32_t size = 4; size <= sizeof full + 16; ++size) {
        const auto memory = std::make_unique<char[]>(size);  // what is read beyond it is found
        std::memcpy(memory.get(), &full, std::min<std::size_t>(size, sizeof full));
        std::memcpy(memory.get(), &size, sizeof size);
        const auto table = ReadHostTable(reinterpret_cast<const ZT_StaticDataCallbacks*>(memory.get()));
        EXPECT_EQ(table.setNames, size >= 16 ? full.setNames : nullptr) << size;
        EXPECT_EQ(table.setNumber, size >= 24 ? full.setNumber : nullptr) << size;
        EXPECT_EQ(table.setString, size >= 32 ? full.setString : nullptr) << size;
        EXPECT_EQ(table.setBoolean, size >= 40 ? full.setBoolean : nullptr) << size;
        EXPECT_EQ(table.setNumberArray, size >= 48 ? full.setNumberArray : nullptr) << size;
    }
    ZT_StaticDataCallbacks empty = full;
    empty.size = 0;
    EXPECT_EQ(ReadHostTable(&empty).setNames, nullptr);
    EXPECT_EQ(ReadHostTable<ZT_StaticDataCallbacks>(nullptr).setNames, nullptr);
}

TEST(Message, Forming) {
    using Parameters = std::array<ZT_ErrorParam, 4>;
    char largest[400];
    std::snprintf(largest, sizeof largest, "%f", std::numeric_limits<double>::max());
    const std::string owned = "owned";
    const struct {
        const char* key;
        Parameters parameters;
        std::string message;
    } cases[] = {{"$$$/ZTError/K=^1, ^2, ^3, ^4", {{-5, 4294967295u, 1.5, "text"}}, "-5, 4294967295, 1.500000, text"},
                 {"K=^4^3^2^1", {{"a", owned, std::string_view("cd").substr(1), std::int8_t{-1}}}, "-1downeda"},
                 {"K=^1", {{std::numeric_limits<std::int64_t>::min()}}, "-9223372036854775808"},
                 {"K=^1", {{std::numeric_limits<std::uint64_t>::max()}}, "18446744073709551615"},
                 {"K=^1", {{std::numeric_limits<double>::max()}}, largest},
                 {"K=^1 and ^1 again", {{"this"}}, "this and ^1 again"},
                 {"K=^1 and ^2", {{{}, "that"}}, "^1 and that"},  // no parameter: the placeholder stays
                 {"K=^1 and ^2", {{"", "that"}}, " and that"},    // an empty text is a parameter
                 {"K=^1 then ^2", {{"see ^2", "B"}}, "see B then ^2"},
                 {"K=^2 then ^1", {{"see ^2", "B"}}, "B then see ^2"},
                 {"K=no place", {{"a", "b", "c", "d"}}, "no place"},
                 {"K=^1=^5", {{"a"}}, "a=^5"},  // the key ends at its first "="
                 {"K without text", {{"a"}}, ""},
                 {"K=^1|\xC3\xA9", {{"a\xFFz\xE2\x82"}}, "a\uFFFDz\uFFFD|\u00E9"},
                 {"K=bad \xFF text ^1", {{"\U0001F600"}}, "bad \uFFFD text \U0001F600"}};
    for (const auto& [key, parameters, message] : cases) EXPECT_EQ(FormMessage(key, parameters), message) << key;
}

TEST(Raise, CarriesAndKeepsEverything) {
    try {
        Raise({2008, kConverterFailure, 70, -2});
        FAIL();
    } catch (const std::runtime_error& caught) {
        const auto& failure = dynamic_cast<const ns_sensor::ZT_Exception&>(caught);
        const auto copy = failure;
        EXPECT_EQ(copy.code(), 2008u);
        EXPECT_STREQ(copy.what(), "Internal converter failure");
        EXPECT_EQ(copy.extra1(), 70);
        EXPECT_EQ(copy.extra2(), -2);
    }
    // The record survives the catch; another thread has its own.
    std::thread([] {
        EXPECT_EQ(TakeLastException().code, 0u);
        EXPECT_EQ(FailureOf([] { Raise(kInvalidPointer, Quoted("x")); }), "1: Invalid pointer to \"x\".");
        EXPECT_EQ(FailureOf([] { Raise({kSeekFileMode, 9}, "y"); }), "10: y, Invalid Seek mode. [9]");
        const LastException latest = TakeLastException();
        EXPECT_EQ(latest.code, 10u);
        EXPECT_EQ(latest.message, "y, Invalid Seek mode.");
        EXPECT_EQ(latest.extra1, 9);
    }).join();
    const LastException kept = TakeLastException();
    EXPECT_EQ(kept.code, 2008u);
    EXPECT_EQ(kept.message, "Internal converter failure");
    EXPECT_EQ(kept.extra1, 70);
    EXPECT_EQ(kept.extra2, -2);
    const LastException empty = TakeLastException();
    EXPECT_EQ(empty.code, 0u);
    EXPECT_EQ(empty.message, "");
}

TEST(ErrorTable, EveryEntryIsWellFormed) {
    const std::string prefix = "$$$/ZTError";
    std::set<std::pair<std::uint32_t, std::string>> seen;
    std::set<std::string> withoutSlash;
    for (const ErrorEntry& entry : kErrorTable) {
        const std::string key = entry.key;
        const std::size_t separator = key.find('=');
        ASSERT_NE(separator, std::string::npos) << key;
        const std::string path = key.substr(0, separator);
        EXPECT_TRUE(path.starts_with(prefix)) << key;
        EXPECT_EQ(path.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_/$"),
                  std::string::npos)
            << key;
        EXPECT_GT(key.size(), separator + 1) << key;
        EXPECT_NE(entry.code, 0u) << key;
        EXPECT_TRUE(seen.emplace(entry.code, key).second) << "twice: " << key;
        if (path[prefix.size()] != '/') withoutSlash.insert(path);
    }
    EXPECT_EQ(withoutSlash, std::set<std::string>{"$$$/ZTErrorFile_IO/Write/Failure"});
    const std::pair<std::uint32_t, std::string> contract[] = {
        {4, "$$$/ZTError/File_IO/NotAFile=^1, path exists but is not a file."},
        {21, "$$$/ZTError/File_IO/Rename=^1, New path does not exists."},
        {22, "$$$/ZTError/File_IO/Rename=^1, Rename failure."},
        {23, "$$$/ZTError/UnknownExceptionCaught=Unknown exception occurred."},
        {34, "$$$/ZTErrorFile_IO/Write/Failure=^1, Disk Full."},
        {34, "$$$/ZTError/UnknownExceptionCaught=Unknown exception occurred."},
        {55, "$$$/ZTErrorFile_IO/Write/Failure=^1,WriteFile failure."},
    };
    for (const auto& entry : contract) EXPECT_EQ(seen.count(entry), 1u) << entry.second;
}

TEST(HostBoundary, ReportsWhatEscapes) {
    ZT_HostSuite& suite = zentor_test::Suite();
    static const ZT_HostSuite other{};
    int context = 0;
    const auto run = [&](auto&& body) {
        reports.clear();
        return RunAtBoundary(&context, body);
    };
    // Without a suite, and then with one that has no entry for reports, the failure is kept and returned all the same.
    suite.reportError = nullptr;
    for (int step = 0; step < 2; ++step) {
        EXPECT_EQ(run([] { throw std::bad_alloc(); }), 34u);
        EXPECT_TRUE(reports.empty());
        EXPECT_EQ(TakeLastException().message, "Unable to allocate memory.");
        OfferHostSuite(nullptr);
        OfferHostSuite(&suite);
    }
    OfferHostSuite(&other);
    EXPECT_EQ(HostSuite(), &suite);

    suite.reportError = KeepReport;
    const auto expectReport = [&](std::uint32_t code, const char* message, std::int64_t extra1 = -1) {
        EXPECT_EQ(reports, (std::vector<Report>{{&context, code, message, extra1, -1}}));
    };
    EXPECT_EQ(run([] {}), 0u);
    EXPECT_TRUE(reports.empty());
    EXPECT_EQ(run([] { Raise({kSeekFileMode, 12}, "x"); }), 10u);
    expectReport(10, "x, Invalid Seek mode.", 12);
    EXPECT_EQ(run([] { throw ns_sensor::ZT_Exception(77, "", 5, -1); }), 77u);
    expectReport(77, "Unknown exception", 5);
    EXPECT_EQ(run([] { throw std::bad_array_new_length(); }), 34u);
    expectReport(34, "Unable to allocate memory.");
    EXPECT_EQ(TakeLastException().code, 34u);
    const auto unknown = [&](auto&& body) {
        EXPECT_EQ(run(body), 23u);
        expectReport(23, "Unknown exception occurred.");
        EXPECT_EQ(TakeLastException().code, 23u);
    };
    unknown([] { throw std::runtime_error("private"); });
    unknown([] { throw 5; });
    unknown([] { throw ZT_PLUGIN::ZT_PluginException(2008); });
}

}  // namespace zentor_test
