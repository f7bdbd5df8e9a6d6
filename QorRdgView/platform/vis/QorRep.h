#pragma once

#include "platform/component/QorHandle.h"
#include "platform/text/QorString.h"
#include "platform/vis/QorBoundingBox.h"
#include "platform/vis/QorGraphicAttributeSet.h"

#include <cstdint>
#include <vector>

class QorRepVisitor2D;
class QorRepVisitor3D;

/// What of a representation changed: how it looks alone, or where it is and how far it reaches too.
enum class QorRepChange { Look, Extent };

/// Told of the changes of a representation in space and of all that it holds.
class QorRepWatcher {
public:
    virtual void RepChanged(QorRepChange iChange) = 0;

protected:
    ~QorRepWatcher() = default;
};

/// Something shown by a viewpoint. Counted; a viewpoint or bag holds a reference while it shows it.
class QorRep : public QorBaseUnknown {
    QorDeclareClass(QorRep)

    QorRep() = default;

    /// What it is, in a word: "bag", "line", "image", "mesh".
    [[nodiscard]] virtual const char* GetKind() const { return "rep"; }

    [[nodiscard]] const QorGraphicAttributeSet& GetAttributes() const { return attributes; }

    void SetAttributes(const QorGraphicAttributeSet& iAttributes);

    [[nodiscard]] bool IsShown() const { return shown; }

    void SetShown(bool iShown);

    /// Whether it is to stand out, as what is selected does. A highlighted bag highlights all that
    /// it holds.
    [[nodiscard]] bool IsHighlighted() const { return highlighted; }

    void SetHighlighted(bool iHighlighted);

    /// Whether picking finds it.
    [[nodiscard]] bool IsPickable() const { return pickable; }

    void SetPickable(bool iPickable) { pickable = iPickable; }

protected:
    ~QorRep() override = default;

    /// Called after every change.
    virtual void Touched(QorRepChange /*iChange*/) {}

private:
    QorGraphicAttributeSet attributes;
    bool shown = true;
    bool highlighted = false;
    bool pickable = true;
};

/// A representation in the plane of a 2D viewpoint: model units, y upwards. Whoever changes one has
/// its viewer drawn anew.
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

/// A representation in model space. A change has the viewers that show it drawn anew.
class Qor3DRep : public QorRep {
    QorDeclareClass(Qor3DRep)

    Qor3DRep();
    /// A copy looks the same; nobody watches it yet.
    Qor3DRep(const Qor3DRep& iOther);
    Qor3DRep& operator=(const Qor3DRep& iOther);

    /// Another, greater number after every change of the representation or of what it holds;
    /// unchanged when only its surroundings change. What is inside a material does not count, see
    /// QorGraphicMaterial::GetContentId. Costs nothing to ask.
    [[nodiscard]] std::uint64_t GetRevision() const { return revision; }

    /// \p iWatcher is told of every change until it is removed; it outlives that.
    void AddWatcher(QorRepWatcher* iWatcher);
    void RemoveWatcher(QorRepWatcher* iWatcher);
    [[nodiscard]] bool IsWatchedBy(const QorRepWatcher* iWatcher) const;

    virtual void Accept(QorRepVisitor3D& ioVisitor) const;

    /// In the coordinates of its father; empty for what has no extent.
    [[nodiscard]] virtual Qor3DBoundingBox GetBoundingBox() const { return {}; }

protected:
    ~Qor3DRep() override = default;
    void Touched(QorRepChange iChange) override;

private:
    std::uint64_t revision;
    std::vector<QorRepWatcher*> watchers; ///< mostly one: the bag that holds it
};

QorDeclareHandle(Qor2DRep);
QorDeclareHandle(Qor3DRep);
