#pragma once

#include "platform/platform.h"

/// Shows the module's picture in the middle of the screen for two seconds. There is at most one, which deletes itself
/// with its window.
class CSplashWnd : public CWnd
{
public:
    /// Whether Show does anything.
    static void Enable(bool enabled);
    /// Nothing happens while one is there already.
    static void Show();
    /// Takes it away before its time: the module goes.
    static void Close();

    ~CSplashWnd() override;

protected:
    BOOL Open();
    void PostNcDestroy() override;

    int OnCreate(LPCREATESTRUCT create);
    void OnPaint();
    void OnTimer(UINT_PTR timer);
    DECLARE_MESSAGE_MAP()

private:
    CSplashWnd() = default;
};
