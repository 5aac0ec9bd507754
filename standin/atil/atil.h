// All of the host's imaging library that the stand-in gives.
#pragma once

#include "standin/atil/atil_exception.h"
#include "standin/atil/file_write_descriptor.h"
#include "standin/atil/image.h"
#include "standin/atil/tiff_codec.h"
