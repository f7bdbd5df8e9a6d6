#include "platform/dialog/QorDlgColorEditor.h"

#include <algorithm>
#include <cmath>

QorImplementClass(QorDlgColorEditor, QorDlgDialog)

QorDlgColorEditor::QorDlgColorEditor(QorCommand* iFather,
                                     const QorString& iName,
                                     QorDlgStyle iStyle)
    : QorDlgDialog(iFather, iName, iStyle | QorDlgWndOKCancel) {}

void QorDlgColorEditor::SetColor(const std::array<float, 3>& iColor) {
    for (std::size_t i = 0; i < color.size(); ++i)
        if (!std::isnan(iColor[i]))
            color[i] = std::clamp(iColor[i], 0.0F, 1.0F);
    Changed(QorAspectValue);
}

QorUserResult QorDlgColorEditor::UserAccept(const std::array<float, 3>& iColor) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    if (std::any_of(iColor.begin(), iColor.end(), [](float iPart) { return std::isnan(iPart); }))
        return QorUserResult::Impossible;
    SetColor(iColor);
    return UserSend(accepted.Get());
}

QorUserResult QorDlgColorEditor::UserCancel() {
    return UserSend(canceled.Get());
}
