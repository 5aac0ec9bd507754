#pragma once

#include "drawing/field_reader.h"

namespace drawing {

/// Files before the release 13 have no subclass markers; files of the release 2000 need them. Puts the markers into an
/// entity that is carried along unread, so that it can be written. A record that has markers, or that isn't known here,
/// stays.
void addLegacyMarkers(Record& record);

} // namespace drawing
