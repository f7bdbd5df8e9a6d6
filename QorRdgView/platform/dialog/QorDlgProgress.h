#pragma once

#include "platform/dialog/QorDialog.h"

/// A bar that shows how far work has come.
class QorDlgProgress : public QorDialog {
    QorDeclareClass(QorDlgProgress)

    QorDlgProgress(QorCommand* iFather,
                   const QorString& iName,
                   QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "progress bar"; }

    void SetRange(int iMin, int iMax);

    [[nodiscard]] int GetMin() const { return min; }

    [[nodiscard]] int GetMax() const { return max; }

    /// Kept as given, also out of range; shown clamped.
    void SetPos(int iPosition);

    [[nodiscard]] int GetPos() const { return position; }

protected:
    ~QorDlgProgress() override = default;

private:
    int min = 0;
    int max = 100;
    int position = 0;
};
