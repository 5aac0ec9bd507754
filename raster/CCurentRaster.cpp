#include "raster/CCurentRaster.h"

#include "host/CArxApp.h"
#include "raster/CAcraster.h"

CCurentRaster::CCurentRaster() : m_pRaster(g_pArxApp->m_pRaster)
{
    if (m_pRaster && !m_pRaster->Lock(1)) {
        g_pArxApp->DropRaster();
        m_pRaster = nullptr;
    }
}

CCurentRaster::~CCurentRaster()
{
    // The work may have replaced or dropped the raster, and the lock went with it.
    if (m_pRaster && m_pRaster == g_pArxApp->m_pRaster)
        m_pRaster->Unlock();
}
