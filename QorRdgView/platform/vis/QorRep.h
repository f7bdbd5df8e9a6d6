#pragma once

#include "platform/component/QorHandle.h"
#include "platform/text/QorString.h"
#include "platform/vis/QorBoundingBox.h"
#include "platform/vis/QorGraphicAttributeSet.h"

#include <vector>

class QorRepVisitor2D;
class QorRepVisitor3D;

/// Something shown by a viewpoint. Counted; a viewpoint or bag holds a reference while it shows it.
class QorRep : public QorBaseUnknown {
    QorDeclareClass(QorRep)

    QorRep() = default;

    /// What it is, in a word: "bag", "line", "image", "mesh".
    [[nodiscard]] virtual const char* GetKind() const { return "rep"; }

    [[nodiscard]] const QorGraphicAttributeSet& GetAttributes() const { return attributes; }

    void SetAttributes(const QorGraphicAttributeSet& iAttributes) { attributes = iAttributes; }

    [[nodiscard]] bool IsShown() const { return shown; }

    void SetShown(bool iShown) { shown = iShown; }

    /// Whether picking finds it.
    [[nodiscard]] bool IsPickable() const { return pickable; }

    void SetPickable(bool iPickable) { pickable = iPickable; }

protected:
    ~QorRep() override = default;

private:
    QorGraphicAttributeSet attributes;
    bool shown = true;
    bool pickable = true;
};

/// A representation in the plane of a 2D viewpoint: model units, y upwards.
class Qor2DRep : public QorRep {
    QorDeclareClass(Qor2DRep)

    Qor2DRep() = default;

    /// Lets a painter, the picker or the automation port see what it is.
    virtual void Accept(QorRepVisitor2D& ioVisitor) const;
    /// In the coordinates of its father; used for picking too, unless one has been set.
    [[nodiscard]] Qor2DBoundingBox GetBoundingBox() const;
    /// From now on the box is this one, whatever is drawn.
    void SetBoundingBox(const Qor2DBoundingBox& iBox);

protected:
    ~Qor2DRep() override = default;

    [[nodiscard]] virtual Qor2DBoundingBox ComputeBox() const { return {}; }

private:
    Qor2DBoundingBox givenBox;
};

/// A representation in model space.
class Qor3DRep : public QorRep {
    QorDeclareClass(Qor3DRep)

    Qor3DRep() = default;

    virtual void Accept(QorRepVisitor3D& ioVisitor) const;

    /// In the coordinates of its father; empty for what has no extent.
    [[nodiscard]] virtual Qor3DBoundingBox GetBoundingBox() const { return {}; }

protected:
    ~Qor3DRep() override = default;
};

QorDeclareHandle(Qor2DRep);
QorDeclareHandle(Qor3DRep);
