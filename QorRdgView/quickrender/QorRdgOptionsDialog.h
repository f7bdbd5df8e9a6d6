#pragma once

#include "platform/component/QorHandle.h"
#include "platform/dialog/QorDlgDialog.h"
#include "platform/system/QorSettingRepository.h"

class QorDlgCheckButton;
class QorDlgCombo;
class QorDlgRadioButton;
class QorDlgSpinner;

/// The options of a quick render: quality, final gathering and the resolution of the output, kept
/// in the settings repository "RenderingOptionsSettings". OK writes and saves them, Cancel and the
/// close box write nothing; the dialog does not close itself, its father receives the notification
/// and destroys it. Texts are in the message catalog "QorRdgOptionsDialog".
///
/// When the repository cannot be opened the dialog shows the widgets as they were built, and OK
/// writes nothing.
class QorRdgOptionsDialog : public QorDlgDialog {
    QorDeclareClass(QorRdgOptionsDialog)

    /// OK and Cancel buttons are added to \p iStyle. The dialog is filled, and hidden until
    /// shown.
    QorRdgOptionsDialog(QorCommand* iFather,
                        const QorString& iName,
                        QorDlgStyle iStyle = QorDlgDefaultStyle);

    /// Opens the repository and shows its values; keys that are absent show the middle quality,
    /// final gathering, the resolution of the screen, 300 and pixels per inch.
    void Init();

    void OKCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void CancelCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    /// Custom resolution and unit can be edited unless the resolution is that of the screen.
    void ResolutionModifiedCB(QorCommand* iSender,
                              QorNotification* iNotification,
                              QorSubscriberData iData);

protected:
    ~QorRdgOptionsDialog() override;

private:
    void BuildQuality();
    void BuildResolution();
    void Subscribe();
    void SetCustomSensitivity(QorDlgSensitivity iSensitivity);
    void WriteSettings();

    QorVar<QorSettingRepository> settings;
    QorDlgCombo* qualityCombo = nullptr;
    QorDlgCheckButton* finalGatherCheck = nullptr;
    QorDlgRadioButton* screenRadio = nullptr;
    QorDlgRadioButton* customRadio = nullptr;
    QorDlgSpinner* customSpinner = nullptr;
    QorDlgCombo* unitCombo = nullptr;
};
