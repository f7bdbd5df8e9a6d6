#include "platform/engine/QorRdgCustomFrame.h"

#include "platform/engine/QorRdgEngineManager.h"

#include <algorithm>

QorImplementClass(QorRdgCustomFrame, QorDlgFrame)

QorResult QorRdgEngineManager::GetCustomFrameCount(int& oCount) {
    oCount = std::max(engine->CountCustomFrames(), 0);
    return S_OK;
}

QorResult QorRdgEngineManager::CreateCustomFrame(int iIndex,
                                                 QorDialog* iPage,
                                                 QorRdgCustomFrame*& oFrame,
                                                 QorUnicodeString& oTitle) {
    oFrame = nullptr;
    oTitle = {};
    if (iPage == nullptr || iIndex < 0 || iIndex >= engine->CountCustomFrames())
        return E_FAIL;
    QorUnicodeString title;
    oFrame = engine->CreateCustomFrame(iIndex, iPage, title);
    if (oFrame == nullptr)
        return E_FAIL;
    oTitle = title;
    return S_OK;
}
