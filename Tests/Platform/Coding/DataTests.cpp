#include <Platform/Coding/Data.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

namespace tovrel {
namespace {

void expectZeroPadding(const Data& data) {
    for (std::size_t index = 0; index < Data::padding; ++index) {
        ASSERT_EQ(data.data()[data.size() + index], 0) << "at padding byte " << index;
    }
}

TEST(Data, IsEmptyByDefaultAndStillReadable) {
    const Data data;
    EXPECT_TRUE(data.empty());
    EXPECT_EQ(data.view(), "");
    ASSERT_NE(data.data(), nullptr);
    expectZeroPadding(data);
}

TEST(Data, CopiesWhatItIsMadeFrom) {
    std::string text("a\0b", 3);
    const Data data(text);
    text = "changed";
    EXPECT_EQ(data.size(), 3u);
    EXPECT_EQ(data.string(), std::string("a\0b", 3));
    expectZeroPadding(data);
}

TEST(Data, IsMadeFromTextVectorsAndPointers) {
    EXPECT_EQ(Data("abc"), Data(std::string_view("abc")));
    EXPECT_EQ(Data("abc"), Data(std::vector<std::uint8_t>{'a', 'b', 'c'}));
    EXPECT_EQ(Data("abc"), Data("abcdef", 3));
    EXPECT_EQ(Data(nullptr, 0), Data());
}

TEST(Data, SharesItsBytesBetweenCopies) {
    const Data data("shared");
    const Data copy = data; // NOLINT: the copy is the point
    EXPECT_EQ(copy.data(), data.data());
}

TEST(Data, OutlivesTheObjectItWasCopiedFrom) {
    Data copy;
    {
        const Data data(std::string(5000, 'x'));
        copy = data;
    }
    EXPECT_EQ(copy.string(), std::string(5000, 'x'));
}

TEST(Data, IsEmptyAfterItWasMovedFrom) {
    Data data("moved");
    const Data target = std::move(data);
    EXPECT_EQ(target.view(), "moved");
    EXPECT_TRUE(data.empty()); // NOLINT: the state after a move is part of the contract
}

TEST(Data, SurvivesAssignmentToItself) {
    Data data("self");
    const Data& alias = data;
    data = alias;
    EXPECT_EQ(data.view(), "self");
}

TEST(Data, ComparesByContent) {
    EXPECT_EQ(Data("a"), Data("a"));
    EXPECT_NE(Data("a"), Data("b"));
    EXPECT_NE(Data("a"), Data("ab"));
    EXPECT_EQ(Data(), Data(""));
}

TEST(Data, MayBeCopiedOnSeveralThreads) {
    const Data data(std::string(100, 'y'));
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&data] {
            for (int round = 0; round < 1000; ++round) {
                const Data copy = data; // NOLINT: the copy is the point
                ASSERT_EQ(copy.size(), 100u);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(data.view(), std::string(100, 'y'));
}

TEST(MutableData, FreezesItsBytesWithoutCopyingThem) {
    MutableData buffer;
    buffer.reserve(1000);
    buffer.append(std::string(1000, 'z'));
    const std::uint8_t* address = buffer.data();
    const Data data = buffer.freeze();
    EXPECT_EQ(data.data(), address);
    EXPECT_EQ(data.view(), std::string(1000, 'z'));
    expectZeroPadding(data);
    EXPECT_TRUE(buffer.empty());
}

TEST(MutableData, FreezesToEmptyDataWhenNothingWasAppended) {
    MutableData buffer;
    EXPECT_TRUE(buffer.freeze().empty());
    buffer.reserve(10);
    EXPECT_TRUE(buffer.freeze().empty());
}

TEST(MutableData, IsUsableAgainAfterFreezing) {
    MutableData buffer;
    buffer.append("one");
    const Data first = buffer.freeze();
    buffer.append("two");
    EXPECT_EQ(buffer.freeze(), Data("two"));
    EXPECT_EQ(first, Data("one"));
}

TEST(MutableData, ReservesExactlyWhatIsAsked) {
    MutableData buffer;
    buffer.reserve(12345);
    EXPECT_EQ(buffer.capacity(), 12345u);
    buffer.reserve(100);
    EXPECT_EQ(buffer.capacity(), 12345u);
    buffer.reserve(3000000);
    EXPECT_EQ(buffer.capacity(), 3000000u);
}

TEST(MutableData, KeepsItsBytesWhileItGrows) {
    MutableData buffer;
    std::string expected;
    for (int round = 0; expected.size() < (std::size_t{5} << 20); ++round) {
        const std::string piece(static_cast<std::size_t>(1 + round * 37 % 4000), static_cast<char>('a' + round % 26));
        buffer.append(piece);
        expected += piece;
    }
    ASSERT_EQ(buffer.view(), expected);
    const Data data = buffer.freeze();
    EXPECT_EQ(data.view(), expected);
    expectZeroPadding(data);
}

TEST(MutableData, AddsZeroBytesWhenItIsMadeLonger) {
    MutableData buffer;
    buffer.append("abc");
    buffer.resize(2);
    buffer.resize(5);
    EXPECT_EQ(buffer.view(), std::string_view("ab\0\0\0", 5));
}

TEST(MutableData, PadsWithZerosAfterItWasMadeShorter) {
    MutableData buffer;
    buffer.append(std::string(500, 'q'));
    buffer.resize(300);
    const Data data = buffer.freeze();
    EXPECT_EQ(data.size(), 300u);
    expectZeroPadding(data);
}

TEST(MutableData, ExtendsByBytesToWriteInto) {
    MutableData buffer;
    buffer.append("12");
    std::fill_n(buffer.extend(3), 3, std::uint8_t{'x'});
    EXPECT_EQ(buffer.view(), "12xxx");
}

TEST(MutableData, KeepsItsMemoryWhenCleared) {
    MutableData buffer;
    buffer.reserve(4096);
    buffer.append("gone");
    buffer.clear();
    EXPECT_TRUE(buffer.empty());
    EXPECT_EQ(buffer.capacity(), 4096u);
}

TEST(MutableData, GivesUnusedMemoryBackWhenFrozen) {
    MutableData buffer;
    buffer.reserve(std::size_t{64} << 20);
    buffer.append("little");
    EXPECT_EQ(buffer.freeze(), Data("little"));
}

TEST(MutableData, RefusesALengthThatNoAddressSpaceHolds) {
    MutableData buffer;
    buffer.append("kept");
    EXPECT_THROW(buffer.reserve(static_cast<std::size_t>(-1)), std::bad_alloc);
    EXPECT_THROW(buffer.extend(static_cast<std::size_t>(-1)), std::bad_alloc);
    EXPECT_EQ(buffer.view(), "kept");
}

} // namespace
} // namespace tovrel
