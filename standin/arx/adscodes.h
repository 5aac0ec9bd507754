// Type and result codes of the value lists and of the calls that take them.
#pragma once

#define RTNONE 5000
#define RTREAL 5001
#define RTPOINT 5002
#define RTSHORT 5003
#define RTSTR 5005
#define RTENAME 5006
#define RTPICKS 5007
#define RT3DPOINT 5009
#define RTLONG 5010
#define RTDXF0 5020

#define RTNORM 5100
#define RTERROR (-5001)
#define RTCAN (-5002)
#define RTREJ (-5003)
#define RTFAIL (-5004)
