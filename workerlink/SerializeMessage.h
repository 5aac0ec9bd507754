#pragma once

#include <vector>

#include "workerlink/WorkerMessage.h"

// The record's byte form, the same in both directions: little endian, nothing aligned, nothing between the fields.
//
//   u32 operation, then the fields of that operation's group:
//    4  string drawingFile, string rasterFile, u32 formatCode, u32 dpi, pair pixelSize, f64 scale,
//       point insertion, point reservedPoint
//    5  string drawingFile, string rasterFile, f64 scale, point insertion, point reservedPoint
//    6  string file, string filter, i32 filterIndex, i32 formatCode
//    7  string sourceFile, string targetFile, u32 formatCode, region
//    8  string file, region
//    9  string file, pair position, bool transparent
//   10  string file
//   11  string file, f64 angle, pair pivot, bool transparent, region
//   12  string file, u32 mode, u32 size, u32 selectionOnly, region
//   13  string drawingFile, string penFile, string rasterFile, string fontsDir, point corner1, point corner2,
//       i32 result, region
//   any other code: nothing
//
//   pair    two i32               point   three f64               bool   one byte, written 0 or 1, read as non-zero
//   string  as CArchive writes a CString: FF FE FF, length in UTF-16 units, the units; without the tag the units are
//           bytes of the system's code page. Lengths: u8, or FF and u16, or FF FFFF and u32, or FF FFFF FFFFFFFF and
//           u64
//   region  u32 count of bytes, 0 for none, then that many bytes of an RGNDATA block

/// The record's bytes.
std::vector<BYTE> SerializeMessage(const WorkerMessage& message);

/// Overwrites `operation` and the group that the bytes' own code names; every other field stays. The bytes stay the
/// caller's. A region in the bytes becomes a new CRgn, which the record does not free. Throws CArchiveException
/// (endOfFile) when the bytes end early.
void DeserializeMessage(WorkerMessage& message, const BYTE* bytes, size_t length);
