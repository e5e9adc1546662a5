#include "conversion/format_table.h"

#include <algorithm>

#include "conversion/bvh/bvh_converter.h"
#include "conversion/csv_tsv/table_converter.h"
#include "conversion/identifiers.h"
#include "conversion/json/json_converter.h"
#include "format/words.h"

namespace zentor {

namespace {

template <class Converter>
std::unique_ptr<ZT_ConverterHandlerBase> Make(ConversionInfo info) {
    return std::make_unique<Converter>(std::move(info));
}

// The display names are part of what hosts show and compare; "Seperated" is spelled so.
constexpr NativeFormat kFormats[] = {
    {"bvh", "Biovision Hierarchy", identifiers::kBvh, &Make<BVHConverter>},
    {"csv", "Comma Seperated Value", identifiers::kCsv, &Make<CSVConverter>},
    {"json", "JSON", identifiers::kJson, &Make<JsonConverter>},
    {"tsv", "Tab Seperated Value", identifiers::kTsv, &Make<TSVConverter>},
    {"txt", "Tab Seperated Value", identifiers::kTsv, &Make<TSVConverter>},
    {words::kExtension, "Vektra JSON", nullptr, nullptr},
};

}  // namespace

std::span<const NativeFormat> NativeFormats() { return kFormats; }

bool IsCalled(std::string_view identifier, std::string_view name) {
    return identifier == name || identifier.substr(identifier.rfind('.') + 1) == name;
}

const NativeFormat* FindFormatOfConverter(std::string_view identifier) {
    const auto* const found = std::find_if(std::begin(kFormats), std::end(kFormats), [&](const NativeFormat& format) {
        return format.identifier != nullptr && IsCalled(format.identifier, identifier);
    });
    return found == std::end(kFormats) ? nullptr : found;
}

const NativeFormat* FindConvertibleFormat(std::string_view extension) {
    const auto* const found = std::find_if(std::begin(kFormats), std::end(kFormats),
                                           [&](const NativeFormat& format) { return format.extension == extension; });
    return found == std::end(kFormats) || found->makeConverter == nullptr ? nullptr : found;
}

}  // namespace zentor
