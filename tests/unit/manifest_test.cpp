// Manifests of plug-in modules: what is read, and what is refused with which message.
#include <gtest/gtest.h>

#include "conversion/plugin/manifest.h"
#include "failure.h"
#include "written_document.h"

namespace zentor_test {

namespace {

// A manifest of one converter with these members, each of which takes the place of a good one of its name; "-" takes it
// out.
std::string WithMembers(const std::vector<std::pair<std::string, std::string>>& members) {
    std::vector<std::pair<std::string, std::string>> all = {
        {"identifier", "'org.test'"}, {"name", "[{'localeID':'en_US','value':'Test'}]"}, {"version", "1"}};
    for (const auto& [key, value] : members) {
        const auto same = std::find_if(all.begin(), all.end(), [&](const auto& member) { return member.first == key; });
        if (same != all.end()) all.erase(same);
        if (value != "-") all.emplace_back(key, value);
    }
    std::string text;
    for (const auto& [key, value] : all) text += (text.empty() ? "'" : ",'") + key + "':" + value;
    return Json("{'converter':[{" + text + "}]}");
}

std::string Names(const std::string& names) { return WithMembers({{"name", names}}); }
std::string Signatures(const std::string& signatures) { return WithMembers({{"check_format", signatures}}); }

}  // namespace

TEST(Manifest, WhatIsRead) {
    const auto converters =
        ReadManifest(Json(R"({'converter':[{'identifier':'org.a','name':[{'localeID':'en_US','value':'A'},
                {'localeID':'de_DE','value':'Ä'}],'version':1.25,'force_converter':true,'vendor':{'x':[1]},
                'check_format':[{'offset':0,'byte_seq':'$GPX','length':3},{'offset':4294967296,'byte_seq':'\u00e9','length':2}],
                'extensions':['NMEA','Gps','ÄB']},
               {'identifier':'','name':[{'localeID':'de_DE','value':''}],'version':-3,'force_converter':'yes'}],'more':1})"),
                     "de_DE");
    ASSERT_EQ(converters.size(), 2U);
    EXPECT_EQ(converters[0].identifier, "org.a");
    EXPECT_EQ(converters[0].name, "Ä");
    EXPECT_EQ(converters[0].version, 1.25);
    EXPECT_TRUE(converters[0].isForced);
    ASSERT_EQ(converters[0].signatures.size(), 2U);
    EXPECT_EQ(converters[0].signatures[0].bytes, "$GP");
    EXPECT_EQ(converters[0].signatures[1].offset, 4294967296U);
    EXPECT_EQ(converters[0].signatures[1].bytes, "é");
    EXPECT_EQ(converters[0].extensions, (std::vector<std::string>{"nmea", "gps", "Äb"}));
    EXPECT_EQ(converters[1].name, "");
    EXPECT_EQ(converters[1].version, -3);
    EXPECT_FALSE(converters[1].isForced);
    EXPECT_TRUE(converters[1].signatures.empty() && converters[1].extensions.empty());
}

TEST(Manifest, NamesByLocale) {
    const std::string en = "{'localeID':'en_US','value':'English'}";
    const std::string de = "{'localeID':'de_DE','value':'Deutsch'}";
    const std::string twice = "{'localeID':'de_DE','value':'Zweites'}";
    const struct {
        std::string names;
        const char* locale;
        const char* expected;
    } cases[] = {
        {"[" + en + "," + de + "]", "de_DE", "Deutsch"},
        {"[" + de + "," + en + "]", "de_DE", "Deutsch"},
        {"[" + de + "," + en + "]", "fr_FR", "English"},
        {"[" + de + "," + twice + "," + en + "]", "de_DE", "Deutsch"},
        {"[" + en + "]", "en_US", "English"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ReadManifest(Names(c.names), c.locale).at(0).name, c.expected) << c.names << c.locale;
    }
}

TEST(Manifest, WhatIsRefused) {
    const auto violation = [](const std::string& key) { return "1504: Schema violation of Property: " + key + "."; };
    const auto wrongType = [](const std::string& key, const std::string& type) {
        return "1504: Invalid : \"" + key + "\" type, expected type : \"" + type + "\".";
    };
    const std::pair<std::string, std::string> cases[] = {
        {"", "1503: Manifest Parsing Failed. [0]"},
        {"{\"converter\":[}", "1503: Manifest Parsing Failed. [14]"},
        {"[]", "1503: Mandatory property not present."},
        {"{}", "1503: Mandatory property not present."},
        {Json("{'Converter':[]}"), "1503: Mandatory property not present."},
        {Json("{'converter':{}}"), wrongType("converter", "JSON Array")},
        {Json("{'converter':null}"), wrongType("converter", "JSON Array")},
        {Json("{'converter':[]}"), violation("converter")},
        {Json("{'converter':[5]}"), violation("converter")},
        {WithMembers({{"identifier", "-"}, {"version", "-"}}), violation("identifier")},
        {WithMembers({{"identifier", "5"}}), violation("identifier")},
        {WithMembers({{"name", "-"}, {"version", "-"}}), violation("name")},
        {Names("'Test'"), violation("name")},
        {Names("['Test']"), violation("name")},
        {Names("[]"), violation("value")},
        {Names("[{'value':'Test'}]"), violation("localeID")},
        {Names("[{'localeID':1,'value':'Test'}]"), violation("localeID")},
        {Names("[{'localeID':'en_US'}]"), violation("value")},
        {Names("[{'localeID':'en_US','value':'Test'},{'localeID':'fr_FR','value':null}]"), violation("value")},
        {Names("[{'localeID':'fr_FR','value':'Essai'}]"), violation("value")},
        {WithMembers({{"version", "-"}, {"extensions", "5"}}), violation("version")},
        {WithMembers({{"version", "'1'"}}), violation("version")},
        {Signatures("{}"), wrongType("check_format", "JSON Array")},
        {Signatures("['x']"), violation("check_format")},
        {Signatures("[{'byte_seq':'x','length':1}]"), violation("offset")},
        {Signatures("[{'offset':-1,'byte_seq':'x','length':1}]"), violation("offset")},
        {Signatures("[{'offset':0.5,'byte_seq':'x','length':1}]"), violation("offset")},
        {Signatures("[{'offset':0,'length':1}]"), violation("byte_seq")},
        {Signatures("[{'offset':0,'byte_seq':'x'}]"), violation("length")},
        {Signatures("[{'offset':0,'byte_seq':'x','length':0}]"), violation("length")},
        {Signatures("[{'offset':0,'byte_seq':'x','length':2}]"), violation("length")},
        {WithMembers({{"extensions", "'csv'"}}), wrongType("extensions", "JSON Array")},
        {WithMembers({{"extensions", "['csv',1]"}}), wrongType("extensions", "JSON String")},
        // What cannot be handed out as a C text.
        {WithMembers({{"identifier", "'org\\u0000'"}}), violation("identifier")},
        {Names("[{'localeID':'en_US','value':'\\u0000'}]"), violation("value")},
        {WithMembers({{"extensions", "['csv\\u0000']"}}), violation("extensions")},
    };
    for (const auto& [json, failure] : cases) {
        EXPECT_EQ(FailureOf([&json = json] { ReadManifest(json, "de_DE"); }), failure) << json;
    }
}

TEST(Manifest, WhatIsHardlyMeant) {
    const char* signature = "[{'offset':0,'byte_seq':'x\\u0000y','length':3}]";
    const std::pair<std::string, std::string> cases[] = {
        {WithMembers({}), ""},
        {WithMembers({{"extensions", "[]"}, {"check_format", "[]"}}), ""},
        {WithMembers({{"extensions", "['nmea']"}}), ""},
        {WithMembers({{"extensions", "['']"}}), ""},  // files without one
        {WithMembers({{"check_format", signature}}), ""},
        {WithMembers({{"extensions", "['nmea','.gps']"}}), "extensions"},
        {WithMembers({{"extensions", "['tar.gz']"}, {"check_format", signature}}), "extensions"},
        {WithMembers({{"extension", "['nmea']"}}), "extension"},
        {WithMembers({{"Extensions", "['nmea']"}}), "Extensions"},
        {WithMembers({{"extentions", "['nmea']"}, {"check_format", signature}}), "extentions"},
        {WithMembers({{"extensions", "['nmea']"}, {"check-format", signature}}), "check-format"},
        {WithMembers({{"extensions", "['nmea']"}, {"checkFormats", signature}}), "checkFormats"},
        {WithMembers({{"extensions", "['nmea']"}, {"force_convertor", "true"}}), "force_convertor"},
        {WithMembers({{"extensions", "['nmea']"}, {"forceConverter", "true"}}), "forceConverter"},
        {WithMembers({{"extensions", "['nmea']"}, {"vesrion", "2"}}), "vesrion"},
        {WithMembers({{"extensions", "['nmea']"}, {"vendor", "'x'"}, {"date", "1"}, {"force", "1"}, {"", "1"}}), ""},
        {WithMembers({{"extensions", "['nmea']"}, {std::string(100000, 'n'), "1"}}), ""},
    };
    for (const auto& [json, property] : cases) {
        EXPECT_EQ(ReadManifest(json, "en_US").at(0).doubtfulProperty, property) << json.substr(0, 200);
    }
}

}  // namespace zentor_test
