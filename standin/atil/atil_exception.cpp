#include "standin/atil/atil_exception.h"

namespace Atil {
// Defined here so that the class has one home, whichever library throws it.
ATILException::~ATILException() = default;
} // namespace Atil
