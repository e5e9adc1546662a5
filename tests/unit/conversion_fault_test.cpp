// Conversion while the file system fails: every failure has its code, and nothing is left behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <set>

#include "conversion/driver.h"
#include "errors/exception.h"
#include "test_folder.h"

namespace zentor {

namespace {

using zentor_test::ReadWhole;
using zentor_test::TestFolder;

std::atomic<int> operationsLeft{0};
std::atomic<os::Status> faultStatus{os::Status::kFailed};
std::vector<std::string> operationsDone;
std::string failedOperation;

// Lets the given number of operations succeed and the next one fail.
os::Status FailOnce(const char* operation) {
    if (operationsLeft-- != 0) {
        operationsDone.push_back(operation);
        return os::Status::kOk;
    }
    failedOperation = operation;
    return faultStatus;
}

class FaultScope {
public:
    FaultScope(int after, os::Status status) {
        operationsLeft = after;
        faultStatus = status;
        failedOperation.clear();
        operationsDone.clear();
        SetFileFaultHook(&FailOnce);
    }
    ~FaultScope() { SetFileFaultHook(nullptr); }
};

std::set<std::string> TemporaryDocuments() {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path())) {
        const std::string name = zentor_test::Utf8Of(entry.path().filename());
        if (name.starts_with("ZTT")) names.insert(name);
    }
    return names;
}

// The document is written between the creation of its temporary file and the first close.
bool FailedWhileWriting() {
    const auto done = [](const char* name) { return std::count(operationsDone.begin(), operationsDone.end(), name); };
    return done("File_IO::Create") >= 1 && done("File_IO::Close") == 0;
}

std::uint32_t ExpectedCode() {
    // A temporary document that cannot be created is a temporary name that cannot be found.
    const bool hasDocument = std::count(operationsDone.begin(), operationsDone.end(), "File_IO::Create") != 0;
    if (failedOperation == "File_IO::Create" && !hasDocument) return 15;
    const std::map<std::string, std::uint32_t> codes = {
        {"File_IO::Create", 7},
        {"File_IO::Open", 6},
        {"File_IO::Write", faultStatus == os::Status::kDiskFull ? 34 : 55},
        {"File_IO::Close", 8},
        {"File_IO::Read", 11},
        {"File_IO::Length", 11},
        {"File_IO::AbsolutePath", 12},
        {"File_IO::GetTempFile", 14},
    };
    return codes.at(failedOperation) + (FailedWhileWriting() ? 1000 : 0);
}

}  // namespace

TEST(ConversionFaults, EveryOperationFailsInTurn) {
    const TestFolder folder;
    const std::string input = folder.Write("in.csv", "a,b\n1,x\n2,y\n");
    const std::string saved = folder.Write("saved.vkjson", "before");
    const std::set<std::string> before = TemporaryDocuments();
    for (const os::Status status : {os::Status::kFailed, os::Status::kDiskFull}) {
        std::set<std::string> failed;
        for (int after = 0;; ++after) {
            ConversionDriver driver;
            IVkjsonStream* stream = nullptr;
            std::uint32_t code = 0;
            bool isSaving = false;
            {
                const FaultScope fault(after, status);
                try {
                    stream = driver.ConvertFile(input.c_str(), false);
                    isSaving = true;
                    code = stream->SaveTo(saved.c_str());
                } catch (const ns_sensor::ZT_Exception& failure) {
                    code = failure.code();
                }
            }
            if (failedOperation.empty()) {
                EXPECT_EQ(code, 0U);
                EXPECT_EQ(ReadWhole(saved), ReadWhole(stream->DocumentPath()));
                break;
            }
            const bool isProbe = failedOperation == "File_IO::GetFileMode" || failedOperation == "File_IO::IsSameFile";
            if (!isProbe) {  // a probe that fails says that there is nothing
                EXPECT_EQ(code, ExpectedCode()) << failedOperation;
            }
            failed.insert(failedOperation);
            if (isSaving) {
                EXPECT_TRUE(ReadWhole(saved).empty() || ReadWhole(saved) == "before" ||
                            ReadWhole(saved) == ReadWhole(stream->DocumentPath()));
                folder.Write("saved.vkjson", "before");
            }
            if (stream != nullptr) driver.ReleaseStream(stream);
            EXPECT_EQ(TemporaryDocuments(), before) << failedOperation;
        }
        for (const char* operation : {"File_IO::Create", "File_IO::Open", "File_IO::Write", "File_IO::Close",
                                      "File_IO::Read", "File_IO::Length", "File_IO::GetTempFile"}) {
            EXPECT_TRUE(failed.contains(operation)) << operation;
        }
    }
    EXPECT_EQ(ReadWhole(input), "a,b\n1,x\n2,y\n");
}

}  // namespace zentor
