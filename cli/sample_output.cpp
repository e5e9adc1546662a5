#include "sample_output.h"

#include <optional>

#include "json_output.h"
#include "standard_output.h"
#include "text_output.h"
#include "util/console.h"

namespace zentor_cli {

namespace {

using Numbers = std::span<const double>;

// A line each, for people: the time and the value.
class TextSamples final : public SampleOutput {
public:
    void Add(const Sample& sample) override { WriteOutput(Printable(sample.time) + "  " + ValueText(sample) + '\n'); }
    void Finish() override {}

private:
    static std::string ValueText(const Sample& sample) {
        if (const auto* const numbers = std::get_if<Numbers>(&sample.value)) return NumbersText(*numbers);
        if (const auto* const text = std::get_if<std::string_view>(&sample.value)) return Printable(*text);
        return NumberText(std::get<double>(sample.value));
    }
};

// A row each, the bytes of texts as they are.
class CsvSamples final : public SampleOutput {
public:
    explicit CsvSamples(std::vector<std::string> elementNames) : elementNames_(std::move(elementNames)) {
        zentor::os::SetBinaryOutput();
    }

    void Add(const Sample& sample) override {
        std::string rows;
        if (isFirst_) AppendHeader(sample, rows);
        isFirst_ = false;
        AppendField(sample.time, rows);
        if (const auto* const numbers = std::get_if<Numbers>(&sample.value)) {
            for (const double number : *numbers) rows += ',' + NumberText(number);
        } else if (const auto* const text = std::get_if<std::string_view>(&sample.value)) {
            rows += ',';
            AppendField(*text, rows);
        } else {
            rows += ',' + NumberText(std::get<double>(sample.value));
        }
        WriteOutput(rows + '\n');
    }
    void Finish() override {}

private:
    void AppendHeader(const Sample& sample, std::string& rows) const {
        rows += "time";
        const auto* const numbers = std::get_if<Numbers>(&sample.value);
        if (numbers == nullptr) rows += ",value";
        for (std::size_t i = 0; numbers != nullptr && i < numbers->size(); ++i) {
            rows += ',';
            AppendField(i < elementNames_.size() ? elementNames_[i] : "value" + std::to_string(i + 1), rows);
        }
        rows += '\n';
    }

    static void AppendField(std::string_view text, std::string& rows) {
        if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
            rows += text;
            return;
        }
        rows += '"';
        for (const char c : text) rows.append(c == '"' ? 2 : 1, c);
        rows += '"';
    }

    std::vector<std::string> elementNames_;
    bool isFirst_ = true;
};

class JsonSamples final : public SampleOutput {
public:
    void Add(const Sample& sample) override {
        if (isFirst_) json_.BeginArray();
        isFirst_ = false;
        json_.BeginObject();
        json_.Member("time", sample.time);
        json_.Key("value");
        if (const auto* const numbers = std::get_if<Numbers>(&sample.value)) {
            json_.BeginArray();
            for (const double number : *numbers) json_.Value(number);
            json_.EndArray();
        } else if (const auto* const text = std::get_if<std::string_view>(&sample.value)) {
            json_.Value(*text);
        } else {
            json_.Value(std::get<double>(sample.value));
        }
        json_.EndObject();
    }
    void Finish() override {
        json_.EndArray();
        json_.Finish();
    }

private:
    JsonOutput json_;
    bool isFirst_ = true;
};

}  // namespace

std::unique_ptr<SampleOutput> MakeSampleOutput(const std::string& format, std::vector<std::string> elementNames) {
    if (format == "csv") return std::make_unique<CsvSamples>(std::move(elementNames));
    if (format == "json") return std::make_unique<JsonSamples>();
    return std::make_unique<TextSamples>();
}

}  // namespace zentor_cli
