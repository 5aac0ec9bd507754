#pragma once

#include <windows.h>
#include <cstdio>

// What the test program and its child processes share: the steps that a child takes, and what it saw.
//
// The steps stand in the environment variable below, separated by blanks, in the order in which they are taken:
//
//   read             takes the block under the child's number and keeps it
//   working ok ready signals that handshake semaphore
//   reply            publishes the block that was read, under the number's decimal text
//   reply:cut        the same without its last byte
//   reply:code:N     publishes the 4 bytes of the code N
//   finish           waits for the end of the transfer of what was published last
//   linger           waits until the READY semaphore of the number has gone
//   sleep:N          waits N milliseconds
//   unless-first     a child that is the first of its test ends here, with exit code 7
//   quit             waits for WM_QUIT and ends with exit code 40 + its wParam
//   hang             takes no notice of anything any more
//   kill             ends at once, with exit code 9

namespace child {

constexpr wchar_t stepsVariable[] = L"HALVORAN_TEST_STEPS";
constexpr wchar_t parentVariable[] = L"HALVORAN_TEST_PARENT";

constexpr int mostStarts = 8;
constexpr int mostBytes = 4096;

struct Start
{
    DWORD transferNumber;
    DWORD startupFlags;
    DWORD showWindow;
    wchar_t desktop[64];
    wchar_t commandLine[600];
    // A handle to the child, valid in the test program, which closes it.
    UINT64 process;
    BOOL received;
    DWORD receivedSize;
    BYTE receivedBytes[mostBytes];
};

/// In a mapping named after the test program's process id.
struct Report
{
    LONG starts;
    Start start[mostStarts];
};

inline void reportName(wchar_t (&name)[64], DWORD parent)
{
    swprintf(name, 64, L"HalvoranTestReport_%lu", parent);
}

} // namespace child
