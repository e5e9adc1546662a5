// Threads that convert inputs of one plug-in at once, with managers and the module coming and going. Arguments: inputs,
// whose documents are the same each time, and after "!" inputs that cannot be converted.
#include <zentor/zentor.h>

#include <atomic>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 25;

// Empty when it failed.
std::string Converted(IZentor* manager, const char* input) {
    IVkjsonStream* stream = nullptr;
    if (manager->ConvertFile(&stream, input, 1) != ZT_OK) return {};
    std::string document(stream->Size(), '\0');
    const auto size = static_cast<std::uint32_t>(document.size());
    const bool isRead = stream->Read(document.data(), &size) == size;
    return manager->ReleaseStream(&stream) == ZT_OK && isRead ? document : std::string();
}

IZentor* CreateManager() {
    IZentor* manager = nullptr;
    CreateZentor_1(&manager, nullptr, nullptr, "en_US", nullptr, nullptr, nullptr);
    return manager;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<const char*> inputs;
    std::vector<std::string> expected;
    bool isGood = true;
    IZentor* first = CreateManager();
    for (int i = 1; i < argc; ++i) {
        if (std::string(argv[i]) == "!") {
            isGood = false;
            continue;
        }
        inputs.push_back(argv[i]);
        expected.push_back(Converted(first, argv[i]));
        if (expected.back().empty() == isGood) return 2;
    }
    DestroyZentor_1(&first, nullptr);

    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int round = 0; round < kRounds; ++round) {
                IZentor* manager = CreateManager();
                const auto number = static_cast<std::size_t>(thread + round) % expected.size();
                if (Converted(manager, inputs[number]) != expected[number]) ++wrong;
                DestroyZentor_1(&manager, nullptr);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    // A host that ends without saying so leaves the module to the system.
    static IZentor* forgotten = CreateManager();
    if (Converted(forgotten, inputs[0]) != expected[0]) ++wrong;
    if (wrong != 0) std::printf("%d of %d conversions were wrong\n", wrong.load(), kThreads * kRounds);
    return wrong == 0 ? 0 : 1;
}
