#include "scenes/QorRdgSliderPair.h"

#include "platform/dialog/QorDlgLabel.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"

QorRdgSliderPair QorRdgSliderPair::Make(
    QorDialog* iFather, const std::string& iName, int iRow, int iSteps, const char* iFormat) {
    constexpr int labelWidth = 13;
    constexpr int spinnerWidth = 4;
    auto* label = new QorDlgLabel(iFather, iName + "Label");
    label->SetGridConstraints(iRow, 0, 1, 1);
    label->SetVisibleTextWidth(labelWidth);
    QorRdgSliderPair pair;
    pair.slider = new QorDlgSlider(iFather, iName + "Slider");
    pair.slider->SetGridConstraints(iRow, 1, 1, 1);
    pair.slider->SetRange(0.0, 1.0, iSteps);
    pair.spinner = new QorDlgSpinner(iFather, iName + "Spinner");
    pair.spinner->SetGridConstraints(iRow, 2, 1, 1);
    pair.spinner->SetRange(0.0, 1.0, iSteps);
    pair.spinner->SetFormat(iFormat);
    pair.spinner->SetVisibleTextWidth(spinnerWidth);
    iFather->SetGridColumnResizable(1, true);
    return pair;
}

double QorRdgSliderPair::GetValue() const {
    return slider->GetValue();
}

void QorRdgSliderPair::SetValue(double iValue) const {
    slider->SetValue(iValue);
    spinner->SetValue(iValue);
}

void QorRdgSliderPair::ShowSlider() const {
    spinner->SetValue(slider->GetValue());
}

void QorRdgSliderPair::TakeSpinner() const {
    slider->SetValue(spinner->GetValue(), QorDlgDoNotify);
}
