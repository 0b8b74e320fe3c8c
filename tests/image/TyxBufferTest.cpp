#include <tyx/TyxBuffer.h>
#include <tyx/TyxTextMsg.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "TyxRecordingHandler.h"

// Lets the sanitizer build answer an impossible allocation with null, as the
// C library does, instead of stopping the test program.
extern "C" __attribute__((visibility("default"))) const char *__asan_default_options()
{
    return "allocator_may_return_null=1";
}

namespace {

using tyx::test::HandlerScope;

using namespace tyx;

constexpr uint64_t kImpossible = uint64_t(1) << 62;
constexpr uint64_t kHugePage = uint64_t(2) << 20;

TEST(TyxBufferTest, AllocateDeallocateAndTheZeroSize)
{
    HandlerScope scope;
    TyxBuffer empty(0, true);
    EXPECT_EQ(empty.data(), nullptr);
    EXPECT_EQ(empty.allocate(), nullptr);
    EXPECT_TRUE(scope.handler->messages.empty());

    TyxBuffer buffer(16, false);
    void *block = buffer.allocate();
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(buffer.allocate(), block);
    buffer.setDataType(TyxDataType(TyxNumericType::U16));
    EXPECT_TRUE(buffer.deallocate());
    EXPECT_FALSE(buffer.deallocate());
    EXPECT_EQ(buffer.data(), nullptr);
    EXPECT_EQ(buffer.size(), 16u);
    EXPECT_FALSE(buffer.dataType().isValid());
}

TEST(TyxBufferTest, WrappedBlockIsLeftToItsOwner)
{
    unsigned char block[32];
    for (int i = 0; i < 32; ++i)
        block[i] = static_cast<unsigned char>(i);
    TyxBuffer wrapped(16, block, false);
    EXPECT_FALSE(wrapped.ownsData());
    EXPECT_FALSE(wrapped.deallocate());
    EXPECT_TRUE(wrapped.ownsData());
    {
        TyxBuffer buffer(16, block, false);
        void *own = buffer.reallocate(32, true);
        ASSERT_NE(own, nullptr);
        EXPECT_NE(own, static_cast<void *>(block));
        EXPECT_TRUE(buffer.ownsData());
        EXPECT_EQ(std::memcmp(own, block, 16), 0);
    }
    for (int i = 0; i < 32; ++i)
        EXPECT_EQ(block[i], i);

    // An owned foreign block is freed; growing or shrinking it keeps the
    // leading bytes and the label.
    void *owned = std::malloc(64);
    TyxBuffer buffer(64, owned, true);
    std::memset(owned, 7, 64);
    buffer.setDataType(TyxDataType(TyxNumericType::U8));
    void *grown = buffer.reallocate(128, true);
    ASSERT_NE(grown, nullptr);
    EXPECT_EQ(static_cast<unsigned char *>(grown)[63], 7);
    ASSERT_NE(buffer.reallocate(4, true), nullptr);
    EXPECT_EQ(static_cast<unsigned char *>(buffer.data())[3], 7);
    ASSERT_NE(buffer.reallocate(16, false), nullptr);
    EXPECT_EQ(buffer.dataType(), TyxDataType(TyxNumericType::U8));
}

TEST(TyxBufferTest, LargeBlocksAreAlignedToHugePages)
{
    TyxBuffer buffer(3 * kHugePage + 5, true);
    ASSERT_NE(buffer.data(), nullptr);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(buffer.data()) % kHugePage, 0u);
    auto *bytes = static_cast<unsigned char *>(buffer.data());
    bytes[0] = 1;
    bytes[buffer.size() - 1] = 2;

    // Growing keeps contents and alignment.
    ASSERT_NE(buffer.reallocate(5 * kHugePage, true), nullptr);
    bytes = static_cast<unsigned char *>(buffer.data());
    EXPECT_EQ(reinterpret_cast<uintptr_t>(bytes) % kHugePage, 0u);
    EXPECT_EQ(bytes[0], 1);
    EXPECT_EQ(bytes[3 * kHugePage + 4], 2);
}

TEST(TyxBufferTest, CopiesAssignmentAndComparison)
{
    unsigned char block[4] = {1, 2, 3, 4};
    TyxBuffer wrapped(4, block, false);
    const TyxBuffer copy(wrapped);
    EXPECT_TRUE(copy.ownsData());
    EXPECT_NE(copy.data(), static_cast<void *>(block));
    EXPECT_EQ(std::memcmp(copy.data(), "\1\2\3\4", 4), 0);

    const TyxBufferPtr clone = wrapped.clone();
    clone->setDataType(TyxDataType(TyxNumericType::I8));
    EXPECT_TRUE(*clone == wrapped);
    block[3] = 9;
    EXPECT_TRUE(*clone != wrapped);
    EXPECT_TRUE(TyxBuffer(2, false) != TyxBuffer(3, false));

    // Assignment reuses a block of the same size.
    TyxBuffer source(4, true);
    std::memcpy(source.data(), "wxyz", 4);
    TyxBuffer target(4, true);
    void *reused = target.data();
    target = source;
    EXPECT_EQ(target.data(), reused);
    EXPECT_EQ(std::memcmp(target.data(), "wxyz", 4), 0);

    // Even a wrapped block of the same size is written over.
    char outside[4] = {};
    TyxBuffer around(4, outside, false);
    around = source;
    EXPECT_EQ(around.data(), static_cast<void *>(outside));
    EXPECT_EQ(std::memcmp(outside, "wxyz", 4), 0);

    // An empty source empties the target; a sized one without a block
    // leaves an unallocated target of its size.
    TyxBuffer empty;
    target = empty;
    EXPECT_EQ(target.size(), 0u);
    EXPECT_EQ(target.data(), nullptr);
    TyxBuffer sized(9, false);
    TyxBuffer fresh(3, true);
    fresh = sized;
    EXPECT_EQ(fresh.size(), 9u);
    EXPECT_EQ(fresh.data(), nullptr);

    target = target;
    EXPECT_EQ(target.size(), 0u);
}

TEST(TyxBufferTest, FailedAllocationPostsOrThrows)
{
    const TyxString text = L"Cannot allocate '4611686018427387904' bytes for buffer.";
    {
        HandlerScope scope;
        TyxBuffer buffer(kImpossible, true);
        EXPECT_FALSE(buffer.isValid());
        ASSERT_EQ(scope.handler->messages.size(), 1u);
        EXPECT_EQ(scope.handler->messages[0].text(), text);
        EXPECT_EQ(scope.handler->messages[0].srcFname(), L"TyxBuffer.cpp");
        // deallocate leaves the failed state; the size stays.
        buffer.deallocate();
        EXPECT_TRUE(buffer.isValid());

        TyxBuffer growing(8, true);
        EXPECT_EQ(growing.reallocate(kImpossible, true), nullptr);
        EXPECT_FALSE(growing.isValid());
        EXPECT_EQ(growing.size(), kImpossible);
        ASSERT_EQ(scope.handler->messages.size(), 2u);
    }
    // The default handler throws the message.
    TyxBuffer buffer(kImpossible, false);
    try {
        buffer.allocate();
        FAIL() << "no exception";
    } catch (const TyxTextMsg &message) {
        EXPECT_EQ(message.text(), text);
    }
    EXPECT_FALSE(buffer.isValid());
}

} // namespace
