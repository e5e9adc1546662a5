// Lines of a file, through one buffer, whatever the file's length.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace nmea {

struct Line {
    std::string_view text;  // without its end; valid until the next line is asked for
    std::int64_t offset;    // of its first byte in the file
    std::int64_t number;    // from 1 on
};

// Lines end with CR LF, LF or CR. A byte-order mark is skipped. Of a line longer than kMaxLength only the beginning is
// delivered: kMaxLength + 1 bytes.
class LineReader {
public:
    static constexpr std::size_t kMaxLength = 1024;

    // `path`: UTF-8. Throws ZT_CAPTURE_OPEN when it cannot be opened.
    explicit LineReader(const std::string& path);

    bool Next(Line& line);

    // The length of what has been read.
    std::int64_t Offset() const { return offset_; }

private:
    bool Fill();
    void Skip(std::size_t count);
    void SkipEnd();
    std::size_t LengthToEnd() const;

    std::filebuf file_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::int64_t offset_ = 0;  // of buffer_[begin_]
    std::int64_t lines_ = 0;
    std::size_t taken_ = 0;  // by the line that was delivered last
};

}  // namespace nmea
