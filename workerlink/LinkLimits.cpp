#include "workerlink/LinkLimits.h"

LinkLimits& CurrentLinkLimits()
{
    static LinkLimits limits;
    return limits;
}
