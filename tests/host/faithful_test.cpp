// Faithful documents: what goes in comes back, and any parser of JSON takes them.
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <bit>
#include <charconv>
#include <random>

#include "recording_host.h"
#include "test_folder.h"

namespace zentor_test {

namespace {

// Converts with and reads back; what a test looks at lives as long as this.
class Faithful {
public:
    Faithful(const std::string& name, const std::string& content) {
        Options().faithful = 1;
        Options().checkSamples = 1;
        const std::string input = folder_.Write(name, content);
        const std::string output = folder_ / "out.vkjson";
        EXPECT_EQ(manager_->OpenFile(&handler_, input.c_str(), output.c_str()), 0U) << OnlyReport();
        const std::string text = ReadWhole(output);
        document_.Parse<rapidjson::kParseFullPrecisionFlag | rapidjson::kParseValidateEncodingFlag>(text.data(),
                                                                                                    text.size());
        EXPECT_FALSE(document_.HasParseError()) << document_.GetErrorOffset();
    }
    ~Faithful() {
        if (handler_ != nullptr) manager_->CloseFile(&handler_);
    }
    Faithful(const Faithful&) = delete;
    Faithful& operator=(const Faithful&) = delete;

    bool IsOpen() const { return handler_ != nullptr; }
    ZT_StaticDataInfo Node(const std::string& path) {
        ZT_StaticDataInfo info;
        EXPECT_EQ(handler_->GetStaticDataInfo(path.c_str(), &info), 0U) << path;
        return info;
    }
    std::string Text(const std::string& path) {
        const ZT_StaticDataInfo node = Node(path);
        const auto* const text = boost::get<std::string>(&node.value);
        return text == nullptr ? "no text" : *text;
    }
    double Number(const std::string& path) {
        const ZT_StaticDataInfo node = Node(path);
        const auto* const number = boost::get<double>(&node.value);
        EXPECT_NE(number, nullptr) << path;
        return number == nullptr ? 0 : *number;
    }
    std::string Name(const std::string& path) {
        ZT_GroupChildInfo info;
        EXPECT_EQ(handler_->GetGroupChildInfo(path.c_str(), &info), 0U) << path;
        return info.displayName;
    }
    ISensorFileHandler* operator->() { return handler_; }

private:
    OptionsGuard guard_;
    TestFolder folder_;
    Manager manager_;
    ISensorFileHandler* handler_ = nullptr;
    rapidjson::Document document_;
};

std::string ShortestText(double value) {
    char text[32];
    const char* const end = std::to_chars(text, text + sizeof text, value).ptr;
    return {static_cast<const char*>(text), end};
}

}  // namespace

TEST(Faithful, TablesGiveTextsAndNumbersBack) {
    const std::vector<std::string> texts = {R"(say "hi")",
                                            R"(C:\new)",
                                            "\x01\x1F",
                                            "na\u00efve",
                                            "22 \xB0"
                                            "C",
                                            R"(kept"},{"objectType":"dataStatic","matchName":"x)",
                                            R"(\u0041)",
                                            "[]]"};
    const std::vector<double> numbers = {9.9e-10, 1.5e20, 0.1 + 0.2, 1.7976931348623157e308, 5e-324, 8.2, -0.0, 1e16};
    std::string table = "a \"b\"\tn\xB2\n";
    for (std::size_t row = 0; row < texts.size(); ++row) table += texts[row] + '\t' + ShortestText(numbers[row]) + '\n';
    Faithful document("in.tsv", table);
    ASSERT_TRUE(document.IsOpen());
    EXPECT_EQ(document.Name("[0]"), "a \"b\"");
    EXPECT_EQ(document.Name("[1]"), "n\u00B2");
    EXPECT_EQ(document.Name("[0][3]"), "a \"b\" 3");
    for (std::size_t row = 0; row < texts.size(); ++row) {
        const std::string at = "[" + std::to_string(row) + "]";
        EXPECT_EQ(document.Text("[0]" + at), row == 4 ? "22 \u00B0C" : texts[row]);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(document.Number("[1]" + at)),
                  std::bit_cast<std::uint64_t>(numbers[row]));
    }
}

TEST(Faithful, JsonGivesTextsAndNumbersBack) {
    std::mt19937_64 random(3);
    std::string json = R"({"say \"hi\"": "tab\tquote\" backslash\\ \u0000 \ud83d\ude00 ]", "numbers": [)";
    std::vector<double> numbers;
    while (numbers.size() < 2000) {
        const auto number = std::bit_cast<double>(random());
        if (number - number != 0) continue;  // no number
        json += (numbers.empty() ? "" : ",") + ShortestText(number);
        numbers.push_back(number);
    }
    Faithful document("in.json", json + "], \"big\": 12345678901234567890}");
    ASSERT_TRUE(document.IsOpen());
    using namespace std::string_literals;
    EXPECT_EQ(document.Name("[0]"), "say \"hi\"");
    EXPECT_EQ(document.Text("[0]"), "tab\tquote\" backslash\\ \0 \U0001F600 ]"s);
    for (std::size_t k = 0; k < numbers.size(); ++k) {
        ASSERT_EQ(document.Number("[1][" + std::to_string(k) + "]"), numbers[k]);
    }
    EXPECT_EQ(document.Number("[2]"), 12345678901234567890.0);
}

TEST(Faithful, CapturesGiveNumbersNamesAndEndSitesBack) {
    Faithful document("in.bvh", R"(HIERARCHY
ROOT Hips "main" \ )"
                                "\xE9\n"
                                R"({ OFFSET 0.30000000000000004 1e-7 0
  CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation
  End Site { OFFSET 1 2 3.0000000000000004 }
  JOINT a { OFFSET 1 1 1 CHANNELS 1 Xrotation End Site { } }
  End Site { OFFSET 4 5 6 }
}
MOTION
Frames: 2
Frame Time: 0.04
0.1 9.9e-10 123456789.12345679 -1e-30 5 6 7
1e20 1 2 3 4 5 6
)");
    ASSERT_TRUE(document.IsOpen());
    EXPECT_EQ(document.Name("[0]"), "Hips \"main\" \\ \u00E9");
    const std::vector<std::string> names = {"OFFSET", "POSITION", "ROTATION", "End Site", "a", "End Site"};
    for (std::size_t k = 0; k < names.size(); ++k) {
        EXPECT_EQ(document.Name("[0][" + std::to_string(k) + "]"), names[k]);
    }
    const auto array = [&](const std::string& path) {
        const ZT_StaticDataInfo node = document.Node(path);
        return boost::get<std::vector<double>>(node.value);
    };
    EXPECT_EQ(array("[0][0]"), (std::vector<double>{0.30000000000000004, 1e-7, 0}));
    EXPECT_EQ(array("[0][3]"), (std::vector<double>{1, 2, 3.0000000000000004}));
    EXPECT_EQ(array("[0][5]"), (std::vector<double>{4, 5, 6}));
    ZT_GroupChildren children;  // its end site has no offset
    ASSERT_EQ(document->GetGroupChildren("[0][4]", &children), 0U);
    EXPECT_EQ(children.paths.size(), 2U);
    DynamicDataSampleSet samples;
    ASSERT_EQ(document->GetDynamicSamples("[0][1]", {0, 1}, {1, 1}, &samples), 0U);
    ASSERT_EQ(samples.samples.size(), 2U);
    EXPECT_EQ(boost::get<std::vector<double>>(samples.samples[0].value),
              (std::vector<double>{0.1, 9.9e-10, 123456789.12345679}));
    EXPECT_EQ(boost::get<std::vector<double>>(samples.samples[1].value), (std::vector<double>{1e20, 1, 2}));
    ASSERT_EQ(document->GetDynamicSamples("[0][2]", {0, 1}, {0, 1}, &samples), 0U);
    EXPECT_EQ(boost::get<std::vector<double>>(samples.samples[0].value), (std::vector<double>{-1e-30, 5, 6}));
}

}  // namespace zentor_test
