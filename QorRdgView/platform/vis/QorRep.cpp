#include "platform/vis/QorRep.h"

QorImplementClass(QorRep, QorBaseUnknown)
QorImplementClass(Qor2DRep, QorRep)
QorImplementClass(Qor3DRep, QorRep)

void Qor2DRep::Accept(QorRepVisitor2D& /*ioVisitor*/) const {}

Qor2DBoundingBox Qor2DRep::GetBoundingBox() const {
    return givenBox.IsEmpty() ? ComputeBox() : givenBox;
}

void Qor2DRep::SetBoundingBox(const Qor2DBoundingBox& iBox) {
    givenBox = iBox;
}

void Qor3DRep::Accept(QorRepVisitor3D& /*ioVisitor*/) const {}
