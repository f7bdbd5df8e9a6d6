#include "platform/vis/QorGraphicMaterial.h"

#include "platform/vis/QorContentId.h"

QorImplementClass(QorGraphicMaterial, QorBaseUnknown)

QorGraphicMaterial::QorGraphicMaterial() : contentId(QorNewContentId()) {}

void QorGraphicMaterial::MarkModified() {
    contentId = QorNewContentId();
}
