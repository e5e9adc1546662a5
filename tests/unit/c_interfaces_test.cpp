// The tables of functions that C programs call through: the same functions as in the interfaces, in the same slots.
#include "zentor/c_interfaces.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace zentor_test {

namespace {

template <class Function>
struct AsC;
template <class Interface, class Result, class... Arguments>
struct AsC<Result (Interface::*)(Arguments...) noexcept> {
    using Type = Result (*)(Interface*, Arguments...);
};

// The place of a virtual function in its table: what its pointer holds is the offset there and 1.
template <class Function>
std::size_t SlotOf(Function function) {
    std::size_t place = 0;
    static_assert(sizeof function >= sizeof place);
    std::memcpy(&place, &function, sizeof place);
    return place / sizeof(void*);
}

}  // namespace

#define EXPECT_SAME(interface, name)                                                                                \
    static_assert(std::is_same_v<decltype(interface##Table::name), AsC<decltype(&interface::name)>::Type>);         \
    EXPECT_EQ(offsetof(interface##Table, name) / sizeof(void*), SlotOf(&interface::name)) << #interface "::" #name; \
    ++count

// An entry whose type is another does not compile here.
TEST(TablesOfC, HaveEveryFunctionInItsSlot) {
    std::size_t count = 0;
    EXPECT_SAME(IVkjsonStream, Read);
    EXPECT_SAME(IVkjsonStream, SaveTo);
    EXPECT_SAME(IVkjsonStream, DocumentPath);
    EXPECT_SAME(IVkjsonStream, Size);
    EXPECT_SAME(IVkjsonStream, Remaining);
    EXPECT_SAME(IVkjsonStream, Rewind);
    EXPECT_SAME(IVkjsonStream, DeletingDestructor);
    EXPECT_SAME(IVkjsonStream, Acquire);
    EXPECT_SAME(IVkjsonStream, Release);
    EXPECT_SAME(IVkjsonStream, GetInternal);
    EXPECT_SAME(IVkjsonStream, DestroyShared);
    EXPECT_EQ(sizeof(IVkjsonStreamTable), count * sizeof(void*));
    count = 0;
    EXPECT_SAME(ISensorFileHandler, GetRootChildren);
    EXPECT_SAME(ISensorFileHandler, GetGroupChildren);
    EXPECT_SAME(ISensorFileHandler, GetGroupChildInfo);
    EXPECT_SAME(ISensorFileHandler, GetStaticDataInfo);
    EXPECT_SAME(ISensorFileHandler, GetDynamicDataInfo);
    EXPECT_SAME(ISensorFileHandler, GetDynamicSamples);
    EXPECT_SAME(ISensorFileHandler, GetDynamicSample);
    EXPECT_SAME(ISensorFileHandler, GetFileInfo);
    EXPECT_SAME(ISensorFileHandler, GetVideoSyncTimeList);
    EXPECT_SAME(ISensorFileHandler, DeletingDestructor);
    EXPECT_SAME(ISensorFileHandler, GetRootChildrenClient);
    EXPECT_SAME(ISensorFileHandler, GetGroupChildrenClient);
    EXPECT_SAME(ISensorFileHandler, GetGroupChildInfoClient);
    EXPECT_SAME(ISensorFileHandler, GetStaticDataInfoClient);
    EXPECT_SAME(ISensorFileHandler, GetDynamicDataInfoClient);
    EXPECT_SAME(ISensorFileHandler, GetDynamicSamplesClient);
    EXPECT_SAME(ISensorFileHandler, GetDynamicSampleClient);
    EXPECT_SAME(ISensorFileHandler, GetFileInfoClient);
    EXPECT_SAME(ISensorFileHandler, GetVideoSyncTimeListClient);
    EXPECT_EQ(sizeof(ISensorFileHandlerTable), count * sizeof(void*));
    count = 0;
    EXPECT_SAME(IZentor, OpenFile);
    EXPECT_SAME(IZentor, CloseFile);
    EXPECT_SAME(IZentor, ConvertFile);
    EXPECT_SAME(IZentor, ReleaseStream);
    EXPECT_SAME(IZentor, DeletingDestructor);
    EXPECT_SAME(IZentor, Acquire);
    EXPECT_SAME(IZentor, Release);
    EXPECT_SAME(IZentor, GetInternal);
    EXPECT_SAME(IZentor, DestroyShared);
    EXPECT_EQ(sizeof(IZentorTable), count * sizeof(void*));
}

}  // namespace zentor_test
