// Converting and opening while the file system fails: every failure has its code, and nothing is left behind.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "conversion/plugin/plugin_host.h"
#include "entry/zentor_impl.h"
#include "errors/last_exception.h"
#include "failure.h"
#include "test_folder.h"

namespace zentor {

namespace {

using zentor_test::FileFault;
using zentor_test::PathOf;
using zentor_test::ReadWhole;
using zentor_test::TemporaryFiles;
using zentor_test::TestFolder;
using zentor_test::Utf8Of;

// The document is written between the creation of its temporary file and the first close.
bool FailedWhileWriting() {
    return FileFault::CountBefore("File_IO::Create") >= 1 && FileFault::CountBefore("File_IO::Close") == 0;
}

bool IsProbe(const std::string& operation) {
    return operation == "File_IO::GetFileMode" || operation == "File_IO::IsSameFile" ||
           operation == "File_IO::Identity";
}

std::uint32_t ExpectedCode(os::Status status) {
    // A temporary document that cannot be created is a temporary name that cannot be found.
    if (FileFault::Struck() == "File_IO::Create" && FileFault::CountBefore("File_IO::Create") == 0) return 15;
    const std::map<std::string, std::uint32_t> codes = {
        {"File_IO::Create", 7},
        {"File_IO::Open", 6},
        {"File_IO::Write", status == os::Status::kDiskFull ? 34 : 55},
        {"File_IO::Close", 8},
        {"File_IO::Read", 11},
        {"File_IO::Length", 11},
        {"File_IO::AbsolutePath", 12},
        {"File_IO::GetTempFile", 14},
    };
    return codes.at(FileFault::Struck()) + (FailedWhileWriting() ? 1000 : 0);
}

}  // namespace

TEST(ConversionFaults, EveryOperationFailsInTurn) {
    const TestFolder folder;
    const std::string input = folder.Write("in.csv", "a,b\n1,x\n2,y\n");
    const std::string saved = folder.Write("saved.vkjson", "before");
    const std::size_t before = TemporaryFiles();
    Plugins();  // are looked for once, and not in the midst of this
    for (const os::Status status : {os::Status::kFailed, os::Status::kDiskFull}) {
        std::set<std::string> failed;
        for (int n = 1;; ++n) {
            ZentorImpl zentor;
            IVkjsonStream* stream = nullptr;
            std::uint32_t code = 0;
            {
                const FileFault fault("", n, status);
                code = zentor.ConvertFile(&stream, input.c_str(), 0);
                if (code == 0) code = stream->SaveTo(saved.c_str());
            }
            const bool isSaving = stream != nullptr;
            if (FileFault::Struck().empty()) {
                EXPECT_EQ(code, 0U);
                EXPECT_EQ(ReadWhole(saved), ReadWhole(stream->DocumentPath()));
                break;
            }
            const bool isProbe = IsProbe(FileFault::Struck());
            if (!isProbe) {  // a probe that fails says that there is nothing
                EXPECT_EQ(code, ExpectedCode(status)) << FileFault::Struck();
            }
            failed.insert(FileFault::Struck());
            if (isSaving) {
                EXPECT_TRUE(ReadWhole(saved).empty() || ReadWhole(saved) == "before" ||
                            ReadWhole(saved) == ReadWhole(stream->DocumentPath()));
                folder.Write("saved.vkjson", "before");
            }
            if (stream != nullptr) zentor.ReleaseStream(&stream);
            EXPECT_EQ(TemporaryFiles(), before) << FileFault::Struck();
        }
        for (const char* operation : {"File_IO::Create", "File_IO::Open", "File_IO::Write", "File_IO::Close",
                                      "File_IO::Read", "File_IO::Length", "File_IO::GetTempFile"}) {
            EXPECT_TRUE(failed.contains(operation)) << operation;
        }
    }
    EXPECT_EQ(ReadWhole(input), "a,b\n1,x\n2,y\n");
}

// Samples of two nodes that go through the temporary file on their way into the document.
TEST(ConversionFaults, CapturesWithSpilledSamples) {
    std::string capture = "HIERARCHY\nROOT a\n{\nCHANNELS 2 Xposition Yrotation\n}\nFrames: 1\nFrame Time: 0.01\n";
    for (int k = 0; k < 90000; ++k) capture += "1.25123456 -3.1234567\n";
    const TestFolder folder;
    const std::string input = folder.Write("in.bvh", capture);
    const std::size_t before = TemporaryFiles();
    std::map<std::string, std::set<std::uint32_t>> codes;
    for (int n = 1;; ++n) {
        ZentorImpl zentor;
        IVkjsonStream* stream = nullptr;
        std::uint32_t code = 0;
        {
            const FileFault fault("", n, os::Status::kFailed);
            code = zentor.ConvertFile(&stream, input.c_str(), 0);
        }
        if (stream != nullptr) zentor.ReleaseStream(&stream);
        EXPECT_EQ(TemporaryFiles(), before) << FileFault::Struck();
        if (FileFault::Struck().empty()) {
            EXPECT_EQ(code, 0U);
            break;
        }
        const bool isSpilling = FileFault::CountBefore("File_IO::Seek") != 0;
        codes[FileFault::Struck().substr(9) + (isSpilling ? " later" : "")].insert(code);
    }
    const std::map<std::string, std::set<std::uint32_t>> expected = {
        {"GetFileMode", {0, 4}},  // a probe that fails says that there is nothing
        {"AbsolutePath", {12}},   {"GetTempFile", {14, 1014, 1015}},
        {"Create", {15}},         {"Open", {1006}},
        {"Read", {11}},           {"Seek", {1010}},
        {"Seek later", {1010}},   {"Read later", {11, 1011}},
        {"Close later", {1008}},  {"GetFileMode later", {0}},
        {"Create later", {1007}}, {"Open later", {6, 1006}},
        {"Write later", {1055}},  {"Length later", {11}},
    };
    EXPECT_EQ(codes, expected);
}

// The host is told what failed, and not just that a converter did.
TEST(ConversionFaults, SayWhatFailed) {
    constexpr const char* kCapture = "HIERARCHY\nROOT a\n{\nCHANNELS 1 Xposition\n}\nFrames: 1\nFrame Time: 0.01\n1\n";
    const struct {
        const char* name;
        const char* content;
        const char* operation;
        os::Status status;
        std::uint32_t code;
        const char* message;
    } cases[] = {
        {"in.csv", "a\n1\n", "File_IO::Write", os::Status::kDiskFull, 1034, "\"File_IO::Write\", Disk Full."},
        {"in.json", "[1]", "File_IO::Write", os::Status::kDiskFull, 1034, "\"File_IO::Write\", Disk Full."},
        {"in.bvh", kCapture, "File_IO::Write", os::Status::kDiskFull, 1034, "\"File_IO::Write\", Disk Full."},
        {"in.bvh", kCapture, "File_IO::Write", os::Status::kFailed, 1055, "\"File_IO::Write\",WriteFile failure."},
        {"in.bvh", kCapture, "File_IO::Close", os::Status::kFailed, 1008, "\"File_IO::Close\", Cannot close file."},
    };
    const TestFolder folder;
    Plugins();  // are looked for once, and not in the midst of this
    for (const auto& c : cases) {
        const std::string input = folder.Write(c.name, c.content);
        ZentorImpl zentor;
        IVkjsonStream* stream = nullptr;
        {
            const zentor_test::FileFault fault(c.operation, 1, c.status);
            EXPECT_EQ(zentor.ConvertFile(&stream, input.c_str(), 0), c.code) << c.name;
        }
        ASSERT_NE(GetLastException(), nullptr);
        EXPECT_EQ(GetLastException()->code, c.code);
        EXPECT_EQ(GetLastException()->message, c.message) << c.name;
    }
    // What failed before is nobody's cause: an earlier full disk, and a capture whose frame time cannot be.
    SetLastException({508, "earlier", -1, -1});
    const std::string input = folder.Write("in.bvh", "HIERARCHY\nROOT a\n{\n}\nFrames: 0\nFrame Time: 0.0001\n");
    ZentorImpl zentor;
    IVkjsonStream* stream = nullptr;
    EXPECT_EQ(zentor.ConvertFile(&stream, input.c_str(), 0), 1508U);
    EXPECT_EQ(GetLastException()->message, "Internal converter failure");
    // A conversion without a failure leaves the record as it was.
    SetLastException({7, "earlier", -1, -1});
    ASSERT_EQ(zentor.ConvertFile(&stream, folder.Write("in.csv", "a\n1\n").c_str(), 0), 0U);
    EXPECT_EQ(GetLastException()->message, "earlier");
}

namespace {

std::map<std::string, std::string> ContentsOf(const TestFolder& folder) {
    std::map<std::string, std::string> contents;
    for (const auto& entry : std::filesystem::directory_iterator(PathOf(folder.Path()))) {
        const std::string name = Utf8Of(entry.path().filename());
        contents[name] = ReadWhole(folder / name);
    }
    return contents;
}

constexpr const char* kDocumentWithSamples =
    R"({"version":"vkjson2.0.0","dynamicSamplesPresentB":true,"dynamicDataInfo":{"useTimecodeB":false,"utcInfo":)"
    R"({"precisionLength":0,"isGMT":true}},"dataDynamicSamples":[],"dataOutline":[]})";

}  // namespace

// An open that fails changes no file and leaves none behind, whatever it was about to do.
TEST(OpeningFaults, EveryOperationFailsInTurn) {
    const struct {
        const char* input;
        const char* content;
        const char* output;
        std::vector<std::string> mustFail;
    } cases[] = {
        {"in.csv", "a,b\n1,x\n2,y\n", "new.vkjson", {"File_IO::Create", "File_IO::Write", "File_IO::Rename"}},
        {"in.csv", "a,b\n1,x\n2,y\n", "old.vkjson", {"File_IO::Create", "File_IO::Sync", "File_IO::Exchange"}},
        {"in.csv", "a,b\n1,x\n2,y\n", "", {"File_IO::Create", "File_IO::Write", "File_IO::GetTempFile"}},
        {"in.vkjson", kDocumentWithSamples, "new.vkjson", {"File_IO::Create", "File_IO::Read", "File_IO::Rename"}},
        {"in.vkjson", kDocumentWithSamples, "old.vkjson", {"File_IO::Create", "File_IO::Sync", "File_IO::Exchange"}},
        // Nothing fails here but the reading of the document that the table makes.
        {"in.csv", "a\n\\\n", "old.vkjson", {}},
        {"in.csv", "a\n\\\n", "new.vkjson", {}},
    };
    for (const auto& c : cases) {
        const TestFolder folder;
        const std::string input = folder.Write(c.input, c.content);
        const std::string output = *c.output == '\0' ? "" : folder / c.output;
        folder.Write("old.vkjson", "before");
        const auto contents = ContentsOf(folder);
        const std::size_t temporary = TemporaryFiles();
        std::set<std::string> failed;
        constexpr int kNever = 1000000;
        for (int n = c.mustFail.empty() ? kNever : 1;; ++n) {
            ZentorImpl zentor;
            ISensorFileHandler* handler = nullptr;
            std::uint32_t code = 0;
            {
                const FileFault fault("", n, os::Status::kFailed);
                code = zentor.OpenFile(&handler, input.c_str(), output.c_str());
            }
            const bool survived = FileFault::Struck().empty();
            EXPECT_EQ(code == 32, c.mustFail.empty());
            if (code == 0) {
                // A probe that fails says that there is nothing; everything else has a code.
                EXPECT_TRUE(survived || IsProbe(FileFault::Struck())) << FileFault::Struck();
                EXPECT_EQ(zentor.CloseFile(&handler), 0U);
                if (!output.empty()) std::filesystem::remove(PathOf(output));
                folder.Write("old.vkjson", "before");
            } else {
                EXPECT_EQ(handler, nullptr);
                EXPECT_EQ(zentor.CloseFile(&handler), 1U);
            }
            EXPECT_EQ(ContentsOf(folder), contents) << c.input << " " << c.output << " " << FileFault::Struck();
            EXPECT_EQ(TemporaryFiles(), temporary) << FileFault::Struck();
            failed.insert(FileFault::Struck());
            if (survived) break;
        }
        for (const std::string& operation : c.mustFail) EXPECT_TRUE(failed.contains(operation)) << operation;
    }
}

// A copy that cannot be made is none, and no document is open.
TEST(OpeningFaults, PrivateCopies) {
    const TestFolder folder;
    const auto record = std::make_shared<DocumentRecord>();
    record->documentPath = folder.Write("in.vkjson", kDocumentWithSamples);
    const std::map<std::string, std::set<std::string>> codes = {{"File_IO::GetTempFile", {"14", "15"}},
                                                                {"File_IO::Open", {"15"}},
                                                                {"File_IO::Write", {"21"}},
                                                                {"File_IO::Close", {"21"}}};
    std::set<std::string> failed;
    for (int n = 1;; ++n) {
        std::string failure;
        {
            const FileFault fault("", n, os::Status::kDiskFull);
            failure = zentor_test::FailureOf([&] { SensorFileHandlerImpl("in", record, ReadOptions{true, false}); });
        }
        EXPECT_EQ(TemporaryFiles(), 0U) << FileFault::Struck();
        const std::string struck = FileFault::Struck();
        if (struck.empty()) {
            EXPECT_EQ(failure, "");
            break;
        }
        if (codes.contains(struck)) {
            EXPECT_TRUE(codes.at(struck).contains(failure.substr(0, 2))) << struck << ' ' << failure;
            failed.insert(struck);
        }
    }
    EXPECT_EQ(failed.size(), codes.size());
}

// However many documents are open, opening one asks as little of the system as ever.
TEST(OpenDocuments, OthersAreNotLookedAt) {
    constexpr std::size_t kMany = 200;
    constexpr int kNever = 1000000;
    const TestFolder folder;
    ZentorImpl zentor;
    Plugins();  // are looked for once, and not in the midst of this
    std::set<std::size_t> operations;
    std::vector<ISensorFileHandler*> handlers(kMany);
    for (std::size_t k = 0; k < kMany; ++k) {
        const std::string name = std::to_string(k);
        const std::string input = folder.Write(name + ".csv", "a\n1\n");
        const FileFault none("", kNever, os::Status::kOk);
        ASSERT_EQ(zentor.OpenFile(&handlers[k], input.c_str(), (folder / (name + ".vkjson")).c_str()), 0U);
        operations.insert(FileFault::CountBefore());
    }
    EXPECT_EQ(operations.size(), 1U) << *operations.begin() << " to " << *operations.rbegin();
    for (ISensorFileHandler*& handler : handlers) EXPECT_EQ(zentor.CloseFile(&handler), 0U);
}

}  // namespace zentor
