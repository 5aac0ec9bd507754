// What the handlers of all raster commands have in common.
#pragma once

#include <type_traits>

#include "module/base/CTempMFC.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"

/// Calls `work(CAcraster&)` with the current raster locked and the module's resources current. Without a current raster
/// nothing happens, and nothing is said. Work that has the user answer also takes a `const CCurentRaster&`, by which it
/// finds out whether the raster has outlived that.
template <typename Work> void WithCurrentRaster(Work&& work)
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    const CTempMFC resources;
    if constexpr (std::is_invocable_v<Work, CAcraster&, const CCurentRaster&>) {
        work(*current.m_pRaster, current);
    } else {
        work(*current.m_pRaster);
    }
}

/// Changes the current raster by `work(CAcraster&)` under the wait cursor and commits it, whatever came of the work.
/// What changes only how the raster is shown commits without a `saveReactor`: there is nothing to save.
template <typename Work> void EditCurrentRaster(Work&& work, bool saveReactor = true)
{
    WithCurrentRaster([&](CAcraster& raster) {
        const CWaitCursor wait;
        work(raster);
        raster.Reload(saveReactor);
    });
}
