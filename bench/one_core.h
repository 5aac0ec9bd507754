#pragma once

#include <sched.h>

namespace bench {

/// As long as this lives, the thread and the threads that it starts share one core.
class OneCore
{
public:
    OneCore()
    {
        sched_getaffinity(0, sizeof m_all, &m_all);
        cpu_set_t here;
        CPU_ZERO(&here);
        CPU_SET(sched_getcpu(), &here);
        sched_setaffinity(0, sizeof here, &here);
    }
    ~OneCore() { sched_setaffinity(0, sizeof m_all, &m_all); }
    OneCore(const OneCore&) = delete;
    OneCore& operator=(const OneCore&) = delete;

private:
    cpu_set_t m_all;
};

} // namespace bench
