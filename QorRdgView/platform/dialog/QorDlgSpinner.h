#pragma once

#include "platform/dialog/QorDialog.h"
#include "platform/dialog/QorDlgNotifications.h"

#include <optional>

/// A number that can be typed or stepped. The value is kept exactly; the format only shows it.
class QorDlgSpinner : public QorDialog {
    QorDeclareClass(QorDlgSpinner)

    QorDlgSpinner(QorCommand* iFather,
                  const QorString& iName,
                  QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "spinner"; }

    [[nodiscard]] QorNotification* GetSpinnerModifyNotification() const { return modify.Get(); }

    /// A range in \p iSteps equal steps; with none the step stays as it was. The value is brought
    /// into the range. Ends that are no finite numbers, or the wrong way round, leave everything as
    /// it was.
    void SetRange(double iMin, double iMax, int iSteps);
    /// The same with the step itself, which stays as it was unless \p iStep is positive.
    void SetRangeWithStep(double iMin, double iMax, double iStep);

    [[nodiscard]] double GetMin() const { return min; }

    [[nodiscard]] double GetMax() const { return max; }

    [[nodiscard]] double GetStep() const { return step; }

    /// A printf format for one double, "%4.0f"; anything else is refused and the format stays.
    void SetFormat(const QorString& iFormat);

    [[nodiscard]] const QorString& GetFormat() const { return format; }

    /// The value as the format shows it, blanks cut, without regard to the locale.
    [[nodiscard]] QorUnicodeString GetShownText() const;

    [[nodiscard]] double GetValue() const { return value; }

    /// A value out of range is clamped; one that is no number is ignored. With \p iNotify modify
    /// follows when the value changes.
    void SetValue(double iValue, QorDlgNotifyFlag iNotify = QorDlgNoNotify);

    /// A person has entered a value: clamped, not snapped to a step; an equal one sends nothing.
    QorUserResult UserSetValue(double iValue);
    /// A person has entered a text: a number with a decimal point or comma, with or without what
    /// the format writes around it. The text that is shown already changes nothing, so that a value
    /// of 299.7 shown as "300" survives a look. One that is no number is Impossible: the value
    /// stays and is shown again.
    QorUserResult UserSetText(const QorUnicodeString& iText);
    /// A person's up (+1) or down (-1) button, wheel or key: \p iSteps steps from the exact value.
    /// From a value that lies on a step it goes to where a step lies, without adding up errors.
    QorUserResult UserStep(int iSteps);

protected:
    ~QorDlgSpinner() override = default;

private:
    [[nodiscard]] std::optional<double> ReadText(const QorUnicodeString& iText) const;

    double min = 0.0;
    double max = 100.0;
    double step = 1.0;
    double value = 0.0;
    QorString format = "%g";
    QorOwnNotification<QorDlgSpinnerModifyNotification> modify;
};
