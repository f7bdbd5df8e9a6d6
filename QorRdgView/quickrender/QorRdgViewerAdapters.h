#pragma once

/// From now on 3D viewers answer QorIRdgDisplay, QorIRdgArea, QorIRdgBackground and QorIRdgGround.
/// Programs call it once; calling it again changes nothing.
void QorRegisterViewerAdapters();
