#include "workbench/paint/HeadlessPictures.h"

#include <QGuiApplication>

#include <utility>

namespace qor::paint {

HeadlessPictures::HeadlessPictures(SpaceDrawer drawSpace) : drawSpace_(std::move(drawSpace)) {
    Install(this);
}

HeadlessPictures::~HeadlessPictures() {
    Install(nullptr);
}

QorPixelImage* HeadlessPictures::Take(QorViewer& ioViewer, QorUnicodeString& oError) {
    const QorVar<QorViewer> alive(&ioViewer);
    // Qt would end the program at the first text.
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        oError = "this program draws no texts";
        return nullptr;
    }
    return takePicture(ioViewer, drawSpace_, pictures_, oError).Detach();
}

} // namespace qor::paint
