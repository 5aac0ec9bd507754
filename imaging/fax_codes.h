// The codes of ITU-T recommendations T.4 (group 3) and T.6 (group 4), as they are printed there: first bit leftmost.
//
// A run is coded as make-up codes of multiples of 64 pixels, as many as it takes, and one terminating code of 0 to 63.
// White runs, which are our paper, and black ones have codes of their own, but for the longest. A row begins with a
// white run.
#pragma once

#include <array>
#include <string_view>

namespace imaging {

inline constexpr int longestTerminatingRun = 63;
inline constexpr int longestMakeUpRun = 2560;
inline constexpr int longestFaxCode = 13;

/// Runs of 0 to 63, 64 to 1728 in steps of 64, and, in either colour, 1792 to 2560 in steps of 64.
inline constexpr int faxRunCodeCount = 64 + 27 + 13;

using FaxRunCodes = std::array<std::string_view, faxRunCodeCount>;

/// The run that the code of this place in a table stands for.
constexpr int runOfFaxCode(int index)
{
    return index <= longestTerminatingRun ? index : (index - longestTerminatingRun) * 64;
}

// clang-format off
inline constexpr FaxRunCodes whiteRunCodes = {
    "00110101", "000111", "0111", "1000", "1011", "1100", "1110", "1111", "10011", "10100", "00111", "01000",
    "001000", "000011", "110100", "110101", "101010", "101011", "0100111", "0001100", "0001000", "0010111", "0000011",
    "0000100", "0101000", "0101011", "0010011", "0100100", "0011000", "00000010", "00000011", "00011010", "00011011",
    "00010010", "00010011", "00010100", "00010101", "00010110", "00010111", "00101000", "00101001", "00101010",
    "00101011", "00101100", "00101101", "00000100", "00000101", "00001010", "00001011", "01010010", "01010011",
    "01010100", "01010101", "00100100", "00100101", "01011000", "01011001", "01011010", "01011011", "01001010",
    "01001011", "00110010", "00110011", "00110100",
    // make-up
    "11011", "10010", "010111", "0110111", "00110110", "00110111", "01100100", "01100101", "01101000", "01100111",
    "011001100", "011001101", "011010010", "011010011", "011010100", "011010101", "011010110", "011010111",
    "011011000", "011011001", "011011010", "011011011", "010011000", "010011001", "010011010", "011000", "010011011",
    // of either colour
    "00000001000", "00000001100", "00000001101", "000000010010", "000000010011", "000000010100", "000000010101",
    "000000010110", "000000010111", "000000011100", "000000011101", "000000011110", "000000011111",
};

inline constexpr FaxRunCodes blackRunCodes = {
    "0000110111", "010", "11", "10", "011", "0011", "0010", "00011", "000101", "000100", "0000100", "0000101",
    "0000111", "00000100", "00000111", "000011000", "0000010111", "0000011000", "0000001000", "00001100111",
    "00001101000", "00001101100", "00000110111", "00000101000", "00000010111", "00000011000", "000011001010",
    "000011001011", "000011001100", "000011001101", "000001101000", "000001101001", "000001101010", "000001101011",
    "000011010010", "000011010011", "000011010100", "000011010101", "000011010110", "000011010111", "000001101100",
    "000001101101", "000011011010", "000011011011", "000001010100", "000001010101", "000001010110", "000001010111",
    "000001100100", "000001100101", "000001010010", "000001010011", "000000100100", "000000110111", "000000111000",
    "000000100111", "000000101000", "000001011000", "000001011001", "000000101011", "000000101100", "000001011010",
    "000001100110", "000001100111",
    // make-up
    "0000001111", "000011001000", "000011001001", "000001011011", "000000110011", "000000110100", "000000110101",
    "0000001101100", "0000001101101", "0000001001010", "0000001001011", "0000001001100", "0000001001101",
    "0000001110010", "0000001110011", "0000001110100", "0000001110101", "0000001110110", "0000001110111",
    "0000001010010", "0000001010011", "0000001010100", "0000001010101", "0000001011010", "0000001011011",
    "0000001100100", "0000001100101",
    // of either colour
    "00000001000", "00000001100", "00000001101", "000000010010", "000000010011", "000000010100", "000000010101",
    "000000010110", "000000010111", "000000011100", "000000011101", "000000011110", "000000011111",
};
// clang-format on

// Two-dimensional rows are told relative to the row above, the reference:
//
//                  b1     b2
//     above  ......#######......    a0  the last change that was told; at first the row's beginning
//     row    ##......########...    a1  the next change, a2 the one behind it
//              a0    a1      a2     b1  the first change above beyond a0 and to a1's colour, b2 the one behind it
//
// Vertical: a1 lies at most three pixels beside b1. Pass: a1 lies beyond b2, to which a0 moves. Horizontal: the runs a0
// to a1 and a1 to a2 follow with their own codes.
inline constexpr int farthestVertical = 3;
/// By a1 - b1, from -3 to 3.
inline constexpr std::array<std::string_view, 7> verticalCodes = {"0000010", "000010", "010",    "1",
                                                                  "011",     "000011", "0000011"};
inline constexpr std::string_view passCode = "0001";
inline constexpr std::string_view horizontalCode = "001";
inline constexpr int longestModeCode = 7;

/// Stands before each row of group 3, as many zeros as the writer likes before it; twice at the end of group 4. No row
/// of codes contains as many zeros, nor do two rows where they meet.
inline constexpr std::string_view endOfLineCode = "000000000001";

} // namespace imaging
