#include "standin/afx/afx_image_list.h"
#include "standin/afx/afx_module.h"

IMPLEMENT_DYNAMIC(CImageList, CObject)

CImageList::~CImageList()
{
    DeleteImageList();
}

BOOL CImageList::Attach(HIMAGELIST hImageList)
{
    m_hImageList = hImageList;
    return hImageList != nullptr;
}

HIMAGELIST CImageList::Detach()
{
    const HIMAGELIST handle = m_hImageList;
    m_hImageList = nullptr;
    return handle;
}

BOOL CImageList::Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow)
{
    return Attach(::ImageList_Create(cx, cy, nFlags, nInitial, nGrow));
}

BOOL CImageList::Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask)
{
    const LPCWSTR name = MAKEINTRESOURCEW(nBitmapID);
    return Attach(
        ::ImageList_LoadImageW(AfxFindResourceHandle(name, RT_BITMAP), name, cx, nGrow, crMask, IMAGE_BITMAP, 0));
}

BOOL CImageList::DeleteImageList()
{
    return m_hImageList && ::ImageList_Destroy(Detach());
}

int CImageList::GetImageCount() const
{
    return ::ImageList_GetImageCount(m_hImageList);
}

int CImageList::Add(CBitmap* pbmImage, CBitmap* pbmMask)
{
    return ::ImageList_Add(m_hImageList, *pbmImage, pbmMask ? static_cast<HBITMAP>(*pbmMask) : nullptr);
}

int CImageList::Add(CBitmap* pbmImage, COLORREF crMask)
{
    return ::ImageList_AddMasked(m_hImageList, *pbmImage, crMask);
}

int CImageList::Add(HICON hIcon)
{
    return ::ImageList_ReplaceIcon(m_hImageList, -1, hIcon);
}

BOOL CImageList::Remove(int nImage)
{
    return ::ImageList_Remove(m_hImageList, nImage);
}

COLORREF CImageList::SetBkColor(COLORREF cr)
{
    return ::ImageList_SetBkColor(m_hImageList, cr);
}

BOOL CImageList::GetImageInfo(int nImage, IMAGEINFO* pImageInfo) const
{
    return ::ImageList_GetImageInfo(m_hImageList, nImage, pImageInfo);
}

BOOL CImageList::Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle)
{
    return ::ImageList_Draw(m_hImageList, nImage, pDC->m_hDC, pt.x, pt.y, nStyle);
}
