// The host's own SDK and class library, for a build on Windows with HALVORAN_SDK. platform.h includes this file.
#pragma once

#include <DataModel.h>
#include <FileSpecifier.h>
#include <FileWriteDescriptor.h>
#include <FormatCodecPropertyInterface.h>
#include <Image.h>
#include <RowProviderInterface.h>
#include <TiffFormatCodec.h>
#include <accmd.h>
#include <acdocman.h>
#include <aced.h>
#include <acedads.h>
#include <acutads.h>
#include <afxcmn.h>
#include <afxdlgs.h>
#include <afxext.h>
#include <afxwin.h>
#include <appinfo.h>
#include <dbapserv.h>
#include <dbcolor.h>
#include <dbdict.h>
#include <dbidar.h>
#include <dbmain.h>
#include <gemat3d.h>
#include <imgdef.h>
#include <imgent.h>
#include <imgvars.h>
#include <rxdefs.h>
#include <rxdlinkr.h>
#include <rxmfcapi.h>
#include <rxregsvc.h>

// Exported by the host, declared by whoever calls it.
extern "C" Adesk::Boolean acedPostCommand(const ACHAR* text);
