// Why a table cannot be read.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace series {

class Refusal : public std::runtime_error {
public:
    // `line`: from 1 on, -1 for none.
    explicit Refusal(const std::string& reason, std::int64_t line = -1, std::int64_t offset = -1)
        : std::runtime_error(reason), line_(line), offset_(offset) {}

    std::int64_t Line() const { return line_; }
    std::int64_t Offset() const { return offset_; }

private:
    std::int64_t line_;
    std::int64_t offset_;
};

// The table ends within quotation marks.
class UnclosedQuote : public Refusal {
public:
    UnclosedQuote(std::int64_t line, std::int64_t offset)
        : Refusal("a quotation mark is opened and never closed", line, offset) {}
};

}  // namespace series
