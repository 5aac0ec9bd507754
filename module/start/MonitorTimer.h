#pragma once

/// The module's heartbeat, twenty times a second on the main thread and never within a host command: carries out a
/// postponed file swap, drops a current raster that is no longer valid, and paints the crawling frames.
void StartMonitorTimer();
void StopMonitorTimer();
