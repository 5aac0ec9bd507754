// The numbers of this release, for the sources and the resources of every binary.
#pragma once

#define HALVORAN_MAJOR 6
#define HALVORAN_MINOR 6
#define HALVORAN_BUILD 12094
#define HALVORAN_REVISION 1
