// Nodes: their lifetime, their factories, attaching, properties, and the tables that clients call them through.
#include <gtest/gtest.h>

#include <tuple>

#include "model/node_factories.h"
#include "model/root.h"
#include "model/stream_state.h"
#include "model_call.h"

namespace zentor_test {

using namespace ZT_PLUGIN;

namespace {

struct WriterState {
    bool hasHeader = false;
    bool hasFailed = false;
    int finished = 0;
};

class FakeWriter final : public IDocumentWriter {
public:
    explicit FakeWriter(WriterState& state) : state_(state) {}
    void WriteHeader(const IVkjsonRoot_I&) override { state_.hasHeader = true; }
    bool HasHeader() const override { return state_.hasHeader; }
    bool IsOpen() const override { return state_.finished == 0 && !state_.hasFailed; }
    bool IsFinished() const override { return state_.finished != 0; }
    void GiveUp() noexcept override { state_.hasFailed = true; }
    void WriteSampleSet(const IVkjsonRoot_I&, const DynamicNodeView&, SampleBuffer&) override {}
    bool Finish(IVkjsonRoot_I&) override { return ++state_.finished == 1; }

private:
    WriterState& state_;
};

// The stream of a conversion under way, with a writer that only counts.
class Stream {
public:
    Stream() : id_(OpenStream(std::make_unique<FakeWriter>(state))) {}
    ~Stream() { Close(); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    std::uint64_t Id() const { return id_; }
    void Close() const { CloseStream(id_); }

    WriterState state;

private:
    std::uint64_t id_;
};

// A match name that no other node has.
std::string NewName() {
    static int count = 0;
    return "n" + std::to_string(++count);
}

// A client's pointer to a new node, with the one reference that it was handed over with.
template <class Interface>
class Handle {
public:
    template <class Factory, class... Arguments>
    explicit Handle(Factory create, const Stream& stream, const Arguments&... arguments) {
        EXPECT_EQ(CodeOf([&](auto* error) { create(stream.Id(), &node_, arguments..., 1, error); }), 0u);
    }
    ~Handle() { Release(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    Interface* operator->() const { return node_; }
    Interface* get() const { return node_; }
    ISharedObject* Shared() const { return node_->GetSharedObject(); }
    bool IsLive() const { return FindLiveObject(node_) != nullptr; }
    void Release() {
        if (held_) Shared()->Release();
        held_ = false;
    }

private:
    Interface* node_ = nullptr;
    bool held_ = true;
};

struct Group : Handle<IVkjsonGroup_v1> {
    explicit Group(const Stream& stream) : Handle(CreateGroup, stream, NewName().c_str(), "Group") {}
    std::size_t ChildCount() const {
        const auto children = FindLive<VkjsonGroupImpl>(get())->TakeChildren();
        std::size_t count = 0;
        for (Child child; children->Next(child);) ++count;
        return count;
    }
};
struct Root : Handle<IVkjsonRoot_v1> {
    explicit Root(const Stream& stream) : Handle(CreateRoot, stream, "creator") {}
};
struct Number : Handle<IVkjsonStaticDataNum_v1> {
    explicit Number(const Stream& stream, double value = 5)
        : Handle(CreateStaticNum, stream, NewName().c_str(), "Number", value) {}
    StaticNodeView View() const { return FindLive<VkjsonStaticDataNumImpl>(get())->View(); }
};
struct Array : Handle<IVkjsonStaticDataNumArr_v1> {
    explicit Array(const Stream& stream) : Handle(CreateStaticNumArr, stream, NewName().c_str(), "Array") {}
    const NumberArray& Values() const { return *FindLive<VkjsonStaticDataNumArrImpl>(get())->View().array; }
};

std::uint32_t AddStatic(const Group& group, const void* child) {
    auto* node = static_cast<IVkjsonStaticData_v1*>(const_cast<void*>(child));
    return CodeOf([&](auto* error) { group->AddStaticData(node, error); });
}

std::uint32_t AddGroup(const Group& group, const void* child) {
    auto* node = static_cast<IVkjsonGroup_v1*>(const_cast<void*>(child));
    return CodeOf([&](auto* error) { group->AddGroup(node, error); });
}

// Calls the k-th function (from 0) of an object's table as a C client would.
template <class Result, class... Arguments>
Result CallSlot(void* object, std::size_t k, Arguments... arguments) {
    void** const table = *static_cast<void***>(object);
    return reinterpret_cast<Result (*)(void*, Arguments...)>(table[k])(object, arguments...);
}

template <class Interface, class Factory, class... Arguments>
void ExpectFactoryRules(Factory create, const Arguments&... arguments) {
    const Stream stream;
    auto* const untouched = reinterpret_cast<Interface*>(&create);
    for (const auto& [version, code] : {std::pair{0u, 2030u}, {2u, 2029u}, {0xFFFFFFFFu, 2029u}}) {
        Interface* node = untouched;
        EXPECT_EQ(CodeOf([&](auto* error) { create(stream.Id(), &node, arguments..., version, error); }), code);
        EXPECT_EQ(node, untouched);
        create(stream.Id(), &node, arguments..., version, nullptr);
        EXPECT_EQ(node, untouched);
    }
    for (const std::uint32_t version : {0u, 1u, 2u}) {
        Interface** const nowhere = nullptr;
        EXPECT_EQ(CodeOf([&](auto* error) { create(stream.Id(), nowhere, arguments..., version, error); }), 2027u);
    }
    const Handle<Interface> made(create, stream, arguments...);
    EXPECT_TRUE(made.IsLive());
    EXPECT_EQ(FindLiveObject(made.Shared()), FindLiveObject(made.get()));
    stream.Close();
    for (const std::uint64_t over : {stream.Id(), stream.Id() + 1000}) {
        Interface* node = untouched;
        EXPECT_EQ(CodeOf([&](auto* error) { create(over, &node, arguments..., 1, error); }), 2014u);
        EXPECT_EQ(node, untouched);
    }
}

}  // namespace

TEST(SharedObject, GoesWithItsLastReference) {
    // A(cquire), R(elease); the object goes with the last one and not before.
    const Stream stream;
    for (const std::string sequence : {"R", "AR", "AARR", "AARARR", "AAARRR"}) {
        IVkjsonGroup_v1* group = nullptr;
        CreateGroup(stream.Id(), &group, "g", "g", 1, nullptr);
        ISharedObject* const shared = group->GetSharedObject();
        for (const char operation : sequence) {
            ASSERT_NE(FindLiveObject(shared), nullptr) << sequence;
            operation == 'A' ? shared->Acquire() : shared->Release();
        }
        EXPECT_EQ(FindLiveObject(shared), nullptr) << sequence;
        EXPECT_EQ(FindLiveObject(group), nullptr) << sequence;
    }
}

TEST(SharedObject, GroupsHoldWhatIsAttached) {
    const Stream stream;
    auto parent = std::make_unique<Group>(stream);
    Group child(stream);
    Number number(stream);
    ASSERT_EQ(AddGroup(*parent, child.get()), 0u);
    ASSERT_EQ(AddStatic(child, number.get()), 0u);
    ISharedObject* const shared = number.Shared();
    number.Release();
    for (int k = 0; k < 3; ++k) shared->Release();  // too often: the group's reference is not the client's
    shared->DeletingDestructor(1);
    EXPECT_TRUE(number.IsLive());
    EXPECT_EQ(number.View().number, 5);
    // A group that the client still holds outlives its parent, is no child of it any more, and stays attached.
    parent.reset();
    EXPECT_TRUE(child.IsLive());
    Group other(stream);
    EXPECT_EQ(AddGroup(child, other.get()), 0u);
    EXPECT_EQ(AddGroup(other, child.get()), 2003u);
    child.Release();
    EXPECT_FALSE(number.IsLive());
    EXPECT_TRUE(other.IsLive());
}

TEST(SharedObject, ReferencesThatWereGivenBackAreNotTakenOver) {
    const Stream stream;
    auto parent = std::make_unique<Group>(stream);
    Group child(stream);
    ASSERT_EQ(AddGroup(*parent, child.get()), 0u);
    ISharedObject* const shared = child.Shared();
    child.Release();  // never taken over by an Acquire
    shared->Acquire();
    shared->Acquire();
    parent.reset();
    shared->Release();
    EXPECT_TRUE(child.IsLive());
    shared->Release();
    EXPECT_FALSE(child.IsLive());
}

TEST(Group, TakesManyChildren) {
    const Stream stream;
    const Group group(stream);
    for (int k = 0; k < 80000; ++k) {
        const Number number(stream);
        ASSERT_EQ(AddStatic(group, number.get()), 0u);
    }
    EXPECT_EQ(group.ChildCount(), 80000u);
}

TEST(Factories, RefuseBadArguments) {
    ExpectFactoryRules<IVkjsonRoot_v1>(CreateRoot, "creator");
    ExpectFactoryRules<IVkjsonGroup_v1>(CreateGroup, "name", nullptr);
    ExpectFactoryRules<IVkjsonStaticDataNum_v1>(CreateStaticNum, "name", "Name", 1.5);
    ExpectFactoryRules<IVkjsonStaticDataString_v1>(CreateStaticString, "name", "Name", nullptr);
    ExpectFactoryRules<IVkjsonStaticDataBool_v1>(CreateStaticBool, "name", "Name", std::uint8_t{1});
    ExpectFactoryRules<IVkjsonStaticDataNumArr_v1>(CreateStaticNumArr, "name", "Name");
    ExpectFactoryRules<IVkjsonDynamicDataNum_v1>(CreateDynamicNum);
    ExpectFactoryRules<IVkjsonDynamicDataNumArr_v1>(CreateDynamicNumArr);
    ExpectFactoryRules<IVkjsonDynamicDataString_v1>(CreateDynamicString);
    const Stream stream;
    for (const char* creator : {static_cast<const char*>(nullptr), ""}) {
        IVkjsonRoot_v1* root = nullptr;
        EXPECT_EQ(CodeOf([&](auto* error) { CreateRoot(stream.Id(), &root, creator, 1, error); }), 1505u);
        EXPECT_EQ(root, nullptr);
    }
    for (const double value : {kNan, kInfinity, -kInfinity, kLargest}) {
        IVkjsonStaticDataNum_v1* number = nullptr;
        EXPECT_EQ(CodeOf([&](auto* error) { CreateStaticNum(stream.Id(), &number, "n", "n", value, 1, error); }),
                  2008u);
        EXPECT_EQ(number, nullptr);
    }
}

TEST(Group, RefusesWhatDoesNotBelong) {
    const Stream stream;
    const Stream otherStream;
    const Group a(stream);
    const Group b(stream);
    const Group c(stream);
    const Group elsewhere(otherStream);
    const Root root(stream);
    const Number number(stream);
    const Number foreign(otherStream);
    const Number taken(stream);
    const void* const released = Number(stream).get();
    const double other = 0;
    ASSERT_EQ(AddStatic(c, taken.get()), 0u);
    ASSERT_EQ(AddGroup(a, b.get()), 0u);
    ASSERT_EQ(AddGroup(b, c.get()), 0u);

    const void* const none = nullptr;
    for (const void* child : {none, static_cast<const void*>(foreign.get()), static_cast<const void*>(taken.get())}) {
        EXPECT_EQ(AddStatic(a, child), 2002u);
    }
    EXPECT_EQ(AddStatic(c, taken.get()), 2002u);
    for (const void* child : {static_cast<const void*>(&other), released, static_cast<const void*>(b.get())}) {
        EXPECT_EQ(AddStatic(a, child), 2016u);
    }
    EXPECT_EQ(AddGroup(a, nullptr), 2003u);
    EXPECT_EQ(AddGroup(a, b.get()), 2003u) << "twice";
    EXPECT_EQ(AddGroup(a, elsewhere.get()), 2003u);
    EXPECT_EQ(AddGroup(a, a.get()), 2003u) << "itself";
    EXPECT_EQ(AddGroup(b, a.get()), 2003u) << "its parent";
    EXPECT_EQ(AddGroup(c, a.get()), 2003u) << "farther above";
    EXPECT_EQ(AddGroup(a, root.get()), 2003u);
    EXPECT_EQ(AddGroup(a, root->GetGroup()), 2003u);
    EXPECT_EQ(AddGroup(a, &other), 2016u);
    EXPECT_EQ(AddGroup(a, number.get()), 2016u);
    auto* const dynamic = reinterpret_cast<IVkjsonDynamicData_v1*>(number.get());
    EXPECT_EQ(CodeOf([&](auto* error) { a->AddDynamicData(nullptr, error); }), 2001u);
    EXPECT_EQ(CodeOf([&](auto* error) { a->AddDynamicData(dynamic, error); }), 2016u);
    EXPECT_EQ(CodeOf([&](auto* error) { a->AddDynamicDataShared(number.Shared(), error); }), 2016u);
    EXPECT_EQ(CodeOf([&](auto* error) { a->AddStaticDataShared(b.Shared(), error); }), 2016u);
    EXPECT_EQ(CodeOf([&](auto* error) { b->AddGroupShared(a.Shared(), error); }), 2003u);
    EXPECT_EQ(a.ChildCount() + b.ChildCount() + c.ChildCount(), 3u);

    // A refused node is as free as before.
    EXPECT_EQ(CodeOf([&](auto* error) { root->GetGroup()->AddGroupShared(a.Shared(), error); }), 0u);
    EXPECT_EQ(CodeOf([&](auto* error) { a->AddStaticDataShared(number.Shared(), error); }), 0u);
    EXPECT_EQ(a.ChildCount(), 2u);
    a->AddStaticData(nullptr, nullptr);  // without an error record
}

TEST(Nodes, MatchNamesAreLettersAndDigits) {
    const Stream stream;
    const struct {
        const char* name;
        std::uint32_t code;
    } cases[] = {{"a", 0},     {"Zz", 0},    {"x9", 0},     {nullptr, 2022}, {"", 2022},    {"9", 2022},
                 {"9a", 2022}, {"_", 2022},  {"a b", 2022}, {"a.b", 2022},   {"a\"", 2022}, {"\xC3\xA4", 2022},
                 {"a@", 2022}, {"a[", 2022}, {"a`", 2022},  {"a{", 2022},    {"a/", 2022},  {"a:", 2022}};
    for (const auto& [name, code] : cases) {
        IVkjsonGroup_v1* group = nullptr;
        IVkjsonStaticDataNum_v1* number = nullptr;
        IVkjsonStaticDataString_v1* text = nullptr;
        IVkjsonStaticDataBool_v1* truth = nullptr;
        IVkjsonStaticDataNumArr_v1* array = nullptr;
        IVkjsonDynamicDataNum_v1* dynamic = nullptr;
        const std::uint64_t id = stream.Id();
        EXPECT_EQ(CodeOf([&](auto* error) { CreateGroup(id, &group, name, "", 1, error); }), code) << name;
        EXPECT_EQ(CodeOf([&](auto* error) { CreateStaticNum(id, &number, name, "", 1, 1, error); }), code) << name;
        EXPECT_EQ(CodeOf([&](auto* error) { CreateStaticString(id, &text, name, "", "", 1, error); }), code) << name;
        EXPECT_EQ(CodeOf([&](auto* error) { CreateStaticBool(id, &truth, name, "", 1, 1, error); }), code) << name;
        EXPECT_EQ(CodeOf([&](auto* error) { CreateStaticNumArr(id, &array, name, "", 1, error); }), code) << name;
        EXPECT_EQ(group != nullptr, code == 0) << name;
        CreateDynamicNum(id, &dynamic, 1, nullptr);
        const auto initialize = [&](auto* error) { dynamic->Initialize(name, "", "s", 0, 1, 0, nullptr, error); };
        EXPECT_EQ(CodeOf(initialize), code) << name;
    }
    ReclaimNodes(stream.Id());
}

TEST(Group, StandsNoDeeperThanTheLimit) {
    const Stream stream;
    using Chain = std::vector<std::unique_ptr<Group>>;  // each within the one before it
    const auto chain = [&stream](std::size_t levels) {
        Chain groups;
        while (groups.size() != levels) {  // from the innermost outwards
            groups.insert(groups.begin(), std::make_unique<Group>(stream));
            if (groups.size() == 1) continue;
            EXPECT_EQ(AddGroup(*groups[0], groups[1]->get()), 0u);
        }
        return groups;
    };
    const Root root(stream);
    const auto addToRoot = [&root](const Chain& groups) {
        return CodeOf([&](auto* error) { root->GetGroup()->AddGroup(groups[0]->get(), error); });
    };
    const Chain deepest = chain(100);
    EXPECT_EQ(addToRoot(deepest), 0u);
    EXPECT_EQ(AddGroup(*deepest[99], chain(1)[0]->get()), 2003u);
    EXPECT_EQ(AddGroup(*deepest[98], chain(1)[0]->get()), 0u);
    const Chain tooDeep = chain(101);
    EXPECT_EQ(addToRoot(tooDeep), 2003u);
    EXPECT_EQ(AddGroup(*chain(1)[0], tooDeep[0]->get()), 2003u) << "deeper than any document's";

    // From the outermost inwards.
    const Chain growing = chain(1);
    EXPECT_EQ(addToRoot(growing), 0u);
    Chain below;
    for (int k = 0; k < 99; ++k) {
        Chain next = chain(1);
        EXPECT_EQ(AddGroup(below.empty() ? *growing[0] : *below.back(), next[0]->get()), 0u) << k;
        below.push_back(std::move(next[0]));
    }
    EXPECT_EQ(AddGroup(*below.back(), chain(1)[0]->get()), 2003u);

    // Trees put together before they are attached: what counts is the longest way down, wherever it was added.
    const Chain upper = chain(60);
    EXPECT_EQ(addToRoot(upper), 0u);
    const Chain middle = chain(20);
    const Chain lower = chain(20);
    EXPECT_EQ(AddGroup(*middle[19], lower[0]->get()), 0u);
    EXPECT_EQ(AddGroup(*middle[3], chain(2)[0]->get()), 0u) << "a short way beside it";
    const Chain other = chain(1);
    EXPECT_EQ(AddGroup(*upper[59], other[0]->get()), 0u);
    EXPECT_EQ(AddGroup(*other[0], middle[0]->get()), 2003u);
    EXPECT_EQ(AddGroup(*upper[59], middle[0]->get()), 0u) << "as free as before";
    EXPECT_EQ(AddGroup(*lower[19], chain(1)[0]->get()), 2003u);
}

TEST(Root, IsTheOnlyOneOfItsDocument) {
    const auto secondRoot = [](const Stream& stream) {
        IVkjsonRoot_v1* root = nullptr;
        const std::uint32_t code = CodeOf([&](auto* error) { CreateRoot(stream.Id(), &root, "other", 1, error); });
        EXPECT_EQ(root, nullptr);
        return code;
    };
    const Stream stream;
    Root root(stream);
    EXPECT_EQ(secondRoot(stream), 2003u);
    EXPECT_EQ(CodeOf([&](auto* error) { EXPECT_EQ(root->WriteDocument(error), 1u); }), 0u);
    EXPECT_EQ(secondRoot(stream), 2003u) << "after it was written";
    root.Release();
    EXPECT_FALSE(root.IsLive());
    EXPECT_EQ(secondRoot(stream), 2003u) << "what hung from the first is lost";
    const Stream another;
    const Root of(another);
}

TEST(Nodes, NothingIsAttachedAfterTheEnd) {
    for (const bool isFinished : {true, false}) {
        Stream stream;
        const Root root(stream);
        const Group group(stream);
        const Group late(stream);
        const Group child(stream);
        const Number number(stream);
        const Handle<IVkjsonDynamicDataString_v1> text(CreateDynamicString, stream);
        text->Initialize("text", "", "text", 0, 1, 0, nullptr, nullptr);
        root->GetGroup()->AddGroup(group.get(), nullptr);
        if (isFinished) {
            EXPECT_EQ(root->WriteDocument(nullptr), 1u);
        } else {
            stream.state.hasFailed = true;
        }
        for (const std::uint32_t code : {2000u, 2014u}) {
            const auto expected = [code](std::uint32_t kind) { return code == 2000 ? code + kind : code; };
            for (IVkjsonGroup_v1* const parent : {root->GetGroup(), group.get(), late.get()}) {
                EXPECT_EQ(CodeOf([&](auto* error) { parent->AddDynamicDataShared(text.Shared(), error); }),
                          expected(1));
                EXPECT_EQ(CodeOf([&](auto* error) { parent->AddStaticDataShared(number.Shared(), error); }),
                          expected(2));
                EXPECT_EQ(CodeOf([&](auto* error) { parent->AddGroupShared(child.Shared(), error); }), expected(3));
            }
            const std::uint32_t headerCode = isFinished && code == 2000 ? 0 : expected(3);
            EXPECT_EQ(CodeOf([&](auto* error) { root->WriteHeader(error); }), headerCode) << isFinished;
            stream.Close();
        }
    }
}

TEST(StaticNumber, PatternAndRange) {
    const Stream stream;
    const Number number(stream);
    const auto setPattern = [&](std::uint64_t digitsInteger, std::uint64_t digitsDecimal) {
        return CodeOf([&](auto* error) { number->SetPattern(digitsInteger, digitsDecimal, 2, error); });
    };
    const auto setRange = [&](double minimum, double maximum, double value) {
        return CodeOf([&](auto* error) { number->SetRange(minimum, maximum, value, error); });
    };
    EXPECT_EQ(setPattern(3, 2), 0u);
    EXPECT_EQ(setPattern(1, kUnsetCount), 2006u);
    EXPECT_EQ(setPattern(kUnsetCount, 0), 2006u);
    EXPECT_EQ(setPattern(1001, 0), 2008u);
    EXPECT_EQ(setPattern(0, 1001), 2008u);
    EXPECT_EQ(number.View().pattern.digitsInteger, 3u);
    EXPECT_EQ(number.View().pattern.digitsDecimal, 2u);
    EXPECT_TRUE(number.View().pattern.isSigned);
    EXPECT_EQ(setPattern(kUnsetCount, kUnsetCount), 0u);
    EXPECT_FALSE(number.View().pattern.IsKnown());

    EXPECT_EQ(setRange(5, 5, 5), 0u);
    EXPECT_EQ(setRange(1, 8, 3), 0u);
    EXPECT_EQ(setRange(9, 0, 5), 2007u);
    EXPECT_EQ(setRange(0, 4, 3), 2008u) << "the node's own value is outside";
    EXPECT_EQ(setRange(6, 9, 7), 2008u);
    EXPECT_EQ(setRange(0, 9, 10), 2008u) << "the given value is outside";
    for (const double bad : {kNan, kInfinity, -kInfinity, kLargest}) {
        EXPECT_EQ(setRange(0, 9, bad), 2008u);
        EXPECT_EQ(setRange(bad, 9, 5), 2008u);
        EXPECT_EQ(setRange(0, bad, 5), 2008u);
    }
    EXPECT_EQ(number.View().legalRange.minimum, 1);
    EXPECT_EQ(number.View().legalRange.maximum, 8);
    EXPECT_EQ(setRange(kLargest, -kLargest, 5), 0u);
    EXPECT_FALSE(number.View().legalRange.IsKnown());
}

TEST(StaticNumberArray, PropertiesFitTheElements) {
    const Stream stream;
    const Array array(stream);
    const auto setValues = [&](std::vector<double> values) {
        return CodeOf([&](auto* error) { array->SetValues(values.data(), values.size(), error); });
    };
    const auto setNames = [&](std::vector<const char*> names) {
        return CodeOf([&](auto* error) { array->SetDisplayNames(names.data(), names.size(), error); });
    };
    const auto setRanges = [&](std::vector<double> minima, std::vector<double> maxima) {
        return CodeOf([&](auto* error) { array->SetRanges(minima.data(), maxima.data(), minima.size(), error); });
    };
    const double one = 1;
    EXPECT_EQ(setValues({1, -2, 3}), 0u);
    EXPECT_EQ(setValues({1, kInfinity}), 2008u);
    EXPECT_EQ(setValues({}), 2002u);
    EXPECT_EQ(CodeOf([&](auto* error) { array->SetValues(nullptr, 1, error); }), 1001u);
    EXPECT_EQ(array.Values().values, (std::vector<double>{1, -2, 3}));

    EXPECT_EQ(setNames({"x", nullptr, "z"}), 0u);
    EXPECT_EQ(setNames({"x", "y"}), 2019u);
    EXPECT_EQ(CodeOf([&](auto* error) { array->SetDisplayNames(nullptr, 3, error); }), 1001u);
    EXPECT_EQ(array.Values().displayNames, (std::vector<std::string>{"x", "", "z"}));

    EXPECT_EQ(setRanges({0, kLargest, 3}, {1, -kLargest, 3}), 0u);
    EXPECT_EQ(setRanges({0, -9}, {9, 9}), 2005u);
    EXPECT_EQ(setRanges({0, -9, 9}, {9, 9, 0}), 2007u);
    EXPECT_EQ(setRanges({0, 0, 0}, {9, 9, 9}), 2008u);
    EXPECT_EQ(CodeOf([&](auto* error) { array->SetRanges(&one, nullptr, 3, error); }), 1001u);
    ASSERT_EQ(array.Values().legalRanges.size(), 3u);
    EXPECT_EQ(array.Values().legalRanges[0].maximum, 1);
    EXPECT_FALSE(array.Values().legalRanges[1].IsKnown());

    EXPECT_EQ(CodeOf([&](auto* error) { array->SetPattern(2, kUnsetCount, 0, error); }), 2006u);
    EXPECT_FALSE(array.Values().pattern.IsKnown());

    EXPECT_EQ(setValues({0.5, 1000, 3}), 0u);  // still within the ranges
    EXPECT_EQ(array.Values().legalRanges.size(), 3u);
    EXPECT_EQ(setValues({2, 1000, 3}), 0u);  // outside the first one
    EXPECT_EQ(array.Values().legalRanges.size(), 0u);
    EXPECT_EQ(setRanges({0, 0, 0}, {9, 2000, 9}), 0u);
    EXPECT_EQ(setValues({1, 2}), 0u);
    EXPECT_EQ(array.Values().legalRanges.size() + array.Values().displayNames.size(), 0u);
    EXPECT_EQ(array->GetArraySize(), 2u);
}

TEST(Root, TimeModes) {
    Stream stream;
    const Root root(stream);
    const auto* const inside = FindLive<VkjsonRootImpl>(root.get());
    const auto setTimecode = [&](std::uint8_t dropFrame, std::uint32_t value, std::uint32_t scale) {
        return CodeOf([&](auto* error) { root->SetTimecodeInfo(dropFrame, value, scale, error); });
    };
    const auto setUtc = [&](std::uint32_t precision, std::uint8_t isGmt) {
        return CodeOf([&](auto* error) { root->SetUtcInfo(precision, isGmt, error); });
    };
    const auto addFrame = [&] { return CodeOf([&](auto* error) { root->AddVideoSyncFrame("v", 1, error); }); };
    const auto addTime = [&] { return CodeOf([&](auto* error) { root->AddVideoSyncTime("v", "t", error); }); };
    EXPECT_EQ(inside->TimeStringLength(), 0u);
    // With the length of time strings; 0: refused.
    const std::tuple<std::uint8_t, std::uint32_t, std::uint32_t, std::uint16_t> timecodes[] = {
        {0, 25, 1, 11}, {1, 30000, 1001, 11}, {1, 60000, 1001, 11}, {1, 120000, 4004, 11}, {0, 2997, 100, 11},
        {0, 99, 1, 11}, {0, 199, 2, 11},      {0, 100, 1, 12},      {0, 120, 1, 12},       {0, 1000, 1, 12},
        {0, 0, 1, 0},   {0, 25, 0, 0},        {0, 1001, 1, 0},      {0, 0xFFFFFFFF, 1, 0}};
    for (const auto& [dropFrame, value, scale, length] : timecodes) {
        ASSERT_EQ(setUtc(9, 0), 0u);
        EXPECT_EQ(setTimecode(dropFrame, value, scale), length == 0 ? 2021u : 0u) << value << "/" << scale;
        EXPECT_EQ(inside->TimeStringLength(), length == 0 ? 35 : length) << value << "/" << scale;
    }
    const std::tuple<std::uint32_t, std::uint32_t, bool> dropFrames[] = {
        {30000, 1001, true},   {60000, 1001, true},  {2997, 100, true},     {5994, 100, true},
        {299700, 10000, true}, {2996, 100, false},   {5995, 100, false},    {30, 1, false},
        {60, 1, false},        {24000, 1001, false}, {120000, 1001, false}, {30000, 0, false}};
    for (const auto& [value, scale, isAllowed] : dropFrames) {
        EXPECT_EQ(setTimecode(1, value, scale), isAllowed ? 0u : 2021u) << value << "/" << scale;
    }
    const std::tuple<std::uint32_t, std::uint8_t, std::uint16_t> utcs[] = {
        {0, 1, 20}, {0, 0, 25}, {3, 1, 24}, {3, 0, 29}, {9, 2, 30}, {10, 1, 0}, {0x10000, 1, 0}};
    for (const auto& [precision, isGmt, length] : utcs) {
        ASSERT_EQ(setTimecode(0, 25, 1), 0u);
        EXPECT_EQ(setUtc(precision, isGmt), length == 0 ? 2021u : 0u) << precision;
        EXPECT_EQ(inside->TimeStringLength(), length == 0 ? 11 : length) << precision;
    }
    EXPECT_EQ(addFrame() + addTime(), 0u);
    EXPECT_EQ(inside->VideoSync().size(), 2u);

    // Once the header is written, or the conversion is over, nothing of it changes.
    stream.state.hasHeader = true;
    for (const std::uint32_t code : {2020u, 2014u}) {
        EXPECT_EQ(setTimecode(0, 100, 1), code);
        EXPECT_EQ(setUtc(0, 1), code);
        EXPECT_EQ(addFrame(), code);
        EXPECT_EQ(addTime(), code);
        stream.Close();
    }
    EXPECT_EQ(inside->TimeStringLength(), 11u);
    EXPECT_EQ(inside->VideoSync().size(), 2u);
    EXPECT_EQ(CodeOf([&](auto* error) { EXPECT_EQ(root->WriteDocument(error), 0u); }), 2014u);
    EXPECT_EQ(CodeOf([&](auto* error) { root->WriteHeader(error); }), 2014u);
    EXPECT_EQ(CodeOf([&](auto* error) { root->SetCreator(nullptr, error); }), 1505u);
    EXPECT_EQ(inside->Creator(), "creator");
}

TEST(Tables, SlotsAreCalledByPosition) {
    Stream stream;
    Root root(stream);
    const auto* const inside = FindLive<VkjsonRootImpl>(root.get());
    ZT_ErrorRecord error{0, 77, -1, -1};
    CallSlot<void>(root.get(), 1, "new creator", &error);
    EXPECT_EQ(inside->Creator(), "new creator");
    void* const top = CallSlot<void*>(root.get(), 2);
    EXPECT_EQ(top, root->GetGroup());
    EXPECT_EQ(CallSlot<void*>(root.get(), 3), root.Shared());
    EXPECT_EQ(CallSlot<void*>(top, 3), root.Shared());
    CallSlot<void>(root.get(), 6, std::uint32_t{3}, std::uint8_t{1}, &error);
    EXPECT_EQ(inside->TimeStringLength(), 24u);
    CallSlot<void>(root.get(), 8, "w", "t", &error);
    EXPECT_EQ(inside->VideoSync().size(), 1u);
    EXPECT_EQ(error.code, 0u);

    const Number byInterface(stream, 1);
    const Number byHandle(stream, 2);
    Group group(stream);
    CallSlot<void>(top, 1, byHandle.Shared(), &error);
    CallSlot<void>(top, 5, byInterface.get(), &error);
    CallSlot<void>(top, 6, group.get(), &error);
    EXPECT_EQ(error.code, 0u);
    for (const std::uint32_t slot : {0u, 1u, 2u, 4u, 5u, 6u}) {
        CallSlot<void>(group.get(), slot, nullptr, &error);
        EXPECT_EQ(error.code, 2001 + slot % 4);
    }
    EXPECT_EQ(CallSlot<void*>(byInterface.get(), 1), byInterface.Shared());
    CallSlot<void>(byInterface.get(), 3, std::uint64_t{6}, std::uint64_t{0}, std::uint8_t{1}, &error);
    EXPECT_EQ(byInterface.View().pattern.digitsInteger, 6u);

    const Array array(stream);
    const double values[] = {1, 2};
    CallSlot<void>(array.get(), 3, values, std::uint64_t{2}, &error);
    EXPECT_EQ(CallSlot<std::uint64_t>(array.get(), 6), 2u);

    CallSlot<void>(root.get(), 9, &error);
    EXPECT_TRUE(stream.state.hasHeader);
    EXPECT_EQ(CallSlot<std::uint32_t>(root.get(), 0, &error), 1u);
    EXPECT_EQ(CallSlot<std::uint32_t>(root.get(), 0, &error), 0u);
    EXPECT_EQ(stream.state.finished, 1);
    CallSlot<void>(group.Shared(), 0);
    CallSlot<void>(group.Shared(), 0);
    CallSlot<void>(group.Shared(), 1);
    root.Release();
    EXPECT_FALSE(root.IsLive());
}

}  // namespace zentor_test
