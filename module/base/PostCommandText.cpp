#include "module/base/PostCommandText.h"

#include "platform/platform.h"

void PostCommandText(const wchar_t* text)
{
    acedPostCommand(text);
}

void PostCommandAfterCancel(const wchar_t* text)
{
    PostCommandText(L"CANCELCMD");
    PostCommandText(text);
}
