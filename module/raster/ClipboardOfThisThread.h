// The worker empties and reads the clipboard in its own process while this thread waits for it and takes no messages.
// But a window that owns the clipboard is told, and asked for what it has only announced, by messages: a window of this
// thread, such as the host's own after a copy there, would never answer, and the worker would wait for it in vain.
#pragma once

/// Takes the clipboard, with what is on it, from a window of this thread, if one owns it.
void ReleaseClipboardOfThisThread();

/// Has a window of this thread that owns the clipboard deliver the bitmap that it may have only announced.
void RenderClipboardOfThisThread();
