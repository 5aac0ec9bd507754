// What the records of all tables begin with, and what other records share with them.
#pragma once

#include "drawing/dwg/object_fields.h"

namespace drawing::dwg {

/// The record's name and the flags that all records have, of group 70. Writing: gives back the flags of the group;
/// reading: those that were read, and the caller gives the group when it knows the others.
int recordHead(ObjectFields& f);

/// The handle of the external reference that a record came with; drawings without such references have none.
void externalReference(ObjectFields& f);

/// One bit for one flag: that of `flags` is written, or one is read. Gives back the flag or 0.
int flagBit(ObjectFields& f, int flags, int flag);

} // namespace drawing::dwg
