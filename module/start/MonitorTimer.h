#pragma once

/// The module's heartbeat, twenty times a second on the main thread: carries out a postponed file swap, drops a current
/// raster that is no longer valid, and paints the crawling frames that mark the current raster and its selection
/// straight on the drawing view. The host repaints over them at will; the next tick paints them again.
void StartMonitorTimer();
void StopMonitorTimer();

/// How often the selection was converted to view space since the module was loaded: the costly part of a tick, left out
/// while neither view nor selection changes.
unsigned MonitorRegionRebuilds();
