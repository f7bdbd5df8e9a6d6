// Building and destroying a dialog of 200 widgets of all kinds, each in its cell and half of them
// heard, without a window. Aim: 2 ms. Beside it the same with its titles asked for, as a host
// would.
#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgCombo.h"
#include "platform/dialog/QorDlgDialog.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "platform/system/QorApplication.h"
#include "platform/system/QorQueueLoop.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int frameCount = 20; ///< of ten widgets each, the frame included

class LargeDialog : public QorDlgDialog {
public:
    LargeDialog() : QorDlgDialog(nullptr, "large", QorDlgWndOKCancel | QorDlgGridLayout) {
        for (int i = 0; i < frameCount; ++i)
            BuildFrame(i);
    }

protected:
    ~LargeDialog() override = default;

private:
    void HeardCB(QorCommand* /*iSender*/,
                 QorNotification* /*iNotification*/,
                 QorSubscriberData /*iData*/) {}

    void Hear(QorDialog* iWidget, QorNotification* iNotification) {
        AddAnalyseNotificationCB(this, iWidget, iNotification, &LargeDialog::HeardCB);
    }

    void BuildFrame(int iNumber) {
        auto* frame = new QorDlgFrame(this, "frame" + std::to_string(iNumber), QorDlgGridLayout);
        frame->SetGridConstraints(iNumber / 2, iNumber % 2, 1, 1);
        auto* slider = new QorDlgSlider(frame, "slider");
        slider->SetRange(0.0, 1.0, 100);
        Hear(slider, slider->GetSliderDragNotification());
        auto* spinner = new QorDlgSpinner(frame, "spinner");
        spinner->SetRange(0.0, 1.0, 100);
        spinner->SetFormat("%4.2f");
        Hear(spinner, spinner->GetSpinnerModifyNotification());
        auto* combo = new QorDlgCombo(frame, "combo");
        for (const char* line : {"Draft", "Standard", "High"})
            combo->SetLine(line);
        Hear(combo, combo->GetComboSelectNotification());
        auto* check = new QorDlgCheckButton(frame, "check");
        Hear(check, check->GetChkBModifyNotification());
        auto* editor = new QorDlgEditor(frame, "editor");
        Hear(editor, editor->GetEditModifyNotification());
        new QorDlgLabel(frame, "label");
        new QorDlgRadioButton(frame, "oneRadio");
        new QorDlgRadioButton(frame, "otherRadio");
        new QorDlgPushButton(frame, "button");
        int row = 0;
        for (QorDialog* widget : frame->GetWidgets())
            widget->SetGridConstraints(row++, 0, 1, 1);
    }
};

std::size_t AskForTitles(const QorDialog& iDialog) {
    std::size_t length =
        iDialog.GetTitle().GetLengthInChar() + iDialog.GetShortHelp().GetLengthInChar();
    for (const QorDialog* widget : iDialog.GetWidgets())
        length += AskForTitles(*widget);
    return length;
}

void BuildAndDestroy(benchmark::State& ioState, bool iTitles) {
    QorQueueLoop loop;
    const QorInteractiveApplication application(loop);
    for ([[maybe_unused]] auto turn : ioState) {
        auto* dialog = new LargeDialog;
        if (iTitles)
            benchmark::DoNotOptimize(AskForTitles(*dialog));
        dialog->RequestDelayedDestruction();
        loop.RunPosted();
    }
    ioState.counters["widgets"] = frameCount * 10;
}

BENCHMARK_CAPTURE(BuildAndDestroy, bare, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BuildAndDestroy, withTexts, true)->Unit(benchmark::kMicrosecond);

} // namespace
