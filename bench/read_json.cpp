// One pass of another reader over a mapped document. The time from mapping to the end of the pass is taken; what a
// reader holds is freed after that, as a document that zentor has opened is closed after its time was taken.
//
//   rapidjson   RapidJSON's SAX reader with a handler that counts
//   simdjson    simdjson's on-demand parser, every value of the document looked at
//   brackets    memchr from closing bracket to closing bracket, for orientation
//   copy        the bytes written to another file, for orientation
#include <fcntl.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <simdjson.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cinttypes>
#include <cstdio>
#include <string>
#include <string_view>

#include "measure.h"

namespace {

// Readable for simdjson's padding behind its end, too: the file lies over memory that is a page longer.
class MappedFile {
public:
    explicit MappedFile(const char* path) {
        const int file = open(path, O_RDONLY);
        struct stat info;
        if (file < 0 || fstat(file, &info) != 0) bench::Fail(path);
        m_size = static_cast<std::size_t>(info.st_size);
        m_room = m_size + static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        m_start = mmap(nullptr, m_room, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (m_start == MAP_FAILED) bench::Fail("mmap");
        if (mmap(m_start, m_size, PROT_READ, MAP_PRIVATE | MAP_FIXED, file, 0) == MAP_FAILED) bench::Fail("mmap");
        close(file);
    }
    ~MappedFile() { munmap(m_start, m_room); }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    std::string_view Bytes() const { return {static_cast<const char*>(m_start), m_size}; }
    // How many bytes can be read from the beginning on.
    std::size_t Room() const { return m_room; }

private:
    void* m_start = nullptr;
    std::size_t m_size = 0;
    std::size_t m_room = 0;
};

struct Counter : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Counter> {
    std::uint64_t values = 0;
    bool Default() {
        ++values;
        return true;
    }
};

std::uint64_t ReadWithRapidJson(std::string_view bytes) {
    rapidjson::MemoryStream stream(bytes.data(), bytes.size());
    rapidjson::Reader reader;
    Counter counter;
    if (!reader.Parse(stream, counter)) return 0;  // recursive: faster than its iterative way
    return counter.values;
}

std::uint64_t Walk(simdjson::ondemand::value value) {
    std::uint64_t values = 1;
    switch (value.type()) {
        case simdjson::ondemand::json_type::object:
            for (auto field : value.get_object()) {
                std::string_view key = field.unescaped_key();
                values += !key.empty();
                values += Walk(field.value());
            }
            break;
        case simdjson::ondemand::json_type::array:
            for (auto element : value.get_array()) values += Walk(element.value());
            break;
        case simdjson::ondemand::json_type::string:
            values += std::string_view(value.get_string()).empty();
            break;
        case simdjson::ondemand::json_type::number:
            values += double(value.get_double()) == 0.125;
            break;
        case simdjson::ondemand::json_type::boolean:
            values += bool(value.get_bool());
            break;
        default:
            break;
    }
    return values;
}

std::uint64_t ReadWithSimdJson(const MappedFile& file) {
    static simdjson::ondemand::parser parser;  // its memory is freed at exit
    simdjson::ondemand::document document =
        parser.iterate(simdjson::padded_string_view(file.Bytes().data(), file.Bytes().size(), file.Room()));
    simdjson::ondemand::value value = document.get_value();
    return Walk(value);
}

std::uint64_t CountBrackets(std::string_view bytes) {
    std::uint64_t brackets = 0;
    for (std::size_t at = bytes.find(']'); at != std::string_view::npos; at = bytes.find(']', at + 1)) ++brackets;
    return brackets;
}

std::uint64_t Copy(std::string_view bytes, const std::string& path) {
    const int file = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY, 0600);
    if (file < 0) bench::Fail(path.c_str());
    unlink(path.c_str());  // the file lasts as long as it is open: until exit
    constexpr std::size_t kPiece = 1 << 18;
    for (std::size_t at = 0; at < bytes.size(); at += kPiece) {
        const std::string_view piece = bytes.substr(at, kPiece);
        if (write(file, piece.data(), piece.size()) != static_cast<ssize_t>(piece.size())) bench::Fail("write");
    }
    return bytes.size();
}

std::uint64_t Read(std::string_view reader, const MappedFile& file, const char* path) {
    if (reader == "simdjson") return ReadWithSimdJson(file);
    if (reader == "rapidjson") return ReadWithRapidJson(file.Bytes());
    if (reader == "brackets") return CountBrackets(file.Bytes());
    if (reader == "copy") return Copy(file.Bytes(), std::string(path) + ".copy");
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s rapidjson|simdjson|brackets|copy DOCUMENT\n", argv[0]);
        return EXIT_FAILURE;
    }
    bench::Stopwatch watch;
    const MappedFile file(argv[2]);
    const std::uint64_t seen = Read(argv[1], file, argv[2]);
    watch.Stop();
    watch.Print();
    std::printf("seen %" PRIu64 "\n", seen);
    return seen == 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
