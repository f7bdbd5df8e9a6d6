#include "platform/dialog/QorDlgNotifications.h"

QorImplementNotification(QorDlgDiaOKNotification) QorImplementNotification(
    QorDlgDiaCANCELNotification) QorImplementNotification(QorDlgDiaAPPLYNotification)
    QorImplementNotification(QorDlgWindCloseNotification) QorImplementNotification(
        QorDlgWindSizeNotification) QorImplementNotification(QorDlgPushBActivateNotification)
        QorImplementNotification(QorDlgChkBModifyNotification)
            QorImplementNotification(QorDlgChkBDoubleClickNotification) QorImplementNotification(
                QorDlgRadBModifyNotification) QorImplementNotification(QorDlgEditModifyNotification)
                QorImplementNotification(QorDlgComboSelectNotification) QorImplementNotification(
                    QorDlgComboModifyNotification)
                    QorImplementNotification(QorDlgSpinnerModifyNotification)
                        QorImplementNotification(QorDlgSliderModifyNotification)
                            QorImplementNotification(QorDlgSliderDragNotification)
                                QorImplementNotification(QorDlgScrollBarModifyNotification)
                                    QorImplementNotification(QorDlgScrollBarDragNotification)
                                        QorImplementNotification(QorDlgListSelectNotification)
                                            QorImplementNotification(QorDlgListActivateNotification)
                                                QorImplementNotification(
                                                    QorDlgFileSelectionOKNotification)
                                                    QorImplementNotification(
                                                        QorDlgFileSelectionCancelNotification)
                                                        QorImplementNotification(
                                                            QorDlgColorOKNotification)
                                                            QorImplementNotification(
                                                                QorDlgColorCancelNotification)
