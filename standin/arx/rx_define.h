// Defines what ACRX_DECLARE_MEMBERS declares; for the stand-in's own sources.
#pragma once

#include "standin/arx/rxobject.h"

#define ACRX_DEFINE_MEMBERS(CLASS, PARENT)                                                                             \
    AcRxClass* CLASS::desc()                                                                                           \
    {                                                                                                                  \
        static AcRxClass description(L"" #CLASS, PARENT::desc());                                                      \
        return &description;                                                                                           \
    }                                                                                                                  \
    AcRxClass* CLASS::isA() const                                                                                      \
    {                                                                                                                  \
        return desc();                                                                                                 \
    }
