#pragma once

#include <stdexcept>

namespace files {

/// What can't be done with a file, in words that a user can read.
class FileError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace files
