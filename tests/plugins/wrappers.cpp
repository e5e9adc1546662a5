// A plug-in that calls everything that converter.h wraps, each with an argument of every kind that it takes. It is
// C++14, and compiled as later C++ and by other compilers, too.
#include <zentor/plugin/converter.h>

namespace {

using ZT_PLUGIN::Between;

// The code of the failure that `call` throws; 0 when it throws none.
template <class Call>
std::uint32_t ThrownBy(Call&& call) {
    try {
        call();
        return 0;
    } catch (const ZT_PLUGIN::ZT_PluginException& failure) {
        return failure.code();
    }
}

const ZT_PLUGIN::ZT_PluginServices* given = nullptr;

class Wrappers {
public:
    static bool CheckFormat(const std::string&) { return true; }

    static bool Convert(ZT_PLUGIN::Conversion& conversion) {
        auto root = conversion.CreateRoot("replaced");
        root.SetCreator(conversion.ConverterId());
        root.SetDisplayName("not written");
        root.SetTimecode(30000, 1001, true);
        root.SetUtc(3, true);
        root.AddVideoSyncFrame("front.mp4", 25);
        root.AddVideoSyncTime("side.mp4", "1970-01-01T00:00:01.000Z");
        root.WriteHeader();
        auto group = conversion.CreateGroup("g", "Group");
        AddStaticNodes(conversion, group);
        root.Add(group);
        AddDynamicNodes(conversion, root);
        AddTexts(conversion, root);
        CheckOlderLibrary(conversion);
        // A failure comes out of each kind of call.
        std::uint32_t codes = ThrownBy([&] { root.SetTimecode(25, 1, false); });
        codes += ThrownBy([&] { root.AddVideoSyncFrame("late.mp4", 1); });
        codes += ThrownBy([&] { conversion.CreateGroup("no name", ""); });
        if (codes != ZT_TIME_MODE_FIXED + ZT_TIME_MODE_FIXED + ZT_INVALID_NAME) return false;
        const bool isWritten = root.Write();
        return isWritten && ThrownBy([&] { root.Add(conversion.CreateBool("late", "", true)); }) != 0;
    }

private:
    static void AddStaticNodes(ZT_PLUGIN::Conversion& conversion, ZT_PLUGIN::GroupMembers& group) {
        auto number = conversion.CreateNumber("number", "Number", 1.5);
        number.SetPattern(2, 1, true);
        number.SetLegalRange(0, 9, 3);
        group.Add(number);
        auto text = conversion.CreateText("text", "Text", "on");
        text.SetProperties(4, 1, true);
        group.Add(text);
        group.Add(conversion.CreateBool("truth", "Truth", true));
        auto array = conversion.CreateNumberArray("array", "Array", {1});
        array.SetValues({1, -2});
        array.SetDisplayNames({"x", "y"});
        array.SetPattern(1, 2, true);
        array.SetLegalRanges({{0, 1}, {-3, 3}});
        if (ThrownBy([&] { array.SetLegalRanges({{0, 1}}); }) != ZT_RANGE_COUNT) throw 1;
        array.SetIsPoint(true);
        group.Add(array);
    }

    // Numbers that are texts already, and what is none.
    static void AddTexts(ZT_PLUGIN::Conversion& conversion, ZT_PLUGIN::GroupMembers& group) {
        auto number = conversion.CreateDynamicNumber({"t", "T"});
        number.SetLegalRange(-1, 100);
        group.Add(number);
        const auto add = [&](std::int64_t second, const std::string& text) {
            number.AddSampleText({second, 1}, text.data(), text.size());
        };
        add(0, "7.50");
        add(1, "1e2");
        add(2, "-.25");
        for (const char* text : {"", "-", "+1", "1,5", " 1", "1 ", "0x1", "nan", "inf", "1e999", "100.5"}) {
            if (ThrownBy([&] { add(3, text); }) != ZT_RANGE_VALUE) throw 1;
        }
        if (ThrownBy([&] { add(1, "1"); }) != ZT_SAMPLE_TIME) throw 1;
    }

    // What it does not have is done without, where that can be.
    static void CheckOlderLibrary(ZT_PLUGIN::Conversion& conversion) {
        ZT_PLUGIN::ZT_HostServices host = *given->host;
        host.size = offsetof(ZT_PLUGIN::ZT_HostServices, parameter);
        ZT_PLUGIN::ZT_PluginServices services = *given;
        services.host = &host;
        ZT_PLUGIN::Conversion old(services, 0, "old", "");
        old.Notice("nobody hears this");
        const bool isSilent = old.Parameter("key") == nullptr && ThrownBy([&] { old.Refuse("why"); }) == ZT_CONVERSION;
        ZT_PLUGIN::DynamicNumber number;
        if (!isSilent || ThrownBy([&] { number.AddSampleText({0, 1}, "1", 1); }) != ZT_VERSION_TOO_NEW) throw 1;
        if (conversion.Parameter("key") != nullptr) throw 1;
    }

    static void AddDynamicNodes(ZT_PLUGIN::Conversion& conversion, ZT_PLUGIN::GroupMembers& group) {
        const char* const second = "1970-01-01T00:00:01.000Z";
        const std::string third = "1970-01-01T00:00:02.000Z";
        std::int64_t count = 2500;
        auto number = conversion.CreateDynamicNumber({"d", "D", Between::kLinear, "set", "1970-01-01T00:00:01.000Z"});
        number.SetSampleCount(4);
        number.SetPattern(2, 1, false);
        number.SetLegalRange(0, 10);
        group.Add(number);
        number.AddSample({0, 1000}, 1.0);
        number.AddSample(second, 2.0);
        number.AddSample(third, 3.0);
        number.AddSample({count, 1000}, 4);
        number.AddSample(ZT_PLUGIN::Ticks{3, 1}, 5);
        if (ThrownBy([&] { number.AddSample("", 0); }) != ZT_SAMPLE_TIME) throw 1;
        number.WriteSamples();
        auto array = conversion.CreateDynamicNumberArray({"e", "E", Between::kHold}, 2);
        array.SetSampleCount(3);
        array.SetPattern(1, 0, false);
        array.SetIsSigned(true);
        array.AddLegalRange(0, 10);
        array.AddLegalRange(-10, 10);
        array.AddDisplayName("x");
        array.AddDisplayName("y");
        array.SetIsPoint(true);
        group.Add(array);
        array.AddSample({0, 1}, {1, 2});
        array.AddSample(second, {3, 4});
        array.AddSample(third, {5, -6});
        auto text = conversion.CreateDynamicText({"f", "F", Between::kHold});
        text.SetSampleCount(3);
        text.SetProperties(3, 1, true);
        group.Add(text);
        text.AddSample({0, 1}, "a");
        text.AddSample(second, "b");
        text.AddSample(third, std::string("c"));
    }
};

}  // namespace

// As ZENTOR_PLUGIN, which keeps the services to itself.
ZT_PLUGIN_EXPORT void InitializePlugin(const char*, const ZT_PLUGIN::ZT_PluginServices* services,
                                       ZT_PLUGIN::ZT_PluginEntryPoints* entryPoints, ZT_ErrorRecord* error) {
    given = services;
    ZT_PLUGIN::PluginModule<Wrappers>::Initialize(services, entryPoints, error);
}
