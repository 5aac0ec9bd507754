// Streams of group 3 and group 4 that are broken or odd, by chance.
#pragma once

#include <random>

#include "tests/support/fax_twin.h"

/// The kinds of coding that are tried, as forms without size and bytes.
const std::vector<FaxData>& faxForms();

/// A stream of a small picture, coded by libtiff, with some bits flipped, bytes taken out or put in, or its end cut
/// off; or, as often, codes strung together by chance, many of which no encoder would write.
FaxData mutatedStream(std::mt19937& random);
