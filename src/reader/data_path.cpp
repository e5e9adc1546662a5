#include "reader/data_path.h"

#include <charconv>
#include <limits>

#include "errors/raise.h"
#include "format/words.h"

namespace zentor {

namespace {

// -1 for a text that is no whole number; one beyond 64 bits is as good as the largest.
std::int64_t ReadIndex(std::string_view text) {
    std::int64_t index = -1;
    const char* const end = text.data() + text.size();
    const auto [stop, status] = std::from_chars(text.data(), end, index);
    if (stop != end) return -1;
    if (status == std::errc::result_out_of_range && text.front() != '-')
        return std::numeric_limits<std::int64_t>::max();
    return status == std::errc() ? index : -1;
}

// `open` and `close` are the positions of the brackets.
ZT_DataPathItem ReadItem(std::string_view path, std::size_t open, std::size_t close) {
    ZT_DataPathItem item;
    if (path[open + 1] == '"') {
        // The name ends at its quote, even if a bracket stands in it.
        const std::size_t quote = path.find('"', open + 2);
        item.matchName = path.substr(open + 2, (quote == std::string_view::npos ? close : quote) - open - 2);
    } else {
        item.index = ReadIndex(path.substr(open + 1, close - open - 1));
    }
    return item;
}

}  // namespace

ZT_DataPath ParseDataPath(std::string_view text) {
    if (text.empty()) Raise(kEmptyDataPathString);
    ZT_DataPath path;
    path.items.push_back({std::string(words::kDataOutline), -1});
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t open = text.find('[', position);
        if (open == std::string_view::npos) Raise(kMissingOpeningBracket, "[", position);
        const std::size_t close = text.find(']', open);
        if (close == std::string_view::npos) Raise(kMissingClosingBracket, "]", open);
        ZT_DataPathItem item = ReadItem(text, open, close);
        const bool isRoot = position == 0 && item.matchName == words::kDataOutline;
        if (!isRoot) path.items.push_back(std::move(item));
        position = close + 1;
    }
    return path;
}

}  // namespace zentor
