#include "drawing/dwg/allowance.h"

#include "drawing/error.h"

namespace drawing::dwg {

void Allowance::take(std::size_t bytes)
{
    if (bytes > m_left) {
        throw DrawingError("the objects say more than a file of this size can mean");
    }
    m_left -= bytes;
}

} // namespace drawing::dwg
