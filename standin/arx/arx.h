// All of the host's API that the stand-in gives.
#pragma once

#include "standin/arx/accmd.h"
#include "standin/arx/acdocman.h"
#include "standin/arx/aced.h"
#include "standin/arx/acedads.h"
#include "standin/arx/acutads.h"
#include "standin/arx/appinfo.h"
#include "standin/arx/dbapserv.h"
#include "standin/arx/dbdict.h"
#include "standin/arx/dbidar.h"
#include "standin/arx/dbmain.h"
#include "standin/arx/gemat3d.h"
#include "standin/arx/imgdef.h"
#include "standin/arx/imgent.h"
#include "standin/arx/imgvars.h"
#include "standin/arx/rxapi.h"
#include "standin/arx/rxmfcapi.h"
