#include "line_reader.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <utility>

#include <zentor/plugin/converter.h>

namespace nmea {

namespace {

constexpr std::size_t kBufferSize = 1 << 16;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

LineReader::LineReader(const std::string& path) : buffer_(kBufferSize) {
    file_.pubsetbuf(nullptr, 0);  // the buffer here is enough
    if (file_.open(std::filesystem::u8path(path), std::ios::in | std::ios::binary) == nullptr) {
        throw ZT_PLUGIN::ZT_PluginException(ZT_CAPTURE_OPEN);
    }
    if (Fill() && std::string_view(buffer_.data(), end_).substr(0, kByteOrderMark.size()) == kByteOrderMark) {
        Skip(kByteOrderMark.size());
    }
}

// Moves what is left to the front and adds to it; false at the end of the file.
bool LineReader::Fill() {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    const auto room = static_cast<std::streamsize>(buffer_.size() - end_);
    const auto count = file_.sgetn(buffer_.data() + end_, room);
    end_ += static_cast<std::size_t>(count);
    return count > 0;
}

void LineReader::Skip(std::size_t count) {
    begin_ += count;
    offset_ += static_cast<std::int64_t>(count);
}

std::size_t LineReader::LengthToEnd() const {
    const auto isEnd = [](char c) { return c == '\n' || c == '\r'; };
    const char* const first = buffer_.data() + begin_;
    return static_cast<std::size_t>(std::find_if(first, buffer_.data() + end_, isEnd) - first);
}

// CR LF is one end, not two.
void LineReader::SkipEnd() {
    if (begin_ == end_ && !Fill()) return;
    const bool isPair = buffer_[begin_] == '\r';
    Skip(1);
    if (isPair && (begin_ != end_ || Fill()) && buffer_[begin_] == '\n') Skip(1);
}

bool LineReader::Next(Line& line) {
    if (lines_ != 0) {
        Skip(std::exchange(taken_, 0));
        std::size_t rest = LengthToEnd();
        for (; begin_ + rest == end_; rest = LengthToEnd()) {  // of a line that is too long
            Skip(rest);
            if (!Fill()) return false;
        }
        Skip(rest);
        SkipEnd();
    }
    taken_ = LengthToEnd();
    while (begin_ + taken_ == end_ && Fill()) taken_ = LengthToEnd();
    if (begin_ == end_) return false;
    taken_ = std::min(taken_, kMaxLength + 1);
    line = {{buffer_.data() + begin_, taken_}, offset_, ++lines_};
    return true;
}

}  // namespace nmea
