#pragma once

#include "platform/dialog/QorDialog.h"
#include "platform/dialog/QorDlgNotifications.h"

/// A value in a range, chosen by sliding. Every step of a person sends drag; modify follows at the
/// release of the mouse or after the key.
class QorDlgSlider : public QorDialog {
    QorDeclareClass(QorDlgSlider)

    QorDlgSlider(QorCommand* iFather,
                 const QorString& iName,
                 QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "slider"; }

    [[nodiscard]] QorOrientation GetOrientation() const;

    [[nodiscard]] QorNotification* GetSliderModifyNotification() const { return modify.Get(); }

    [[nodiscard]] QorNotification* GetSliderDragNotification() const { return drag.Get(); }

    /// A range in \p iSteps equal steps (at least 1). The value is brought into the range. Ends
    /// that are no finite numbers, or the wrong way round, leave everything as it was.
    void SetRange(double iMin, double iMax, int iSteps);

    [[nodiscard]] double GetMin() const { return min; }

    [[nodiscard]] double GetMax() const { return max; }

    [[nodiscard]] double GetStep() const { return step; }

    [[nodiscard]] double GetValue() const { return value; }

    /// A value out of range is clamped, one that is no number ignored. With \p iNotify drag and
    /// then modify follow when the value changes. Inside a drag notification the value may be set
    /// too; the modify at the release comes all the same.
    void SetValue(double iValue, QorDlgNotifyFlag iNotify = QorDlgNoNotify);

    /// A person slides to \p iValue (clamped, not snapped): drag, when it is a change.
    QorUserResult UserDrag(double iValue);
    /// A person slides to \p iValue and lets go, or has pressed a key: drag when it is a change,
    /// then modify when the value differs from the last one that was modified.
    QorUserResult UserSetValue(double iValue);

protected:
    ~QorDlgSlider() override = default;

private:
    bool Move(double iValue);
    void Drag(double iValue);
    void Settle();

    double min = 0.0;
    double max = 100.0;
    double step = 1.0;
    double value = 0.0;
    double settled = 0.0;  ///< the value of the last modify, or set by program
    bool dragging = false; ///< inside a drag notification
    QorOwnNotification<QorDlgSliderModifyNotification> modify;
    QorOwnNotification<QorDlgSliderDragNotification> drag;
};
