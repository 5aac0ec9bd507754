// Points, entity names and value lists.
#pragma once

#include "standin/arx/adesk.h"
#include "standin/arx/adscodes.h"

typedef double ads_real;
typedef ads_real ads_point[3];
/// Two words: an entity's, or a selection set's, which are told apart by the second word.
typedef std::int64_t ads_name[2];

union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    ACHAR* rstring;
    std::int64_t rlname[2];
    std::int32_t rlong;
};

/// A list of typed values; the type is one of the RT codes or a DXF group code, and settles which member holds.
struct resbuf
{
    resbuf* rbnext;
    short restype;
    ads_u_val resval;
};

#define ads_name_set(from, to) (*(to) = *(from), *((to) + 1) = *((from) + 1))
#define ads_name_clear(name) ((name)[0] = (name)[1] = 0)
