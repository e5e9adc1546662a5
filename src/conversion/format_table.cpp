#include "conversion/format_table.h"

#include <algorithm>

#include "conversion/bvh/bvh_converter.h"
#include "conversion/csv_tsv/table_converter.h"
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
    {"bvh", "Biovision Hierarchy", &Make<BVHConverter>},
    {"csv", "Comma Seperated Value", &Make<CSVConverter>},
    {"json", "JSON", &Make<JsonConverter>},
    {"tsv", "Tab Seperated Value", &Make<TSVConverter>},
    {"txt", "Tab Seperated Value", &Make<TSVConverter>},
    {words::kExtension, "Vektra JSON", nullptr},
};

}  // namespace

std::span<const NativeFormat> NativeFormats() { return kFormats; }

const NativeFormat* FindConvertibleFormat(std::string_view extension) {
    const auto* const found = std::find_if(std::begin(kFormats), std::end(kFormats),
                                           [&](const NativeFormat& format) { return format.extension == extension; });
    return found == std::end(kFormats) || found->makeConverter == nullptr ? nullptr : found;
}

}  // namespace zentor
