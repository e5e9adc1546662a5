// What a program and its library write to standard output, and what does not get there.
#include "util/console.h"

#include <gtest/gtest.h>
#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

#include <cstdio>
#include <fstream>
#include <iterator>

#include "test_folder.h"

namespace zentor_test {

namespace {

#if defined(_WIN32)
int Duplicate(int file) { return _dup(file); }
void Replace(int by, int file) { _dup2(by, file); }
void Close(int file) { _close(file); }
int NumberOf(std::FILE* file) { return _fileno(file); }
#else
int Duplicate(int file) { return dup(file); }
void Replace(int by, int file) { dup2(by, file); }
void Close(int file) { close(file); }
int NumberOf(std::FILE* file) { return fileno(file); }
#endif

}  // namespace

TEST(Console, OutputAside) {
    const TestFolder folder;
    const std::string path = folder / "output.txt";
    std::fflush(stdout);
    const int kept = Duplicate(NumberOf(stdout));
    ASSERT_GE(kept, 0);
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    Replace(NumberOf(file), NumberOf(stdout));
    std::printf("before ");
    {
        const zentor::os::OutputAside aside;
        std::printf("within ");
    }
    std::printf("between ");
    {
        const zentor::os::OutputAside aside;
        std::printf("within ");
        std::fflush(stdout);
    }
    std::printf("after");
    std::fflush(stdout);
    Replace(kept, NumberOf(stdout));
    Close(kept);
    std::fclose(file);
    std::ifstream written(PathOf(path), std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(written), {}), "before between after");
}

}  // namespace zentor_test
