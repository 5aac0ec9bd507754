// Basic types of the host's API.
#pragma once

#include <windows.h>
#include <cstdint>

#include "standin/export.h"

typedef wchar_t ACHAR;

#ifndef ACRX_T
#define ACRX_T(text) L##text
#endif

namespace Adesk {
typedef bool Boolean;
typedef std::int8_t Int8;
typedef std::int16_t Int16;
typedef std::int32_t Int32;
typedef std::int64_t Int64;
typedef std::uint8_t UInt8;
typedef std::uint16_t UInt16;
typedef std::uint32_t UInt32;
typedef std::uint64_t UInt64;
typedef std::intptr_t LongPtr;
typedef std::uintptr_t ULongPtr;
inline constexpr Boolean kTrue = true;
inline constexpr Boolean kFalse = false;
} // namespace Adesk
