#include "failure_text.h"

#include <algorithm>

#include "json_output.h"
#include "text_output.h"
#include "util/console.h"

namespace zentor_cli {

namespace {

struct Refusal {
    const char* key;  // of the library's message
    const char* remedy;
};

// What a strict conversion refuses, and what helps.
constexpr Refusal kRefusals[] = {
    {"$$$/ZTError/Conversion/QuoteInText", "--faithful keeps it, --no-validate writes it raw"},
    {"$$$/ZTError/Conversion/BackslashInText", "--faithful keeps it, --no-validate writes it raw"},
    {"$$$/ZTError/Conversion/ControlCharacterInText", "--faithful keeps it, --no-validate writes it raw"},
    {"$$$/ZTError/Conversion/BytesInText", "--faithful reads them as Windows-1252, --no-validate writes them raw"},
    {"$$$/ZTError/Conversion/Exponent", "--faithful keeps it, --no-validate writes it so"},
    {"$$$/ZTError/Conversion/Growth", "--force makes it all the same"},
};

const char* RemedyOf(Library& library, const Report& report) {
    if (report.code != ZT_CONVERSION) return nullptr;
    for (const Refusal& refusal : kRefusals) {
        if (library.Message(refusal.key) == report.message) return refusal.remedy;
    }
    return nullptr;
}

constexpr const char* kTableEndings[] = {".csv", ".tsv", ".CSV", ".TSV"};

// Tables with quotation marks are mostly quoted ones.
std::string HintOf(Library& library, const Report& report, const std::string& input) {
    const bool isTable = std::any_of(std::begin(kTableEndings), std::end(kTableEndings),
                                     [&](const char* ending) { return input.ends_with(ending); });
    return isTable && library.Message(kRefusals[0].key) == report.message ? ", --as series reads quoted cells" : "";
}

// A sentence as a part of one: "A text ... ." becomes "a text ...".
std::string AsPart(std::string sentence) {
    if (sentence.ends_with('.')) sentence.pop_back();
    const bool isWord = sentence.size() > 1 && (sentence[1] == ' ' || (sentence[1] >= 'a' && sentence[1] <= 'z'));
    if (isWord && sentence[0] >= 'A' && sentence[0] <= 'Z') sentence[0] = static_cast<char>(sentence[0] - 'A' + 'a');
    return sentence;
}

std::string TextOf(Library& library, const Report& report, const std::string& input, bool namesInput) {
    const std::string place = input + (report.line > 0 ? ":" + std::to_string(report.line) : "");
    if (const char* const remedy = RemedyOf(library, report))
        return place + ": " + AsPart(report.message) + "; " + remedy + HintOf(library, report, input);
    if (!report.reason.empty()) {
        return place + ": " + report.reason + " (error " + std::to_string(report.code) + ')';
    }
    const bool isNamed = !input.empty() && (report.line > 0 || namesInput);
    return report.Text() + (isNamed ? " [" + place + ']' : "");
}

}  // namespace

void SayFailure(Library& library, const CommonOptions& common, const Report& report, const std::string& input,
                bool namesInput) {
    if (!common.json) {
        zentor::os::WriteError("zentor: " + Printable(TextOf(library, report, input, namesInput)) + '\n');
        return;
    }
    JsonText json;
    json.BeginObject();
    json.Key("error");
    json.BeginObject();
    json.Member("code", report.code);
    json.Member("message", report.message);
    if (!report.reason.empty()) json.Member("reason", report.reason);
    if (!input.empty()) json.Member("input", input);
    if (report.line > 0) json.Member("line", report.line);
    if (report.offset >= 0) json.Member("offset", report.offset);
    json.EndObject();
    json.EndObject();
    zentor::os::WriteError(json.Take() + '\n');
}

}  // namespace zentor_cli
