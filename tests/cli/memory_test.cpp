// The command without memory: whenever it runs out, the command says so and ends with status 1. Its main function has
// another name here.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>
#include <vector>

int ZentorMain(int argc, char** argv);

namespace {

long allocationsLeft = -1;  // below 0: as many as there is memory for
bool hasFailed = false;

void* Allocate(std::size_t size) noexcept {
    if (allocationsLeft == 0) {
        hasFailed = true;
        return nullptr;
    }
    if (allocationsLeft > 0) --allocationsLeft;
    return std::malloc(size == 0 ? 1 : size);
}

void* AllocateOrThrow(std::size_t size) {
    void* const memory = Allocate(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

struct Outcome {
    int status;
    std::string said;  // on standard error
};

// Runs the command with no more than so many allocations.
Outcome RunCommand(std::vector<std::string> arguments, long allocations) {
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    hasFailed = false;
    allocationsLeft = allocations;
    const int status = ZentorMain(static_cast<int>(argv.size()), argv.data());
    allocationsLeft = -1;
    testing::internal::GetCapturedStdout();
    return {status, testing::internal::GetCapturedStderr()};
}

}  // namespace

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

TEST(Memory, RunsOutAtAnyAllocation) {
    const struct {
        std::vector<std::string> arguments;
        int status;
    } cases[] = {
        {{"--version"}, 0},
        {{"--help"}, 0},
        {{"samples", "--help"}, 0},
        {{"formats"}, 0},
        {{"info", "missing.csv"}, 1},
        {{"convert"}, 2},
        {{"no-command", "--nor-option"}, 2},
        {{"samples", "a document whose name is long", "[0]", "--from", "1", "--format", "of no such name"}, 2},
    };
    for (const auto& c : cases) {
        std::vector<std::string> arguments = c.arguments;
        arguments.insert(arguments.begin(), "zentor");
        long allocations = 0;
        for (;; ++allocations) {
            const Outcome outcome = RunCommand(arguments, allocations);
            if (!hasFailed) {
                EXPECT_EQ(outcome.status, c.status) << arguments[1];
                break;
            }
            ASSERT_EQ(outcome.status, 1) << arguments[1] << " with " << allocations << ": " << outcome.said;
            ASSERT_EQ(outcome.said, "zentor: out of memory\n") << arguments[1] << " with " << allocations;
        }
        EXPECT_GT(allocations, 100) << arguments[1] << ": the command takes memory";
    }
}
