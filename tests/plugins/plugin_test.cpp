// Plug-ins that are looked for, that fail, and what is told of it. The modules are those of this folder.
#include <gtest/gtest.h>

#include "conversion/plugin/plugin_host.h"
#include "conversion/plugin/search_path.h"
#include "entry/zentor_impl.h"
#include "errors/host_suite.h"
#include "errors/last_exception.h"
#include "test_folder.h"
#include "unit/failure.h"
#include "util/environment.h"
#include "util/module.h"

#if !defined(_WIN32)
#include <sys/resource.h>
#endif

namespace zentor_test {

using namespace zentor;

namespace {

void SetVariable(const std::string& value) {
#if defined(_WIN32)
    _putenv_s(ZT_PLUGIN::kSearchPathVariable, value.c_str());
#else
    setenv(ZT_PLUGIN::kSearchPathVariable, value.c_str(), 1);
#endif
}

// What the host has been told.
std::string report;

std::string TextOf(std::uint32_t code, const std::string& message) { return std::to_string(code) + ": " + message; }

// A folder with plug-ins, which are the only ones while it lives.
class PluginTest : public testing::Test {
protected:
    PluginTest() {
        SetVariable(plugins_.Path());
        static ZT_HostSuite suite{};
        suite.reportError = [](void*, std::uint32_t code, const char* message, std::int64_t, std::int64_t) {
            report = TextOf(code, message);
        };
        OfferHostSuite(&suite);
    }
    ~PluginTest() override {
        Forget();
        SetVariable("");
    }

    // Whatever the modules say to their end.
    static void Forget() {
        FailureOf([] { UnloadPlugins(); });
    }

    // Puts a module into the folder, or one in it.
    std::string Add(const std::string& module, const std::string& folder = {}) const {
        const std::string name = module + os::kModuleSuffix;
        const std::string target = Utf8Of(PathOf(plugins_ / (folder + name)).make_preferred());
        std::filesystem::create_directories(PathOf(target).parent_path());
        std::filesystem::copy_file(PathOf(std::string(ZENTOR_TEST_MODULES "/") + name), PathOf(target));
        return target;
    }

    // What converting a file with this name gives: "" or the report, which the thread's last exception has to be, too.
    std::string Convert(const std::string& name, const std::string& content = "HOSTILE\n") {
        report.clear();
        ClearLastException();
        IVkjsonStream* stream = nullptr;
        const ZT_Result result = zentor_.ConvertFile(&stream, inputs_.Write(name, content).c_str(), 1);
        const auto last = GetLastException();
        EXPECT_EQ(report, last ? TextOf(last->code, last->message) : "") << name;
        EXPECT_EQ(result == ZT_OK, report.empty()) << name;
        if (stream != nullptr) zentor_.ReleaseStream(&stream);
        return report;
    }

    TestFolder plugins_;
    TestFolder inputs_;
    ZentorImpl zentor_;
};

// "path: code: message" of all that could not be looked into.
std::vector<std::string> FolderProblems() {
    std::vector<std::string> problems;
    for (const auto& folder : Plugins()->Folders()) {
        for (const auto& [path, failure] : folder.problems) {
            problems.push_back(path + ": " + TextOf(failure.code(), failure.what()));
        }
    }
    return problems;
}

std::vector<std::string> ModulePaths() {
    std::vector<std::string> paths;
    for (const auto& module : Plugins()->Modules()) paths.push_back(module.path);
    return paths;
}

constexpr const char* kOpenFailed = R"(16: "File_IO::OpenFolder", FindFirstFileW failure.)";

}  // namespace

TEST_F(PluginTest, FoldersInTheirOrder) {
    TestFolder other;
    const std::string separator(1, os::kPathListSeparator);
    SetVariable(other.Path() + separator + "relative" + separator + plugins_.Path() + separator + other.Path());
    const std::string last = Add("hostile");
    const std::string deep = Add("forced", "a/b/");
    const std::string first = other / (std::string("z") + os::kModuleSuffix);
    std::filesystem::rename(PathOf(Add("two")), PathOf(first));
    const auto plugins = Plugins();
    ASSERT_EQ(plugins->Folders().size(), 5U);  // with the one beside the program
    EXPECT_EQ(plugins->Folders()[0].path, other.Path());
    EXPECT_EQ(ModulePaths(), (std::vector{first, deep, last}));
    EXPECT_EQ(plugins->Modules()[0].folder, 0U);
    EXPECT_EQ(plugins->Modules()[1].folder, 2U);
    EXPECT_EQ(FolderProblems(),
              std::vector<std::string>{R"(relative: 12: "ZENTOR_PLUGIN_PATH": not absolute, Cannot convert path.)"});
    EXPECT_TRUE(plugins->HasSeenAll());
    EXPECT_EQ(Convert("x.unknown", "x"), "25: File Format Not Supported.");
}

// The next conversion or listing looks again; what was read stays what it is, also while somebody uses it.
TEST_F(PluginTest, FolderThatCannotBeReadForAMoment) {
    Add("hostile");
    const std::string deep = Add("two", "deep/");
    {
        const FileFault fault("File_IO::OpenFolder", 2, os::Status::kFailed);
        const auto plugins = Plugins();
        EXPECT_FALSE(plugins->HasSeenAll());
        EXPECT_EQ(plugins->Modules().size(), 1U);
        EXPECT_EQ(plugins->Folders()[0].problems.at(0).path, plugins_ / "deep");
    }
    Forget();
    {
        const FileFault fault("File_IO::OpenFolder", 2, os::Status::kFailed);
        EXPECT_EQ(Convert("good.hostile"), "");  // needs nothing of that folder
    }
    Forget();
    {
        const FileFault fault("File_IO::OpenFolder", 2, os::Status::kFailed);
        EXPECT_EQ(Convert("x.two", "x"), kOpenFailed);
    }
    Forget();
    std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler> before;
    {
        const FileFault fault("File_IO::OpenFolder", 2, os::Status::kFailed);
        before = Plugins();
    }
    EXPECT_EQ(Convert("x.two", "x"), "");
    const auto after = Plugins();
    EXPECT_TRUE(after->HasSeenAll());
    EXPECT_TRUE(FolderProblems().empty());
    ASSERT_EQ(after->Modules().size(), 2U);
    EXPECT_EQ(after->Modules()[0].path, deep);
    EXPECT_EQ(after->Modules()[1].converters[0].module, before->Modules()[0].converters[0].module);
    EXPECT_EQ(Plugins(), after);
}

#if !defined(_WIN32)
TEST_F(PluginTest, ModuleThatCannotBeReadForAMoment) {
    const std::string path = Add("hostile");
    static rlimit before;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    // The descriptors end when the folder has been read.
    static int entries;
    entries = 0;
    SetFileFaultHook([](const char* operation) {
        if (std::string(operation) == "File_IO::ReadFolder" && ++entries == 2) {
            const rlimit none{3, before.rlim_max};
            setrlimit(RLIMIT_NOFILE, &none);
        }
        return os::Status::kOk;
    });
    const auto plugins = Plugins();
    SetFileFaultHook(nullptr);
    const std::string notLoaded = TextOf(1021, "Plugin \"" + path + "\" not loaded.");
    const std::string failure = FailureOf([&] { plugins->RaiseUnseen(); });
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_FALSE(plugins->HasSeenAll());
    ASSERT_EQ(plugins->Modules().size(), 1U);
    EXPECT_EQ(TextOf(plugins->Modules()[0].problemCode, plugins->Modules()[0].problem), notLoaded);
    EXPECT_EQ(failure, notLoaded);
    EXPECT_EQ(Convert("good.hostile"), "");
    EXPECT_EQ(Plugins()->Modules().at(0).problemCode, 0U);
}
#endif

// The first failure is told, by the report and by the thread's last exception.
TEST_F(PluginTest, SeveralThatFail) {
    Add("hostile");
    Add("initialize_fails");
    Add("no_initialize");
    EXPECT_EQ(Convert("check_fails.hostile"),
              "88: Error in Plugin Check File Format of converter Hostile with id org.test.hostile.converter.");
    EXPECT_EQ(Convert("good.hostile"), "");
    EXPECT_EQ(Convert("check_says_no.hostile"), "1500: Initialization of plugin with id initialize_fails failed.");
}

TEST_F(PluginTest, SeveralThatFailAtTheirEnd) {
    Add("hostile");
    Add("forced");
    EXPECT_EQ(Convert("good.hostile"), "");
    EXPECT_EQ(Convert("good.csv"), "");
    ClearLastException();
    EXPECT_EQ(FailureOf([] { UnloadPlugins(); }), "66: Terminate of Plugin with id forced failed");
    ASSERT_NE(GetLastException(), nullptr);
    EXPECT_EQ(GetLastException()->message, "Terminate of Plugin with id forced failed");
}

// A forced plug-in that fails takes its input away from nobody, and is heard when nobody takes it.
TEST_F(PluginTest, ForcedOneThatFails) {
    const std::string failed = "1500: Initialization of plugin with id forced_fails failed.";
    Add("forced_fails");
    EXPECT_EQ(Convert("table.csv"), "");  // built in
    EXPECT_EQ(Convert("good.hostile"), failed);
    Forget();
    Add("hostile");
    EXPECT_EQ(Convert("good.hostile"), "");
    EXPECT_EQ(Convert("check_says_no.hostile"), failed);
    EXPECT_EQ(Convert("other.unknown", "x"), "25: File Format Not Supported.");
}

TEST_F(PluginTest, ModuleThatCannotBeLoadedIsNamed) {
    const std::string path = Add("no_initialize");
    EXPECT_EQ(Convert("good.hostile"), TextOf(1021, "Plugin \"" + path + "\" not loaded."));
}

}  // namespace zentor_test
