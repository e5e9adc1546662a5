// A module with two converters, written with all that there is for plug-ins: the second one takes inputs of a line
// "second", the first one others. Their document holds the input as a text, escaped unless it begins with "raw"; what
// follows "throw" is thrown.
#include <zentor/plugin/converter.h>
#include <zentor/plugin/iso_time.h>
#include <zentor/plugin/json_text.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

class TwoConverters {
public:
    static bool CheckFormat(const std::string& inputPath, const std::string& converterId) {
        const bool isOfSecond = Read(inputPath) == "second\n";
        return converterId == (isOfSecond ? "org.test.two.second" : "org.test.two.first");
    }

    static bool Convert(ZT_PLUGIN::Conversion& conversion) {
        ZT_PLUGIN::IsoTime time;
        if (!ZT_PLUGIN::ParseIsoTime("2026-06-01 08:30:00,5+02", time)) return false;
        std::string text = Read(conversion.InputPath());
        if (const char* const suffix = conversion.Parameter("suffix")) text += suffix;
        if (conversion.Parameter("told") != nullptr) conversion.Notice("told \xFF", 3, 5, 2);
        if (text.compare(0, 6, "throw ") == 0) throw std::runtime_error(text.substr(6));
        const bool isRaw = text.compare(0, 3, "raw") == 0;
        auto root = conversion.CreateRoot(conversion.ConverterId());
        root.SetUtc(1, true);
        root.Add(conversion.CreateText("text", "Text", isRaw ? text : ZT_PLUGIN::EscapedText(text)));
        auto notes = conversion.CreateDynamicText({"notes", "Notes", ZT_PLUGIN::Between::kHold});
        root.Add(notes);
        notes.AddSample(ZT_PLUGIN::UtcString(time, 1, true), ZT_PLUGIN::EscapedSampleText(text));
        notes.AddSample(ZT_PLUGIN::UtcString(time, 1, true), "x");
        return root.Write();
    }

private:
    static std::string Read(const std::string& path) {
        std::ifstream file(std::filesystem::u8path(path), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

}  // namespace

ZENTOR_PLUGIN(TwoConverters)
