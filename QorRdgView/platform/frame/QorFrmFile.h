#pragma once

#include "platform/dialog/QorDlgFile.h"

/// The application frame's file dialog: a QorDlgFile.
class QorFrmFile : public QorDlgFile {
    QorDeclareClass(QorFrmFile)

    QorFrmFile(QorCommand* iFather,
               const QorString& iName,
               QorDlgStyle iStyle = QorDlgDefaultStyle);

protected:
    ~QorFrmFile() override;
};
