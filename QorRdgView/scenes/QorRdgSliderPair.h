#pragma once

#include "platform/dialog/QorDialog.h"

class QorDlgFrame;
class QorDlgSlider;
class QorDlgSpinner;

/// A label, a slider and a spinner of one value in 0..1 in a row: "ambientLabel", "ambientSlider",
/// "ambientSpinner". The spinner sets the slider with notification; the frame that subscribes to
/// both sets the spinner back.
struct QorRdgSliderPair {
    QorDlgSlider* slider = nullptr;
    QorDlgSpinner* spinner = nullptr;

    /// Makes the three in columns 0 to 2 of a row of \p iFather's grid.
    [[nodiscard]] static QorRdgSliderPair
    Make(QorDialog* iFather, const std::string& iName, int iRow, int iSteps, const char* iFormat);

    [[nodiscard]] double GetValue() const;
    /// Sets both, without notification.
    void SetValue(double iValue) const;
    /// The spinner shows what the slider has.
    void ShowSlider() const;
    /// The slider takes what was entered into the spinner, and notifies.
    void TakeSpinner() const;
};
