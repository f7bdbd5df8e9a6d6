#pragma once

#include "platform/vis/QorPixelImage.h"
#include "platform/vis/QorRep.h"

#include <array>

/// Several representations moved together. The first child is drawn first.
class Qor2DBagRep : public Qor2DRep {
    QorDeclareClass(Qor2DBagRep)

    Qor2DBagRep() = default;

    [[nodiscard]] const char* GetKind() const override { return "bag"; }

    /// Holds a reference; adding a child again moves it to the end.
    void AddChild(Qor2DRep* iChild);
    void RemoveChild(Qor2DRep* iChild);

    [[nodiscard]] const std::vector<Qor2DRep_var>& GetChildren() const { return children; }

    /// Rotation and scale a, b, c, d (x' = a x + c y, y' = b x + d y) and translation.
    void SetMatrix(const std::array<double, 4>& iLinear, const QorMathPoint2D& iTranslation);
    void SetTranslation(const QorMathPoint2D& iTranslation);

    [[nodiscard]] const std::array<double, 4>& GetLinear() const { return linear; }

    [[nodiscard]] const QorMathPoint2D& GetTranslation() const { return translation; }

    void Accept(QorRepVisitor2D& ioVisitor) const override;

protected:
    ~Qor2DBagRep() override = default;
    [[nodiscard]] Qor2DBoundingBox ComputeBox() const override;

private:
    std::vector<Qor2DRep_var> children;
    std::array<double, 4> linear{1.0, 0.0, 0.0, 1.0};
    QorMathPoint2D translation;
};

/// A polyline.
class Qor2DLineRep : public Qor2DRep {
    QorDeclareClass(Qor2DLineRep)

    explicit Qor2DLineRep(std::vector<QorMathPoint2D> iPoints);

    [[nodiscard]] const char* GetKind() const override { return "line"; }

    [[nodiscard]] const std::vector<QorMathPoint2D>& GetPoints() const { return points; }

    void SetPoints(std::vector<QorMathPoint2D> iPoints) { points = std::move(iPoints); }

    void Accept(QorRepVisitor2D& ioVisitor) const override;

protected:
    ~Qor2DLineRep() override = default;
    [[nodiscard]] Qor2DBoundingBox ComputeBox() const override;

private:
    std::vector<QorMathPoint2D> points;
};

/// A mark, of the same size at every scale.
class Qor2DPointRep : public Qor2DRep {
    QorDeclareClass(Qor2DPointRep)

    explicit Qor2DPointRep(const QorMathPoint2D& iPoint);

    [[nodiscard]] const char* GetKind() const override { return "point"; }

    [[nodiscard]] const QorMathPoint2D& GetPoint() const { return point; }

    void SetPoint(const QorMathPoint2D& iPoint) { point = iPoint; }

    void Accept(QorRepVisitor2D& ioVisitor) const override;

protected:
    ~Qor2DPointRep() override = default;
    [[nodiscard]] Qor2DBoundingBox ComputeBox() const override;

private:
    QorMathPoint2D point;
};

/// A picture, its lower left corner at a position.
class Qor2DImagePixelRep : public Qor2DRep {
    QorDeclareClass(Qor2DImagePixelRep)

    /// Shows columns iX, iX + iWidth and rows from the bottom iY, iY + iHeight of \p iImage;
    /// widths of 0 mean all.
    Qor2DImagePixelRep(const QorMathPoint2D& iPosition,
                       QorPixelImage* iImage,
                       int iX = 0,
                       int iY = 0,
                       int iWidth = 0,
                       int iHeight = 0);

    [[nodiscard]] const char* GetKind() const override { return "image"; }

    [[nodiscard]] const QorMathPoint2D& GetPosition() const { return position; }

    void SetPosition(const QorMathPoint2D& iPosition) { position = iPosition; }

    [[nodiscard]] QorPixelImage* GetImage() const { return image; }

    [[nodiscard]] const std::array<int, 4>& GetSource() const { return source; }

    /// Model units a pixel; 1 both ways at first.
    void SetZoom(double iX, double iY);
    /// Size in model units.
    [[nodiscard]] QorMathPoint2D GetSize() const;

    /// 0: opaque. Anything else: the picture's alpha counts.
    void SetAlphaMode(int iMode) { alphaMode = iMode; }

    [[nodiscard]] int GetAlphaMode() const { return alphaMode; }

    void SetControllerId(void* iId) { controllerId = iId; }

    void Accept(QorRepVisitor2D& ioVisitor) const override;

protected:
    ~Qor2DImagePixelRep() override = default;
    [[nodiscard]] Qor2DBoundingBox ComputeBox() const override;

private:
    QorMathPoint2D position;
    QorPixelImage_var image;
    std::array<int, 4> source;
    double zoomX = 1.0;
    double zoomY = 1.0;
    int alphaMode = 0;
    void* controllerId = nullptr;
};

/// The outline of a rectangle, as a primitive of a custom representation.
struct Qor2DRectangleGP {
    QorMathPoint2D low;
    QorMathPoint2D high;
};

/// Filled quadrilaterals, each by its four corners in order.
struct Qor2DQuadStripGP {
    std::vector<std::array<QorMathPoint2D, 4>> quads;
};

/// A text on one line, of a height in model units, held at one of nine anchors: 1 lower left, 2
/// lower centre, 3 lower right, 4 to 6 the same at half height, 7 upper centre, 8 upper right, 9
/// upper left.
struct Qor2DAnnotationTextGP {
    QorMathPoint2D position;
    QorUnicodeString text;
    int anchor = 1;
    double height = 15.0;
    double maxWidth = 0.0; ///< in model units; painters shorten what is longer; 0 for any width
};

/// Primitives drawn one after another with the representation's attributes.
class Qor2DCustomRep : public Qor2DRep {
    QorDeclareClass(Qor2DCustomRep)

    Qor2DCustomRep() = default;

    /// "rectangle", "quads" or "text" after the first primitive.
    [[nodiscard]] const char* GetKind() const override;

    void AddPrimitive(const Qor2DRectangleGP& iRectangle) { rectangles.push_back(iRectangle); }

    void AddPrimitive(const Qor2DQuadStripGP& iQuads) { quads.push_back(iQuads); }

    void AddPrimitive(const Qor2DAnnotationTextGP& iText) { texts.push_back(iText); }

    [[nodiscard]] const std::vector<Qor2DRectangleGP>& GetRectangles() const { return rectangles; }

    [[nodiscard]] const std::vector<Qor2DQuadStripGP>& GetQuads() const { return quads; }

    [[nodiscard]] const std::vector<Qor2DAnnotationTextGP>& GetTexts() const { return texts; }

    void Accept(QorRepVisitor2D& ioVisitor) const override;

protected:
    ~Qor2DCustomRep() override = default;
    [[nodiscard]] Qor2DBoundingBox ComputeBox() const override;

private:
    std::vector<Qor2DRectangleGP> rectangles;
    std::vector<Qor2DQuadStripGP> quads;
    std::vector<Qor2DAnnotationTextGP> texts;
};

/// Whoever walks a tree of 2D representations: painter, picker, port.
class QorRepVisitor2D {
public:
    virtual ~QorRepVisitor2D() = default;
    virtual void Visit(const Qor2DBagRep& iRep) = 0;
    virtual void Visit(const Qor2DLineRep& iRep) = 0;
    virtual void Visit(const Qor2DPointRep& iRep) = 0;
    virtual void Visit(const Qor2DImagePixelRep& iRep) = 0;
    virtual void Visit(const Qor2DCustomRep& iRep) = 0;
};
