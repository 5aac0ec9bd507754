#include "module/base/SayOnCommandLine.h"

void SayOnCommandLine(const CString& text)
{
    acutPrintf(L"\n%s\n", static_cast<LPCWSTR>(text));
}
