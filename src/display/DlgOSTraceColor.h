#pragma once
// The dialog "Color...": the chart's 36 colours, each with a button and a label that open the
// colour picker and a swatch that shows it, and opens it too. It works on a copy: the caller takes
// the colours after IDOK.

#include "display/model/Color.h"
#include "platform/dialogs/Dialog.h"

class CDlgOSTraceColor : public CDialog {
  public:
    // offersVariablePools: the row of the variable-size pools is shown.
    CDlgOSTraceColor(const COSColor& colors, bool offersVariablePools, CWnd* parent = nullptr);

    const COSColor& Colors() const { return colors_; }

    bool OnInitDialog() override;
    bool OnCmdMsg(UINT id, UINT code, CCmdUI* ui) override;

  protected:
    const MessageMap& GetMessageMap() const override;
    void OnPaint();
    void OnLButtonDown(UINT flags, CPoint point);
    void ResetAll();

  private:
    void ChooseColor(EColor which);
    void ResetGroup(UINT reset);
    void PaintSwatches();

    COSColor colors_;
    bool offersVariablePools_;
};
