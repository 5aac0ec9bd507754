// Trouble inside the imaging library.
#pragma once

#include <stdexcept>

#include "standin/export.h"

namespace Atil {
class HALVORAN_STANDIN_API ATILException : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
    ~ATILException() override;
};
} // namespace Atil
