// Makes the stored dictionaries from the message files: FILE.txt in UTF-8, a line "key=text" for each message, lines
// that begin with "#" and empty ones passed over. Stored are a byte-order mark and UTF-16 in little-endian order, each
// line in double quotes with those inside escaped, ended by CR LF; and but for English a byte 0D before every byte 0A.
//
// usage: zentor_make_dictionaries OUT_DIR FILE.txt...
// writes OUT_DIR/ZT_LOCALE.dict for each file, and all of them as dictionaries.rc and as dictionaries.cpp.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "util/utf_codec.h"

namespace {

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error(path + " cannot be read");
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const std::string& path, const std::string& content) {
    std::ofstream file(path, std::ios::binary);
    if (!file.write(content.data(), static_cast<std::streamsize>(content.size())).flush()) {
        throw std::runtime_error(path + " cannot be written");
    }
}

// "de_DE" of "messages/de_DE.txt".
std::string LocaleOf(const std::string& path) {
    const std::size_t name = path.find_last_of("/\\") + 1;
    return path.substr(name, path.rfind('.') - name);
}

void AppendUnits(std::string& bytes, const std::u16string& units) {
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
}

std::string StoredForm(const std::string& path) {
    std::string bytes = "\xFF\xFE";
    std::set<std::string> keys;
    std::istringstream lines(ReadFile(path));
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (line.ends_with('\r')) line.pop_back();
        if (line.empty() || line.starts_with('#')) continue;
        const std::size_t separator = line.find('=');
        const bool isEntry = separator != std::string::npos && separator + 1 < line.size() && line.starts_with("$$$/");
        if (!isEntry || !keys.insert(line.substr(0, separator)).second) {
            throw std::runtime_error(path + ", line " + std::to_string(number) + ": no \"key=text\", or the key again");
        }
        std::string quoted = "\"";
        for (const char c : line) quoted += c == '"' ? "\\\"" : std::string(1, c);
        AppendUnits(bytes, zentor::Utf8ToUtf16(quoted + "\"\r\n"));
    }
    return bytes;
}

std::string WithStrayBytes(const std::string& bytes) {
    std::string result;
    for (const char byte : bytes) result += byte == '\n' ? "\r\n" : std::string(1, byte);
    return result;
}

std::string UpperCase(std::string text) {
    for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return text;
}

void Run(const std::string& folder, const std::vector<std::string>& paths) {
    std::string script;
    std::string arrays;
    std::string table;
    for (const std::string& path : paths) {
        const std::string name = "ZT_" + UpperCase(LocaleOf(path));
        std::string bytes = StoredForm(path);
        if (LocaleOf(path) != "en_US") bytes = WithStrayBytes(bytes);
        WriteFile(folder + "/" + name + ".dict", bytes);
        script += name + " dict \"" + name + ".dict\"\n";
        arrays += "const unsigned char k" + name + "[] = {";
        for (const char byte : bytes) arrays += std::to_string(static_cast<unsigned char>(byte)) + ",";
        arrays += "};\n";
        table += "    {\"dict\", \"" + name + "\", k" + name + ", sizeof k" + name + "},\n";
    }
    WriteFile(folder + "/dictionaries.rc", script);
    WriteFile(folder + "/dictionaries.cpp",
              "#include \"util/embedded_resource.h\"\n\nnamespace zentor {\n\nnamespace {\n\n" + arrays +
                  "constexpr EmbeddedResource kTable[] = {\n" + table +
                  "};\n\n}  // namespace\n\nconst std::span<const EmbeddedResource> kEmbeddedResources(kTable);\n\n"
                  "}  // namespace zentor\n");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s OUT_DIR FILE.txt...\n", argv[0]);
        return 2;
    }
    try {
        Run(argv[1], {argv + 2, argv + argc});
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
