// What is checked of a path that comes from a host.
#pragma once

namespace zentor {

// Code ZT_INVALID_FILE_PATH for a null or empty path, ZT_FILE_PATH_TOO_LARGE for one of 65535 bytes or more.
void CheckPath(const char* path);

}  // namespace zentor
