#include "module/tools/CTimer.h"

CTimer::CTimer()
{
    _ftime64(&m_time);
}

bool CTimer::HasElapsed() const
{
    __timeb64 now;
    _ftime64(&now);
    return (now.time - m_time.time) * 1000 + now.millitm - m_time.millitm > 500;
}
