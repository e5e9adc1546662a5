// Damaged documents end in an error or are read, and what is read can be walked.
#include "documents.h"

namespace zentor_test {

using namespace zentor;

namespace {

// Any other exception than a failure of the library ends the test. True when the document was read.
bool ReadsOrFails(std::string_view text, ParserChoice choice) {
    std::unique_ptr<VkjsonDocument> document;
    const std::string failure = FailureOf([&] { document = ParseDocument(text, choice); });
    if (document == nullptr) {
        // Every fault of a document has its place.
        EXPECT_TRUE(failure.ends_with(']')) << failure;
        return false;
    }
    WalkNodes(OpenText(text, std::move(document)));
    return true;
}

const std::tuple<std::string, std::string, ParserChoice> kDocuments[] = {
    {"version 1", Document1(), ParserChoice::kVersion1},
    {"version 1, timecodes", Document1(kTimecodes, false), ParserChoice::kProbe},
    {"version 2", Document2(), ParserChoice::kProbe},
    {"version 2, UTC", Document2(kUtcTimes, false), ParserChoice::kVersion2}};

}  // namespace

TEST(DamagedDocument, GoodOnesHaveAllTheirNodes) {
    for (const auto& [name, text, choice] : kDocuments) {
        const OpenText document(text, choice);
        EXPECT_EQ(WalkNodes(document), 9u) << name;
        EXPECT_EQ(document.index().DynamicCount(), 3u) << name;
        EXPECT_EQ(document->videoSync.entries.size(), 2u) << name;
    }
}

TEST(DamagedDocument, CutAnywhere) {
    for (const auto& [name, text, choice] : {kDocuments[0], kDocuments[2]}) {
        for (std::size_t length = 0; length < text.size(); ++length) {
            // A copy of its own, so that a read beyond the end is seen.
            const std::vector<char> bytes(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length));
            const std::string failure = FailureOf([&] { ParseDocument({bytes.data(), bytes.size()}, choice); });
            EXPECT_TRUE(failure.starts_with("32: ")) << name << " cut at " << length << ": " << failure;
        }
    }
}

TEST(DamagedDocument, OneByteChanged) {
    // Two of them at each place, so that all come to stand for each kind of byte.
    constexpr std::string_view kBytes("\0\"{]\\9\xFF", 7);
    std::size_t read = 0;
    std::size_t tried = 0;
    const auto change = [&](const std::string& text, std::size_t begin, std::size_t end) {
        std::string damaged = text;
        for (std::size_t i = begin; i < end; ++i, tried += 2) {
            for (std::size_t k = 0; k < 2; ++k) {
                damaged[i] = kBytes[(2 * i + k) % kBytes.size()];
                read += ReadsOrFails(damaged, ParserChoice::kProbe) ? 1 : 0;
            }
            damaged[i] = text[i];
        }
    };
    for (const std::string& text : {Document1(kTimecodes, false), Document2(kUtcTimes, false)}) {
        change(text, 0, text.size());
    }
    change(Document2(), Document2().find("\"dataDynamicSamples\""), Document2().find("\"creator\""));
    // Some bytes of names and numbers can be others; most cannot.
    EXPECT_GT(read, tried / 50);
    EXPECT_LT(read, tried / 2);
}

}  // namespace zentor_test
