#pragma once
// The dialog "Value...": grid time and the rates of Expand and Reduce.

#include "platform/dialogs/Dialog.h"

class CDlgOSTraceValue : public CDialog {
  public:
    explicit CDlgOSTraceValue(CWnd* parent = nullptr);

    // Filled by the caller before DoModal and read after IDOK. The grid time is hours to
    // nanoseconds in the modes 1 to 3 and a count of cycles in mode 4; rates are at least 1.
    int mode = 0;  // the trace's time mode
    int hours = 0;
    int minutes = 0;
    int seconds = 0;
    int milliseconds = 0;
    int microseconds = 0;
    int nanoseconds = 0;
    double cycles = 0.0;
    double expandRate = 1.0;
    double reduceRate = 1.0;

    bool OnInitDialog() override;

  protected:
    void OnOK() override;

  private:
    bool ReadGridTime();
    bool ReadParts();
    bool ReadCycles();
    bool ReadRate(UINT id, double& rate);
    bool ReadNumber(UINT id, int most, int& value);
    // Selects the field's text and focuses it; answers false.
    bool Refuse(UINT id);
};
