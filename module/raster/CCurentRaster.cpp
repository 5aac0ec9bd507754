#include "module/raster/CCurentRaster.h"

#include <utility>

#include "module/base/CArxApp.h"
#include "module/raster/CAcraster.h"

CCurentRaster::CCurentRaster()
{
    DropRasterOfOtherDrawing();
    m_pRaster = g_pArxApp->m_pRaster;
    if (m_pRaster && !m_pRaster->Lock(1)) {
        DropCurrentRaster();
        m_pRaster = nullptr;
    }
    if (m_pRaster)
        m_nSerial = m_pRaster->GetSerial();
}

CCurentRaster::~CCurentRaster()
{
    // The work may have replaced or dropped the raster, and the lock went with it.
    if (CAcraster* raster = GetIfCurrent())
        raster->Unlock();
}

void DropCurrentRaster()
{
    // What the raster's end sets off must not find it any more.
    delete std::exchange(g_pArxApp->m_pRaster, nullptr);
}

void DropRasterOfOtherDrawing()
{
    const CAcraster* raster = g_pArxApp->m_pRaster;
    if (raster && raster->IsInOtherDrawing())
        DropCurrentRaster();
}

CAcraster* CCurentRaster::GetIfCurrent() const
{
    // One that takes the place of a deleted raster often lies at the same address.
    const bool same = m_pRaster && m_pRaster == g_pArxApp->m_pRaster && m_pRaster->GetSerial() == m_nSerial;
    return same ? m_pRaster : nullptr;
}
