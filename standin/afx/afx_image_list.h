// CImageList: a list of images of one size.
#pragma once

#include "standin/afx/afx_dc.h"
#include "standin/afx/afx_object.h"

class CBitmap;

/// Owns its handle: the destructor destroys it.
class HALVORAN_STANDIN_API CImageList : public CObject
{
    DECLARE_DYNAMIC(CImageList)
public:
    CImageList() = default;
    ~CImageList() override;

    operator HIMAGELIST() const { return m_hImageList; }
    HIMAGELIST GetSafeHandle() const { return m_hImageList; }
    BOOL Attach(HIMAGELIST hImageList);
    HIMAGELIST Detach();
    BOOL Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow);
    /// Images of width cx from a bitmap of the module, masked by a colour.
    BOOL Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask);
    BOOL DeleteImageList();
    int GetImageCount() const;
    /// The index of the first new image, or -1.
    int Add(CBitmap* pbmImage, CBitmap* pbmMask);
    int Add(CBitmap* pbmImage, COLORREF crMask);
    int Add(HICON hIcon);
    BOOL Remove(int nImage);
    COLORREF SetBkColor(COLORREF cr);
    BOOL GetImageInfo(int nImage, IMAGEINFO* pImageInfo) const;
    BOOL Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle);

    HIMAGELIST m_hImageList = nullptr;
};
