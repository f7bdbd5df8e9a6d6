#pragma once

#include "platform/vis/QorGraphicMaterial.h"
#include "platform/vis/QorMesh.h"
#include "platform/vis/QorRep.h"

/// Several representations moved together. One may stand in several bags, but no bag in itself.
class Qor3DBagRep
    : public Qor3DRep
    , private QorRepWatcher {
    QorDeclareClass(Qor3DBagRep)

    Qor3DBagRep() = default;
    Qor3DBagRep(const Qor3DBagRep&) = delete;
    Qor3DBagRep& operator=(const Qor3DBagRep&) = delete;

    [[nodiscard]] const char* GetKind() const override { return "bag"; }

    /// Holds a reference; adding a child again moves it to the end.
    void AddChild(Qor3DRep* iChild);
    void RemoveChild(Qor3DRep* iChild);

    [[nodiscard]] const std::vector<Qor3DRep_var>& GetChildren() const { return children; }

    void SetMatrix(const QorMathTransformation& iMatrix);

    [[nodiscard]] const QorMathTransformation& GetMatrix() const { return matrix; }

    /// Around what is shown; kept until something in it changes.
    [[nodiscard]] Qor3DBoundingBox GetBoundingBox() const override;
    void Accept(QorRepVisitor3D& ioVisitor) const override;

protected:
    ~Qor3DBagRep() override;
    void Touched(QorRepChange iChange) override;

private:
    void RepChanged(QorRepChange iChange) override;

    std::vector<Qor3DRep_var> children;
    QorMathTransformation matrix;
    mutable Qor3DBoundingBox box;
    mutable bool boxIsKnown = false;
};

/// A mesh with a material.
class Qor3DMeshRep : public Qor3DRep {
    QorDeclareClass(Qor3DMeshRep)

    Qor3DMeshRep(QorMesh* iMesh, QorGraphicMaterial* iMaterial);

    [[nodiscard]] const char* GetKind() const override { return "mesh"; }

    [[nodiscard]] QorMesh* GetMesh() const { return mesh; }

    [[nodiscard]] QorGraphicMaterial* GetMaterial() const { return material; }

    void SetMaterial(QorGraphicMaterial* iMaterial);

    [[nodiscard]] Qor3DBoundingBox GetBoundingBox() const override {
        return mesh->GetBoundingBox();
    }

    void Accept(QorRepVisitor3D& ioVisitor) const override;

protected:
    ~Qor3DMeshRep() override = default;

private:
    QorMesh_var mesh;
    QorVar<QorGraphicMaterial> material;
};

/// A polyline in space, as long as it takes.
class Qor3DLineRep : public Qor3DRep {
    QorDeclareClass(Qor3DLineRep)

    explicit Qor3DLineRep(std::vector<QorMathPoint> iPoints);

    [[nodiscard]] const char* GetKind() const override { return "line"; }

    [[nodiscard]] const std::vector<QorMathPoint>& GetPoints() const { return points; }

    [[nodiscard]] Qor3DBoundingBox GetBoundingBox() const override;
    void Accept(QorRepVisitor3D& ioVisitor) const override;

protected:
    ~Qor3DLineRep() override = default;

private:
    std::vector<QorMathPoint> points;
};

enum class QorLightType : int { Directional = 0, Point = 1, Spot = 2 };
/// Whether a light stands in model space or moves with the eye.
enum class QorLightMode : int { Model = 0, Viewer = 1 };

/// A source of light. Its colours are factors, RGBA.
class Qor3DLightSourceRep : public Qor3DRep {
    QorDeclareClass(Qor3DLightSourceRep)

    /// \p iDirection need not be of length 1; \p iAngle, in degrees, is the full opening of a
    /// spot.
    Qor3DLightSourceRep(QorLightType iType,
                        QorLightMode iMode,
                        const QorMathPoint& iPosition,
                        const QorMathVector& iDirection,
                        float iAngle);
    Qor3DLightSourceRep(const Qor3DLightSourceRep& iOther) = default;

    [[nodiscard]] const char* GetKind() const override { return "light"; }

    [[nodiscard]] QorLightType GetType() const { return type; }

    [[nodiscard]] QorLightMode GetMode() const { return mode; }

    [[nodiscard]] const QorMathPoint& GetPosition() const { return position; }

    [[nodiscard]] const QorMathVector& GetDirection() const { return direction; }

    [[nodiscard]] float GetAngle() const { return angle; }

    void SetLocationParameters(const QorMathPoint& iPosition, const QorMathVector& iDirection);
    void
    SetColorParameters(const float iAmbient[4], const float iDiffuse[4], const float iSpecular[4]);
    void GetColorParameters(float oAmbient[4], float oDiffuse[4], float oSpecular[4]) const;
    void Accept(QorRepVisitor3D& ioVisitor) const override;

protected:
    ~Qor3DLightSourceRep() override = default;

private:
    QorLightType type;
    QorLightMode mode;
    QorMathPoint position;
    QorMathVector direction;
    float angle;
    float ambient[4] = {0.0F, 0.0F, 0.0F, 1.0F};
    float diffuse[4] = {1.0F, 1.0F, 1.0F, 1.0F};
    float specular[4] = {1.0F, 1.0F, 1.0F, 1.0F};
};

QorDeclareHandle(Qor3DLightSourceRep);

/// The ground under a product: a square plane that fades into the distance and catches shadows.
class QorRsc3DGroundRep : public Qor3DRep {
    QorDeclareClass(QorRsc3DGroundRep)

    /// Centre, upward normal and length of a side in millimetres.
    QorRsc3DGroundRep(const QorMathPoint& iOrigin, const QorMathVector& iVertical, double iSize);

    [[nodiscard]] const char* GetKind() const override { return "ground"; }

    [[nodiscard]] const QorMathPoint& GetOrigin() const { return origin; }

    [[nodiscard]] const QorMathVector& GetVertical() const { return vertical; }

    [[nodiscard]] double GetSize() const { return size; }

    /// Moves it along its vertical, in millimetres.
    void Translate(double iDistance);
    /// 0..1, clamped.
    void SetTransparency(float iValue);

    [[nodiscard]] float GetTransparency() const { return transparency; }

    void SetReflectivity(float iValue);

    [[nodiscard]] float GetReflectivity() const { return reflectivity; }

    [[nodiscard]] Qor3DBoundingBox GetBoundingBox() const override;
    void Accept(QorRepVisitor3D& ioVisitor) const override;

protected:
    ~QorRsc3DGroundRep() override = default;

private:
    QorMathPoint origin;
    QorMathVector vertical;
    double size;
    float transparency = 0.0F;
    float reflectivity = 0.0F;
};

QorDeclareHandle(QorRsc3DGroundRep);

/// Whoever walks a tree of 3D representations.
class QorRepVisitor3D {
public:
    virtual ~QorRepVisitor3D() = default;
    virtual void Visit(const Qor3DBagRep& iRep) = 0;
    virtual void Visit(const Qor3DMeshRep& iRep) = 0;
    virtual void Visit(const Qor3DLineRep& iRep) = 0;
    virtual void Visit(const Qor3DLightSourceRep& iRep) = 0;
    virtual void Visit(const QorRsc3DGroundRep& iRep) = 0;
};

/// The bounding box of representations in a frame of one's own.
class Qor3DBoundingBoxRender {
public:
    /// \p iToFrame takes model space to the frame in which the box is wanted.
    explicit Qor3DBoundingBoxRender(const QorMathTransformation& iToFrame) : toFrame(iToFrame) {}

    /// Exact: every vertex is taken to the frame. Lights and grounds do not count, nor what is
    /// hidden.
    [[nodiscard]] Qor3DBoundingBox Render(const Qor3DBagRep& iBag) const;

private:
    QorMathTransformation toFrame;
};
