// What is checked of an input before it is converted.
#pragma once

#include <string>

namespace zentor {

// Code 2 for a null or empty path, 3 for one of 65535 bytes or more.
void CheckInputFilePath(const char* path);

// Whether the file already is a vkjson document of version 2: white space, "{", and "version" as the first key, with
// "vkjson2.0.0" in any case as its value. Never fails and leaves no trace of a failure.
bool IsVkjsonDocument(const std::string& path) noexcept;

// What follows the last "." of the last part of a path, or nothing; A to Z turned to lower case by the second.
std::string ExtensionOf(const std::string& path);
std::string LowerCaseAscii(std::string text);

}  // namespace zentor
