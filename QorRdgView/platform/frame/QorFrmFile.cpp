#include "platform/frame/QorFrmFile.h"

QorFrmFile::QorFrmFile(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDlgFile(iFather, iName, iStyle) {}

QorFrmFile::~QorFrmFile() = default;

QorImplementClass(QorFrmFile, QorDlgFile)
