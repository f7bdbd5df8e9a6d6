#include "platform/vis/QorGraphicAttributeSet.h"

QorImplementClass(QorGraphicMaterial, QorBaseUnknown)
