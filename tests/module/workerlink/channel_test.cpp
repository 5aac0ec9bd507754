#include <cstring>
#include <objbase.h>

#include "link_fixture.h"
#include "workerlink/CMemMap.h"
#include "workerlink/CMemMapSemaphore.h"
#include "workerlink/MemMapNames.h"

namespace {

// A number that no other test uses: the next one after the system's choice.
DWORD freshNumber()
{
    static DWORD number = ChooseTransferNumber();
    return ++number;
}

// A block published without a watch thread, so that the test decides when its parts come and go.
class HandMadeBlock
{
public:
    HandMadeBlock(DWORD number, const std::vector<BYTE>& bytes)
    {
        const DWORD size = static_cast<DWORD>(bytes.size());
        m_mapping =
            CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size + 4, MappingName(number, L""));
        auto* view = static_cast<BYTE*>(MapViewOfFile(m_mapping, FILE_MAP_WRITE, 0, 0, 0));
        std::memcpy(view, &size, 4);
        std::memcpy(view + 4, bytes.data(), bytes.size());
        UnmapViewOfFile(view);
    }
    ~HandMadeBlock() { CloseHandle(m_mapping); }
    HandMadeBlock(const HandMadeBlock&) = delete;
    HandMadeBlock& operator=(const HandMadeBlock&) = delete;

private:
    HANDLE m_mapping;
};

std::vector<BYTE> received(const child::Start& start)
{
    return {start.receivedBytes, start.receivedBytes + start.receivedSize};
}

class ChannelTest : public LinkTest
{};

} // namespace

TEST(TransferNumber, IsTheLowHalfOfTheCounterOrOfAGuidAndNeverSmall)
{
    EXPECT_EQ(TransferNumberFromCounter(0x10000), 0x10000u);
    EXPECT_EQ(TransferNumberFromCounter(0xFFFF), 0x1FFFEu);
    EXPECT_EQ(TransferNumberFromCounter(0x7FFFFFFF89ABCDEF), 0x89ABCDEFu);
    // Halves 0x4444333322222211 (Data1, Data2, Data3 in memory order) and 0x0807060504030201, which make
    // 0x4C43353626212010; 0x26212010 ^ 0x4C433536 = 0x6A621526.
    EXPECT_EQ(TransferNumberFromGuid({0x22222211, 0x3333, 0x4444, {1, 2, 3, 4, 5, 6, 7, 8}}), 0x6A621526u);
    EXPECT_EQ(TransferNumberFromGuid(GUID{}), 0xFFFFu);
}

TEST(TransferNames, ANumberAndItsDecimalTextAreTheSame)
{
    EXPECT_EQ(MappingName(4294967295u, L""), L"CMemMap_M_4294967295");
    EXPECT_EQ(ClaimName(70000, L""), L"CMemMap_M_70000S");
    EXPECT_EQ(TookItName(70000, L""), L"CMemMap_S_70000");
    EXPECT_EQ(DoneName(70000, L""), L"CMemMap_SEnd_70000");
    EXPECT_EQ(DoneName(70000, L"", true), L"Global\\CMemMap_SEnd_70000");
    for (const auto& nameOf : {MappingName, ClaimName, TookItName})
        EXPECT_EQ(nameOf(0, L"70000"), nameOf(70000, L""));
    EXPECT_EQ(DoneName(0, L"70000"), DoneName(70000, L""));
}

TEST_F(ChannelTest, TheMappingHoldsTheLengthAndTheBytes)
{
    const std::vector<BYTE> bytes{0x41, 0x42, 0x43};
    const CString name = L"layout";
    const CMemMap published(bytes.data(), 3, name);
    EXPECT_EQ(published.id, 0u) << "a transfer that goes by name has no number";
    const HANDLE mapping = OpenFileMappingW(FILE_MAP_READ, FALSE, L"CMemMap_M_layout");
    ASSERT_NE(mapping, nullptr);
    const auto* view = static_cast<const BYTE*>(MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 7));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(std::vector<BYTE>(view, view + 7), (std::vector<BYTE>{3, 0, 0, 0, 0x41, 0x42, 0x43}));
    UnmapViewOfFile(view);
    CloseHandle(mapping);
    const CMemMap got(0, name);
    EXPECT_EQ(got.size, 3u);
}

TEST_F(ChannelTest, ASecondReaderGetsNothingAtOnceAndLeavesTheFirstAlone)
{
    childrenTake(L"read");
    const DWORD number = freshNumber();
    const HandMadeBlock block(number, countingBytes(10));
    CMemMapSemaphore tookIt;
    ASSERT_TRUE(tookIt.Open(TookItName(number, L""), true));
    const auto run = startChild(number);
    tookIt.Wait(INFINITE);
    // The first reader has its copy and holds the claim until it hears that the block is let go.
    CMemMapSemaphore done;
    EXPECT_TRUE(done.Open(DoneName(number, L""), false)) << "done has to be there before took-it is signalled";
    const CMemMap second(number, L"");
    EXPECT_EQ(second.id, 0u);
    EXPECT_EQ(second.data, nullptr);
    EXPECT_FALSE(tookIt.Wait(0)) << "the second reader signalled";
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(process(0), &code) && code == STILL_ACTIVE) << "the first reader was woken";
    done.SignalLocked();
    EXPECT_EQ(exitCode(0), 0u);
    EXPECT_EQ(received(start(0)), countingBytes(10));
}

TEST_F(ChannelTest, AReaderWithoutAPublisherGetsNothing)
{
    const DWORD number = freshNumber();
    const CMemMap got(number, L"");
    EXPECT_EQ(got.id, 0u);
    EXPECT_EQ(got.data, nullptr);
    EXPECT_EQ(got.size, 0u);
    expectNothingLeft(number);
}

TEST_F(ChannelTest, ABlockThatNobodyTakesGoesAfterItsTime)
{
    childrenTake(L"read");
    CurrentLinkLimits().publishedBlock = 50;
    const CMemMap published(countingBytes(4).data(), 4, L"");
    expectNothingLeft(published.id);
    const auto run = startChild(published.id);
    EXPECT_EQ(exitCode(0), 0u);
    EXPECT_FALSE(start(0).received) << "a reader came too late and still got the block";
}

TEST_F(ChannelTest, AReaderThatFindsNoTookItSemaphoreStillHasTheBlock)
{
    CurrentLinkLimits().blockLetGo = 50;
    const DWORD number = freshNumber();
    const HandMadeBlock block(number, countingBytes(10));
    const CMemMap got(number, L"");
    EXPECT_EQ(got.id, number);
    ASSERT_EQ(got.size, 10u);
    EXPECT_EQ(std::vector<BYTE>(got.data, got.data + 10), countingBytes(10));
}

TEST_F(ChannelTest, APublisherThatCannotMakeItsSemaphoreKeepsTheBlockForItsReader)
{
    childrenTake(L"read");
    // An object of another kind stands under the took-it semaphore's name.
    const HANDLE inTheWay = CreateMutexW(nullptr, FALSE, L"CMemMap_S_in_the_way");
    CurrentLinkLimits().blockLetGo = 50;
    CurrentLinkLimits().publishedBlock = 60000;
    const CMemMap published(countingBytes(10).data(), 10, L"in_the_way");
    EXPECT_EQ(WaitForSingleObject(published.thread, 200), static_cast<DWORD>(WAIT_TIMEOUT)) << "the block has gone";
    const CMemMap got(0, L"in_the_way");
    EXPECT_EQ(got.size, 10u);
    CloseHandle(inTheWay);
}

TEST_F(ChannelTest, WhatCannotBePublishedHasTheNumber0)
{
    const std::vector<BYTE> bytes = countingBytes(4);
    const HANDLE inTheWay = CreateMutexW(nullptr, FALSE, L"CMemMap_M_blocked");
    const CMemMap blocked(bytes.data(), 4, L"blocked");
    const CMemMap empty(nullptr, 0, L"");
    const CMemMap tooLarge(bytes.data(), 0xFFFFFFFD, L""); // length and bytes together do not fit 32 bits
    for (const CMemMap* published : {&blocked, &empty, &tooLarge}) {
        EXPECT_EQ(published->id, 0u);
        EXPECT_EQ(published->thread, nullptr);
    }
    CloseHandle(inTheWay);
}

TEST_F(ChannelTest, ANewSemaphoreHasNoSignalAndAnOldOneKeepsIts)
{
    CMemMapSemaphore made;
    ASSERT_TRUE(made.Open(L"HalvoranTestSemaphore", true));
    EXPECT_FALSE(made.existed);
    EXPECT_FALSE(made.Wait(0));
    made.Signal();
    made.Signal();
    CMemMapSemaphore again;
    ASSERT_TRUE(again.Open(L"HalvoranTestSemaphore", true));
    EXPECT_TRUE(again.existed);
    EXPECT_TRUE(again.Wait(0)) << "making a semaphore that is there must not use up its signal";
    EXPECT_FALSE(again.Wait(0)) << "a semaphore holds one signal";
    again.Close();
    made.Close();
    EXPECT_FALSE(again.Open(L"HalvoranTestSemaphore", false)) << "nobody holds it any more";
    EXPECT_FALSE(again.existed);
}

TEST_F(ChannelTest, ASignallerWaitsForTheLockForAMomentOnly)
{
    CMemMapSemaphore first;
    CMemMapSemaphore second;
    ASSERT_TRUE(first.Open(L"HalvoranTestLocked", true));
    ASSERT_TRUE(second.Open(L"HalvoranTestLocked", false));
    first.Lock();
    second.SignalLocked(); // the lock is held and does not come; the signal goes out all the same
    EXPECT_TRUE(first.Wait(0)) << "a held lock kept a signal back";
    first.Unlock();
    second.Lock();
    EXPECT_NE(second.lock, nullptr);
    second.Unlock();
    EXPECT_EQ(OpenSemaphoreW(SYNCHRONIZE, FALSE, L"HalvoranTestLocked_LOCK"), nullptr);
}
