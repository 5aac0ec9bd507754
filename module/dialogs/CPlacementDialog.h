#pragma once

#include "platform/platform.h"

/// What the dialogs that bring a raster into the drawing have in common: where it is to lie and at what scale.
class CPlacementDialog : public CDialog
{
public:
    double GetScale() const { return m_dScale; }

    AcGePoint3d m_insertion{0, 0, 0}; // drawing units
    int m_bZoom = 1;                  // show the raster when it is there
    int m_bSavePath = 1;              // the drawing names the file with its folder
    double m_dWidth = 0;              // millimetres
    double m_dHeight = 0;

protected:
    explicit CPlacementDialog(UINT templateId);

    BOOL OnInitDialog() override;
    void OnOK() override;

    /// In millimetres; works out what depends on it.
    virtual void SetSize(double width, double height);

    void ExchangePoint(CDataExchange* exchange);
    void ExchangeScale(CDataExchange* exchange);
    void ExchangeUnit(CDataExchange* exchange);

    /// Reads all fields, works out what depends on them and shows all.
    void Recompute();
    void OnFieldLeft();

private:
    double m_dScale; // drawing units per millimetre
    CString m_strSize;
    int m_nUnit; // row of the list; remembered for the next time, nothing more
};
