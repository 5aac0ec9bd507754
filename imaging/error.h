#pragma once

#include <stdexcept>

namespace imaging {

/// Whatever goes wrong with an image or its file, in words that a user can read.
class ImagingError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace imaging
