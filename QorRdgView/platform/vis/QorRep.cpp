#include "platform/vis/QorRep.h"

#include "platform/vis/QorContentId.h"

#include <algorithm>
#include <utility>

QorImplementClass(QorRep, QorBaseUnknown)
QorImplementClass(Qor2DRep, QorRep)
QorImplementClass(Qor3DRep, QorRep)

void QorRep::SetAttributes(const QorGraphicAttributeSet& iAttributes) {
    if (!(std::exchange(attributes, iAttributes) == iAttributes))
        Touched(QorRepChange::Look);
}

void QorRep::SetShown(bool iShown) {
    if (std::exchange(shown, iShown) != iShown)
        Touched(QorRepChange::Extent);
}

void QorRep::SetHighlighted(bool iHighlighted) {
    if (std::exchange(highlighted, iHighlighted) != iHighlighted)
        Touched(QorRepChange::Look);
}

void Qor2DRep::Accept(QorRepVisitor2D& /*ioVisitor*/) const {}

Qor2DBoundingBox Qor2DRep::GetBoundingBox() const {
    return givenBox.IsEmpty() ? ComputeBox() : givenBox;
}

void Qor2DRep::SetBoundingBox(const Qor2DBoundingBox& iBox) {
    givenBox = iBox;
}

Qor3DRep::Qor3DRep() : revision(QorNewContentId()) {}

Qor3DRep::Qor3DRep(const Qor3DRep& iOther) : QorRep(iOther), revision(QorNewContentId()) {}

Qor3DRep& Qor3DRep::operator=(const Qor3DRep& iOther) {
    QorRep::operator=(iOther);
    Touched(QorRepChange::Extent);
    return *this;
}

void Qor3DRep::AddWatcher(QorRepWatcher* iWatcher) {
    watchers.push_back(iWatcher);
}

void Qor3DRep::RemoveWatcher(QorRepWatcher* iWatcher) {
    const auto found = std::find(watchers.begin(), watchers.end(), iWatcher);
    if (found != watchers.end())
        watchers.erase(found);
}

bool Qor3DRep::IsWatchedBy(const QorRepWatcher* iWatcher) const {
    return std::find(watchers.begin(), watchers.end(), iWatcher) != watchers.end();
}

void Qor3DRep::Touched(QorRepChange iChange) {
    revision = QorNewContentId();
    for (QorRepWatcher* watcher : watchers)
        watcher->RepChanged(iChange);
}

void Qor3DRep::Accept(QorRepVisitor3D& /*ioVisitor*/) const {}
