#pragma once

/// Types a text at the host's command line when it is next idle; a trailing blank stands for Enter. The text is copied.
void PostCommandText(const wchar_t* text);

/// Cancels whatever command runs and posts another one.
void PostCommandAfterCancel(const wchar_t* text);
