#pragma once

#include <sys/timeb.h>

/// Takes note of the time of its construction.
class CTimer
{
public:
    CTimer();
    virtual ~CTimer() = default;

    /// Whether more than 500 ms have passed since.
    bool HasElapsed() const;

    __timeb64 m_time;
};
