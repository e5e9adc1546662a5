// Captures: what is taken, what is refused and where, and the documents that come of them.
#include <gtest/gtest.h>

#if !defined(_WIN32)
#include <sys/resource.h>
#endif

#include <charconv>

#include "conversion/bvh/bvh_converter.h"
#include "conversion/bvh/capture_input.h"
#include "conversion/bvh/frame_time.h"
#include "failure.h"
#include "open_text.h"
#include "written_document.h"

namespace zentor_test {

namespace {

struct Converted {
    std::string failure;  // code, byte offset and line; empty for none
    std::string text;     // of the document; empty for none
};

Converted Convert(const std::string& capture) {
    const TestFolder folder;
    const std::string path = folder / "d.vkjson";
    const std::string input = folder.Write("in.bvh", capture);
    const std::uint64_t id = OpenStream(std::make_unique<DocumentWriter>(path));
    Converted converted;
    const auto describe = [](std::uint32_t code, std::int64_t offset, std::int64_t line) {
        return std::to_string(code) + " at " + std::to_string(offset) + ", line " + std::to_string(line);
    };
    try {
        EXPECT_TRUE(BVHConverter({input, input, id}).Convert());
        converted.text = ReadWhole(path);
    } catch (const ns_sensor::ZT_Exception& failure) {
        converted.failure = describe(failure.code(), failure.extra1(), failure.extra2());
    } catch (const ZT_PluginException& failure) {
        converted.failure = describe(failure.code(), failure.extra1(), failure.extra2());
    }
    CloseStream(id);
    EXPECT_EQ(folder.FileCount(), converted.failure.empty() ? 2U : 1U) << capture;
    return converted;
}

// The nodes of an outline, a line each: depth, names, and of arrays their elements, offsets and samples.
class Listing {
public:
    explicit Listing(const std::string& text) : document_(text, ParserChoice::kVersion2) {}

    std::string Rate() const {
        return std::to_string(document_->info.frameRateValue) + "/" + std::to_string(document_->info.frameRateScale);
    }

    std::string Nodes() {
        AddChildren(kRootNode, 0);
        return std::move(lines_);
    }

private:
    void AddChildren(NodeNumber group, std::size_t depth) {
        const OutlineIndex::Children children = document_.index().ChildrenOf(group);
        for (NodeNumber node = children.first; node != children.first + children.count; ++node) {
            const ZT_GroupChildInfo info = document_.Child(node);
            lines_ += std::string(depth, ' ') + info.matchName + " " + info.displayName;
            if (info.nodeType == ZT_NODE_STATIC)
                AddNumbers(boost::get<std::vector<double>>(document_.Static(node).value));
            if (info.nodeType == ZT_NODE_DYNAMIC) AddSamples(document_.Dynamic(node));
            lines_ += '\n';
            if (info.nodeType == ZT_NODE_GROUP) AddChildren(node, depth + 1);
        }
    }
    void AddNumbers(const std::vector<double>& numbers) {
        for (const double number : numbers) lines_ += ' ' + std::string(FormatNumber(number).view());
    }
    void AddSamples(const ZT_DynamicDataInfo& info) {
        EXPECT_EQ(info.sampleSetID, info.matchName);
        EXPECT_EQ(info.interpolation, "linear");
        for (const std::string& name : info.dataType.arrayDisplayNames) lines_ += ' ' + name;
        if (info.sampleCount == 0) return;
        for (const ZT_Sample& sample : document_.Samples(info.sampleSetID)) {
            lines_ += " |";
            AddNumbers(boost::get<std::vector<double>>(sample.value));
        }
    }

    OpenText document_;
    std::string lines_;
};

std::string NodesOf(const std::string& capture) {
    const Converted converted = Convert(capture);
    return converted.failure.empty() ? Listing(converted.text).Nodes() : converted.failure;
}

// While it lives, the process may have only so many files open, where the system has such a limit.
class FileLimit {
#if defined(_WIN32)
public:
    explicit FileLimit(int) {}
#else
public:
    explicit FileLimit(rlim_t files) {
        getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit lower{files, before_.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &lower), 0);
    }
    ~FileLimit() { setrlimit(RLIMIT_NOFILE, &before_); }
    FileLimit(const FileLimit&) = delete;
    FileLimit& operator=(const FileLimit&) = delete;

private:
    rlimit before_{};
#endif
};

// One joint with the given lines in its body, and frames.
std::string OneJoint(const std::string& body, const std::string& motion) {
    return "HIERARCHY\nROOT a\n{\n" + body + "}\nMOTION\n" + motion;
}

const std::string kTwoChannels = "OFFSET 1 2 3\nCHANNELS 2 Xposition Zposition\n";

std::string WithRows(const std::string& rows, const std::string& count = "2") {
    return OneJoint(kTwoChannels, "Frames: " + count + "\nFrame Time: 0.04\n" + rows);
}

std::string WithLineEnds(const std::string& text, const std::string& lineEnd) {
    std::string result;
    for (const char c : text) result += c == '\n' ? lineEnd : std::string(1, c);
    return result;
}

// What an outline of the one joint above shows for these samples.
std::string TwoChannels(const std::string& samples) {
    return "node0 a\n node1 OFFSET 1 2 3\n node2 POSITION Xposition Zposition" + samples + "\n";
}

}  // namespace

TEST(Capture, JointsBecomeGroups) {
    const std::string capture =
        "HIERARCHY\nROOT Hips\n{\n\tOFFSET 0 1.5 -2\n\tCHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation "
        "Yrotation\n\tJOINT a:b\n\t{\n\t\tOFFSET 1 0 0\n\t\tCHANNELS 3 Yrotation Xrotation Zrotation\n\t\tEnd "
        "Site\n\t\t"
        "{\n\t\t\tOFFSET 9 9 9\n\t\t}\n\t}\n\tJOINT c\n\t{\n\t\tOFFSET 2 0 0\n\t}\n}\nMOTION\nFrames: 2\nFrame Time: "
        "0.0333333\n1 2 3 4 5 6 7 8 9\n-1 -2 -3 -4 -5 -6 -7 -8 -0.0\n";
    const Converted converted = Convert(capture);
    ASSERT_EQ(converted.failure, "");
    EXPECT_EQ(Listing(converted.text).Nodes(),
              "node0 Hips\n node1 OFFSET 0 1.5 -2\n node2 POSITION Xposition Yposition Zposition | 1 2 3 | -1 -2 -3\n"
              " node3 ROTATION Zrotation Xrotation Yrotation | 4 5 6 | -4 -5 -6\n node4 a:b\n  node5 OFFSET 1 0 0\n"
              "  node6 ROTATION Yrotation Xrotation Zrotation | 7 8 9 | -7 -8 -0\n node7 c\n  node8 OFFSET 2 0 0\n");
    const std::string beginning = Json(
        "{'version':'vkjson2.0.0','dynamicSamplesPresentB':true,'dynamicDataInfo':{'useTimecodeB':true,"
        "'timecodeInfo':{'frameRate':{'value':30,'scale':1},'dropFrame':false}},'dataDynamicSamples':[{"
        "'sampleSetID':'node2','samples':[{'time':'00:00:00:00','value':['+1','+2','+3']},{'time':"
        "'00:00:00:01','value':['-1','-2','-3']}]},{'sampleSetID':'node3','samples':[{'time':'00:00:00:00',"
        "'value':['+4','+5','+6']},{'time':'00:00:00:01','value':['-4','-5','-6']}]},{'sampleSetID':'node");
    EXPECT_EQ(converted.text.substr(0, beginning.size()), beginning);
    EXPECT_NE(converted.text.find("\"creator\":\"com.orvane.sensor.bvh\""), std::string::npos);
}

TEST(Capture, WhatIsTaken) {
    const std::string rows = " | 1 2 | 3 4";
    const struct {
        std::string capture;
        std::string nodes;
    } cases[] = {
        // White space, marks and line ends.
        {WithRows("1 2\n3 4"), TwoChannels(rows)},
        {"\xEF\xBB\xBF\n \t" + WithRows("\n\t1\t2 \n\n  3   4\n\n\n"), TwoChannels(rows)},
        {WithLineEnds(WithRows("1 2\n3 4\n"), "\r\n"), TwoChannels(rows)},
        {WithLineEnds(WithRows("1 2\n3 4\n"), "\r"), TwoChannels(rows)},
        // Keywords and labels.
        {"hierarchy root a{offset 1 2 3 channels 2 XPOSITION zposition}motion frames:2 frame time:.04\n1 2\n3 4",
         TwoChannels(rows)},
        {"hierarchy\nroot a{offset 1 2 3 channels 2 XPOSITION zposition}Frames : 2 FRAME TIME : .04\n1 2\n3 4",
         TwoChannels(rows)},
        {"HIERARCHY\nROOT a\n{\nCHANNELS 2\nXposition\nZposition OFFSET\n1\n2\n3 }\nFrames:2\nFrameTime: 4e-2\n1 2\n3 "
         "4\n",
         TwoChannels(rows)},
        {OneJoint(
             kTwoChannels,
             "Take 7: 9 frames\nKeyframes: none\nFrames: 2 Frames\nFPS: 25\nFrame Rate: 25 Frame Frame Time: 0.04\n1 "
             "2\n3 4\n"),
         TwoChannels(rows)},
        {"HIERARCHY ROOT a{" + kTwoChannels + "}MOTION;NumFrames:2 (frame\ntime : .04\n1 2\n3 4\n", TwoChannels(rows)},
        {OneJoint(kTwoChannels, "Frames" + std::string(70000, ' ') + ": 2 Frame" + std::string(70000, '\n') +
                                    "Time: 0.04\n1 2\n3 4\n"),
         TwoChannels(rows)},
        // Names.
        {"HIERARCHY\nROOT\n\n \ta b \n{\nJOINT \n c{\n}\njoint\n{\n}\nEnd Site\nd\n{\n}\n}\nFrames: 0\nFrame Time: "
         "0.04\n",
         "node0 a b\n node1 OFFSET 0 0 0\n node2 c\n  node3 OFFSET 0 0 0\n node4 \n  node5 OFFSET 0 0 0\n"},
        {"HIERARCHY\nROOT \t a b:\xC3\xA9 \xE9  {\n}\nROOT\n{\n}\nROOT a b:\n\n{\n}\nFrames: 0\nFrame Time: 0.04\n",
         "node0 a b:\xC3\xA9 \xE9\n node1 OFFSET 0 0 0\nnode2 \n node3 OFFSET 0 0 0\nnode4 a b:\n node5 OFFSET 0 0 "
         "0\n"},
        // End sites in every form.
        {OneJoint(
             kTwoChannels + "End Site\n{\nOFFSET 0 0 0\n}\nEnd\n{\n}\nEndSite x y\n{\nCHANNELS 0\n}\nend\nsite{}\n",
             "Frames: 2\nFrame Time: 0.04\n1 2\n3 4\n"),
         TwoChannels(rows)},
        // Channels: none, other ones, some twice.
        {OneJoint("CHANNELS 0\nOFFSET 0 0 0\n", "Frames: 3\nFrame Time: 0.04\n"), "node0 a\n node1 OFFSET 0 0 0\n"},
        {OneJoint("CHANNELS 5 Xscale Zrotation zrotation What Yposition\n", "Frames: 1\nFrame Time: 0.04\n1 2 3 4 5\n"),
         "node0 a\n node1 OFFSET 0 0 0\n node2 POSITION Yposition | 5\n node3 ROTATION Zrotation | 2\n"},
        // Numbers.
        {WithRows(".5 +50\n-.5 5.\n1e2 -1.5E-3\n5e-324 -0\n98.3333 12345678901234567890\n", "5"),
         TwoChannels(" | 0.5 50 | -0.5 5 | 100 -0.0015 | 0 -0 | 98.33329999999999 1.234567890123457e+19")},
        {WithRows("1e300 -1e300\n3 1e308\n"), TwoChannels(" | 1e+300 -1e+300 | 3 1e+308")},
        // The number of frames is that of the complete rows.
        {WithRows("1 2\n3 4\n5 6\n"), TwoChannels(rows + " | 5 6")},
        {WithRows("1 2\n3 4\n", "99999999999999999999999"), TwoChannels(rows)},
        {WithRows("1 2\n3 4\n5"), TwoChannels(rows)},
        {WithRows("1 2\n3 4\n5 6"), TwoChannels(rows + " | 5 6")},
        {WithRows("1 2\n3 4\n5 6", "4"), TwoChannels(rows)},
        {WithRows("1 2\n3 4\n5 6 ", "4"), TwoChannels(rows + " | 5 6")},
        {WithRows("1 2\n3 4\n", "0"), TwoChannels(rows)},
        {WithRows("1\n2\n3 \n\n4\n"), TwoChannels(rows)},
        {WithRows("1 2\n3 4\nnotes 1 2\n5 6\n"), TwoChannels(rows)},
        {WithRows("1 2\n3 4\n5 notes\n"), TwoChannels(rows)},
        {WithRows(std::string("1 2\n3 4\n\0\1", 11)), TwoChannels(rows)},
        {WithRows("", "0"), TwoChannels("")},
    };
    for (const auto& c : cases) EXPECT_EQ(NodesOf(c.capture), c.nodes) << c.capture;
}

// The place is marked with "@", which is no part of the capture.
TEST(Capture, WhatIsRefused) {
    const std::string hierarchy = "HIERARCHY\nROOT a\n{\n" + kTwoChannels;
    const std::string motion = "}\nMOTION\nFrames: 1\nFrame Time: 0.04\n";
    const std::string captures[] = {
        "@",
        "@ROOT a\n{\n}\n",
        "HIERARCHY\n@",
        "HIERARCHY\n@MOTION\nFrames: 1\nFrame Time: 0.04\n1\n",
        "HIERARCHY\nROOT a\n@JOINT b\n",
        "HIERARCHY\nROOT\n@}\n{\n}\n",
        "HIERARCHY\nROOT a" + std::string(70000, ' ') + "@b\n{\n}\n",
        std::string("HIERARCHY\nROOT @a\0b\n{\n}\n", 25),
        "HIERARCHY\nROOT a\n{\nOFFSET 1 2@\n}\n",
        "HIERARCHY\nROOT a\n{\nOFFSET 1 2 @0,5\n}\n",
        "HIERARCHY\nROOT a\n{\nOFFSET 1 @nan 3\n}\n",
        "HIERARCHY\nROOT a\n{\nOFFSET 1 @1e400 3\n}\n",
        "HIERARCHY\nROOT a\n{\nCHANNELS @Xposition\n}\n",
        "HIERARCHY\nROOT a\n{\nCHANNELS @-1\n}\n",
        "HIERARCHY\nROOT a\n{\nCHANNELS 3 Xposition Zposition\n@}\n",
        "HIERARCHY\nROOT a\n{\nCHANNELS 1 @OFFSET 1 2 3\n}\n",
        "HIERARCHY\nROOT a\n{\nCHANNELS 1 Xposition @Zposition\n}\n",
        "HIERARCHY\nROOT a\n{\n@LENGTH 1\n}\n",
        std::string("HIERARCHY\nROOT a\n{\n@OFF\0SET 1 2 3\n}\n", 37),
        "HIERARCHY\nROOT a\n{\nEnd Site\n{\n@JOINT b\n{\n}\n}\n}\n",
        hierarchy + "@MOTION\n",
        hierarchy + "JOINT b\n{\n}\n@",
        hierarchy + "}\n@}\nFrames: 1\n",
        hierarchy + "}\nMOTION\n@1 2\n",
        hierarchy + "}\nMOTION\n@Frames 1\nFrame Time: 0.04\n",
        hierarchy + "}\nMOTION\nnotes @{ Frames: 1\nFrame Time: 0.04\n",
        hierarchy + "}\nMOTION\nFrames: 1 notes\n@}\nFrame Time: 0.04\n",
        hierarchy + "}\nMOTION\n@" + std::string(70000, 'x') + " Frames: 1\nFrame Time: 0.04\n",
        hierarchy + "}\nMOTION\nFrames: @-1\nFrame Time: 0.04\n",
        hierarchy + "}\nMOTION\nFrames: @2.5\nFrame Time: 0.04\n",
        hierarchy + "}\nMOTION\nFrames:@",
        hierarchy + "}\nMOTION\nFrames: 1\n@1 2\n",
        hierarchy + "}\nMOTION\nFrames: 1\n@Frame Rate: 25\n",
        hierarchy + "}\nMOTION\nFrames: 1\nFrame Time: 0.04 @1 2\n",
        hierarchy + motion + "1 @x\n",
        hierarchy + motion + "1 @2,5\n",
        hierarchy + motion + "1 @2-3\n",
        hierarchy + motion + "1 @0x10\n",
        hierarchy + motion + "1 @inf\n",
        hierarchy + motion + "1 @1e400\n",
        hierarchy + motion + "1 @+-5\n",
        hierarchy + motion + "1 @0." + std::string(70000, '0') + "5\n",
        hierarchy + motion + "1 2 @3\n",
        hierarchy + motion + "1\n2 @3\n",
        hierarchy + motion + "1 2\n3 4 @5\n",
        "HIERARCHY\nROOT a\n{\n" + motion + "@1\n",
    };
    for (const std::string& marked : captures) {
        for (const std::string lineEnd : {"\n", "\r\n", "\r"}) {
            std::string capture = WithLineEnds(marked, lineEnd);
            std::size_t place = capture.find('@');
            ASSERT_NE(place, std::string::npos);
            capture.erase(place, 1);
            // The end of the text counts as the place after all white space.
            while (place < capture.size() && IsBlank(capture[place])) ++place;
            const auto before = capture.begin() + static_cast<std::ptrdiff_t>(place);
            const auto line = 1 + std::count(capture.begin(), before, lineEnd.back());
            EXPECT_EQ(Convert(capture).failure, "1506 at " + std::to_string(place) + ", line " + std::to_string(line))
                << capture;
        }
    }
}

// A recorder that stops anywhere among the frames loses the frame that it was about to write, and no other.
TEST(Capture, CutAnywhere) {
    const std::string capture = WithRows("-1.5 +2\r\n.25 3e2\n\n-4E-1 -0.5\n6 7", "9");
    const std::size_t first = capture.find("-1.5");
    std::size_t frames = 0;
    for (std::size_t size = 0; size <= capture.size(); ++size) {
        const std::string cut = capture.substr(0, size);
        const Converted converted = Convert(cut);
        if (size + 1 < first) {
            EXPECT_TRUE(converted.failure.starts_with("150")) << cut;
            continue;
        }
        ASSERT_EQ(converted.failure, "") << cut;
        std::size_t numbers = 0;  // of which the end can be seen
        for (std::size_t k = first + 1; k < size; ++k) {
            if (IsBlank(cut[k]) && !IsBlank(cut[k - 1])) ++numbers;
        }
        const std::string nodes = Listing(converted.text).Nodes();
        EXPECT_EQ(std::count(nodes.begin(), nodes.end(), '|'), static_cast<std::ptrdiff_t>(numbers / 2)) << cut;
        frames = numbers / 2;
    }
    EXPECT_EQ(frames, 3U);
}

TEST(Capture, FrameTimes) {
    const std::pair<const char*, const char*> cases[] = {
        {"0.04", "25/1"},
        {"0.0416667", "24/1"},
        {"0.033367", "30000/1001"},
        {"0.0333667", "30000/1001"},
        {"0.0333333", "30/1"},
        {"0.03333", "30/1"},
        {"0.02", "50/1"},
        {"0.0166833", "60000/1001"},
        {"0.0166667", "60/1"},
        {"0.016667", "60/1"},
        {".0083333", "120/1"},
        {"0.00833333", "120/1"},
        {"0.0208333333", "48/1"},
        {"0.0425531915", "23/1"},
        {"0.0011", "909/1"},
        {"1", "1/1"},
        {"0.0010001", "999/1"},
        // With few decimals: what the nearest rate gives when it is rounded so is that rate.
        {"0.008333", "120/1"},
        {"0.00833", "120/1"},
        {"0.0083", "120/1"},
        {"0.00416667", "240/1"},
        {"0.004167", "240/1"},
        {"0.00417", "240/1"},
        {"0.033333", "30/1"},
        {"0.0333", "30/1"},
        {"0.033", "30/1"},
        {"0.041667", "24/1"},
        {"0.04167", "24/1"},
        {"0.0417", "24/1"},
        {"0.042", "24/1"},
        {"0.016667", "60/1"},
        {"0.0167", "60/1"},
        {"0.0111111", "90/1"},
        {"0.00694444", "144/1"},
        {"0.0625", "16/1"},
        {"0.063", "16/1"},
        {"0.062", "16/1"},
        {"0.5", "2/1"},
        {"1.0", "1/1"},
        {"1.", "1/1"},
        {"0.03337", "30000/1001"},
        {"0.0334", "30000/1001"},
        {"0.016683", "60000/1001"},
        {"0.01668", "60000/1001"},
        // Several rates are rounded so: of the whole ones the nearest.
        {"0.0069", "145/1"},
        {"0.0042", "238/1"},
        {"0.017", "59/1"},
        {"0.03", "33/1"},
        // Cut instead of rounded, of single precision, or between two rates.
        {"0.00416", "240/1"},
        {"0.0166", "60/1"},
        {"0.03336", "30000/1001"},
        {"0.03333333507180214", "30/1"},
        {"0.0333667000", "30000/1001"},
        {"0.033333333333333333333333", "30/1"},
        {"0.0426", "23/1"},
        {"0.041708", "23/1"},
        {"0.7", "1/1"},
        // Exponents move the point.
        {"4e-2", "25/1"},
        {"4.167E-03", "240/1"},
        {"4167e-6", "240/1"},
        {"0.04167e+0", "24/1"},
        {"0.0004167e2", "24/1"},
        {"0.1e1", "1/1"},
        {"10e-1", "1/1"},
        {"2", "1508"},
        {"1e1", "1508"},
        {"1e-3", "1508"},
        {"0.001", "1508"},
        {"0.0005", "1508"},
        {"0", "1508"},
        {"-0.04", "1508"},
        {"200", "1508"},
        {"1.1", "1508"},
        {"1e300", "1508"},
        {"nan", "1508"},
        {"inf", "1508"},
        {"0,04", "1508"},
        {"fast", "1508"},
        {"1e400", "1508"},
        {"", "1508"},
    };
    for (const auto& [time, rate] : cases) {
        // The wrapped frame would leave a number for a time that is missing.
        const Converted converted =
            Convert(OneJoint(kTwoChannels, std::string("Frames: 1\nFrame Time: ") + time + "\n1\n2\n3\n"));
        EXPECT_EQ(converted.failure.empty() ? Listing(converted.text).Rate() : converted.failure.substr(0, 4), rate)
            << time;
    }
}

// Whatever decimals a frame time is printed with, its rate comes back where no other one is printed so.
TEST(Capture, RatesComeBackFromPrintedFrameTimes) {
    const auto print = [](int rate, int decimals) {
        char text[32];
        return std::string(text,
                           std::to_chars(text, std::end(text), 1.0 / rate, std::chars_format::fixed, decimals).ptr);
    };
    int told = 0;
    for (int framesPerSecond = 2; framesPerSecond < 999; ++framesPerSecond) {
        for (int decimals = 1; decimals <= 20; ++decimals) {
            const std::string time = print(framesPerSecond, decimals);
            if (time == print(framesPerSecond - 1, decimals) || time == print(framesPerSecond + 1, decimals)) continue;
            FrameRate rate{};
            bool isExact = false;
            ASSERT_TRUE(ParseFrameTime(time, rate, isExact)) << time;
            EXPECT_TRUE(rate.numerator == static_cast<std::uint32_t>(framesPerSecond) && rate.denominator == 1) << time;
            ++told;
        }
    }
    EXPECT_GT(told, 10000);
}

TEST(Capture, GroupsAsDeepAsADocumentTakesThem) {
    for (const std::size_t depth : {100U, 101U}) {
        std::string capture = "HIERARCHY\n";
        for (std::size_t k = 0; k < depth; ++k) capture += (k == 0 ? "ROOT j\n{\n" : "JOINT j\n{\n");
        capture += std::string(depth, '}') + "\nFrames: 0\nFrame Time: 0.04\n";
        const std::string nodes = NodesOf(capture);
        EXPECT_EQ(std::count(nodes.begin(), nodes.end(), '\n'), depth == 100 ? 200 : 0);
        EXPECT_EQ(nodes.starts_with("1506 at "), depth == 101) << nodes;
    }
}

// A day of frames at one a second is all that time codes can say.
TEST(Capture, ADayIsTheLongest) {
    std::string capture = OneJoint("CHANNELS 1 Xposition\n", "Frames: 86400\nFrame Time: 1\n");
    for (int k = 0; k < 86400; ++k) capture += "1\n";
    const Converted whole = Convert(capture);
    EXPECT_EQ(whole.failure, "");
    EXPECT_NE(whole.text.find("{\"time\":\"23:59:59:00\",\"value\":[\"1\"]}]}"), std::string::npos);
    EXPECT_EQ(Convert(capture + "1\n").failure, "1506 at " + std::to_string(capture.size() + 2) + ", line 86410");
}

// Words, names and rows that lie across the pieces in which the file is read.
TEST(Capture, PiecesOfTheFile) {
    for (const std::size_t shift : {0U, 1U, 2U, 3U, 5U, 9U, 14U}) {
        std::string capture = "HIERARCHY\n" + std::string(65536 - 22 - shift, ' ') + "ROOT long name\n{\n";
        capture += "CHANNELS 2 Xposition Yrotation\n}\nFrames: 1\nFrame Time: 0.04\n";
        std::string positions;
        std::string rotations;
        for (int k = 0; k < 30000; ++k) {
            capture += std::to_string(k) + ".25 -" + std::to_string(k) + (k % 3 == 0 ? "\r\n" : "\n");
            positions += " | " + std::to_string(k) + ".25";
            rotations += k == 0 ? " | -0" : " | -" + std::to_string(k);
        }
        ASSERT_EQ(NodesOf(capture), "node0 long name\n node1 OFFSET 0 0 0\n node2 POSITION Xposition" + positions +
                                        "\n node3 ROTATION Yrotation" + rotations + "\n")
            << shift;
    }
    const std::string motion = "Frames: 0\nFrame Time: 0.04\n";
    for (const std::size_t blanks : {70000U, 262136U, 300000U}) {
        const std::string space(blanks, ' ');
        for (const std::string& spaced : {space + "long name \n", "\nlong name" + space + "\n", " long name" + space}) {
            EXPECT_EQ(NodesOf("HIERARCHY\nROOT" + spaced + "{\n}\n" + motion),
                      "node0 long name\n node1 OFFSET 0 0 0\n");
        }
    }
    std::string joints;
    for (int k = 0; k < 5000; ++k) joints += "JOINT j { OFFSET 1 2 3 }";
    const std::string nodes = NodesOf("HIERARCHY ROOT a { " + joints + " } " + motion);
    EXPECT_EQ(std::count(nodes.begin(), nodes.end(), '\n'), 10002) << "a hierarchy on one line";
    const std::string name(70000, 'x');
    EXPECT_EQ(Convert("HIERARCHY\nROOT " + name + "\n{\n}\n").failure, "1506 at 15, line 2");
    EXPECT_EQ(Convert("HIERARCHY\nROOT a\n{\n" + name + "\n}\n").failure, "1506 at 19, line 4");
}

// Each node has a temporary file, and none of them stays open or stays behind.
TEST(Capture, ManyNodesShareMemoryAndFiles) {
    constexpr int kJoints = 600;
    constexpr int kFrames = 3000;
    std::string capture = "HIERARCHY\n";
    std::string row;
    for (int k = 0; k < kJoints; ++k) {
        capture += "ROOT j\n{\nCHANNELS 3 Xrotation Yrotation Zrotation\n}\n";
        row += "12.345678 -123.45678 0.00012345 ";
    }
    capture += "Frames: 1\nFrame Time: 0.01\n";
    for (int k = 0; k < kFrames; ++k) capture += row + "\n";
    const std::size_t before = TemporaryFiles();
    const FileLimit limit(64);
    const Converted converted = Convert(capture);
    ASSERT_EQ(converted.failure, "");
    EXPECT_EQ(TemporaryFiles(), before);
    const OpenText document(converted.text, ParserChoice::kVersion2);
    const std::string last = "node" + std::to_string(3 * kJoints - 1);
    const auto samples = document.Samples(last);
    ASSERT_EQ(samples.size(), std::size_t{kFrames});
    EXPECT_EQ(boost::get<std::vector<double>>(samples.back().value),
              std::vector<double>({12.345678, -123.45678, 0.00012345}));
}

TEST(Capture, CannotBeOpened) {
    EXPECT_EQ(FailureOf([] {
                  try {
                      BVHConverter({"nowhere/in.bvh", "in.bvh", 1}).Convert();
                  } catch (const ZT_PluginException& failure) {
                      EXPECT_EQ(failure.code(), 1006U);
                      throw ns_sensor::ZT_Exception(failure.code(), "plain", -1, -1);
                  }
              }),
              "1006: plain");
}

}  // namespace zentor_test
