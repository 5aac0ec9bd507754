// The deferred start of the rotate tools: the dialog that chose the rotation is off the screen before the tool looks at
// the view.
#pragma once

/// What to start: an index into the fixed angles for CBaseRotateTool, or one of these for CFreeRotateTool.
enum RotateCode
{
    RotateQuarterClockwise = 0,
    RotateQuarterCounterClockwise = 1,
    RotateHalf = 2,
    RotateFreeWhole = -1,
    RotateFreeSelection = -2,
};

/// Starts the tool for `code` 100 ms from now.
void StartRotateToolLater(int code);
/// Gives up a start that has not come yet.
void CancelRotateStart();
