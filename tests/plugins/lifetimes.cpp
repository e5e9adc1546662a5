// The last manager goes while another thread makes one and converts with a plug-in. Arguments: an input of the plug-in,
// and a document.
#include <zentor/zentor.h>

#include <atomic>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int kRounds = 4;
constexpr int kDocuments = 1000;  // open when the manager goes: so that its end takes a while
constexpr int kStreams = 20;

IZentor* CreateManager() {
    IZentor* manager = nullptr;
    CreateZentor_1(&manager, nullptr, nullptr, "en_US", nullptr, nullptr, nullptr);
    return manager;
}

std::string CopyOf(const std::string& document, int number) { return std::to_string(number) + "-" + document; }

bool Copy(const char* from, const std::string& to) {
    std::FILE* const source = std::fopen(from, "rb");
    std::FILE* const target = std::fopen(to.c_str(), "wb");
    if (source == nullptr || target == nullptr) return false;
    char piece[4096];
    while (const std::size_t got = std::fread(piece, 1, sizeof piece, source)) std::fwrite(piece, 1, got, target);
    std::fclose(source);
    return std::fclose(target) == 0;
}

// A manager that has much to end, plug-ins among it.
IZentor* CreateBusyManager(const char* input, const std::string& document) {
    IZentor* const manager = CreateManager();
    if (manager == nullptr) return nullptr;
    for (int number = 0; number < kDocuments; ++number) {
        ISensorFileHandler* handler = nullptr;
        if (manager->OpenFile(&handler, CopyOf(document, number).c_str(), nullptr) != ZT_OK) return nullptr;
    }
    for (int number = 0; number < kStreams; ++number) {
        IVkjsonStream* stream = nullptr;
        if (manager->ConvertFile(&stream, input, 0) != ZT_OK) return nullptr;
    }
    return manager;
}

// What a host does that has just come.
bool ConvertAnew(const char* input) {
    IZentor* manager = CreateManager();
    if (manager == nullptr) return false;
    IVkjsonStream* stream = nullptr;
    const bool converted = manager->ConvertFile(&stream, input, 1) == ZT_OK;
    DestroyZentor_1(&manager, nullptr);
    return converted && manager == nullptr;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const std::string document = argv[2];
    for (int number = 0; number < kDocuments; ++number) {
        if (!Copy(argv[2], CopyOf(document, number))) return 2;
    }
    int wrong = 0;
    for (int round = 0; round < kRounds; ++round) {
        IZentor* first = CreateBusyManager(argv[1], document);
        if (first == nullptr) return 3;
        std::atomic<bool> isGone{false};
        std::atomic<int> failed{0};
        std::thread other([&] {
            do {
                if (!ConvertAnew(argv[1])) ++failed;
            } while (!isGone);
        });
        DestroyZentor_1(&first, nullptr);
        isGone = true;
        other.join();
        wrong += failed;
    }
    if (wrong != 0) std::printf("%d conversions failed\n", wrong);
    for (int number = 0; number < kDocuments; ++number) std::remove(CopyOf(document, number).c_str());
    return wrong == 0 ? 0 : 1;
}
