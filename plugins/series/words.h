// Words of tables, whatever their letter case.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace series {

std::string_view Trimmed(std::string_view text);
// A to Z in lower case; all else stays.
std::string Lower(std::string_view text);
bool IsSame(std::string_view text, std::string_view lower);
// What stands between other characters than letters and digits, and where a capital follows a small letter, in lower
// case: "unixTime_ms" is "unix", "time" and "ms". Bytes beyond ASCII count as letters.
std::vector<std::string> WordsOf(std::string_view text);

inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }
inline bool IsBlank(char c) { return c == ' ' || c == '\t'; }

}  // namespace series
