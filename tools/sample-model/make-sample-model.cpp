// make-sample-model FILE.step: the sample product of the workbench, a compact camera of our own
// design, written as STEP with assemblies, instances, names, colours and substances.
#include "tools/sample-model/Solids.h"

#include <Interface_Static.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_MaterialTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

#include <Quantity_ColorRGBA.hxx>

#include <cmath>
#include <cstdio>
#include <string>

namespace qor::sample {

namespace {

struct Substance {
    const char* name;
    double density;           ///< kilograms a cubic metre
    Quantity_ColorRGBA color; ///< linear
};

const Substance aluminium{"Aluminium, satin", 2700, {0.82F, 0.83F, 0.84F, 1}};
const Substance blackAluminium{"Aluminium, black anodized", 2700, {0.022F, 0.022F, 0.025F, 1}};
const Substance leather{"Leather, cognac", 860, {0.27F, 0.095F, 0.03F, 1}};
const Substance steel{"Stainless steel", 7900, {0.57F, 0.56F, 0.55F, 1}};
const Substance brass{"Brass", 8500, {0.88F, 0.7F, 0.36F, 1}};
const Substance rubber{"Rubber, black", 1200, {0.018F, 0.018F, 0.02F, 1}};
const Substance redEnamel{"Enamel, red", 2500, {0.55F, 0.012F, 0.012F, 1}};
const Substance whiteEnamel{"Enamel, white", 2500, {0.8F, 0.79F, 0.75F, 1}};
const Substance opticalGlass{"Optical glass", 2510, {0.93F, 0.97F, 1.0F, 0.25F}};
const Substance displayGlass{"Display cover, plastic", 1300, {0.01F, 0.012F, 0.016F, 1}};
const Substance amber{"Amber polycarbonate", 1200, {1.0F, 0.42F, 0.05F, 0.6F}};

/// The XDE document under construction.
class Assembly {
public:
    Assembly() {
        XCAFApp_Application::GetApplication()->NewDocument("BinXCAF", document_);
        shapes_ = XCAFDoc_DocumentTool::ShapeTool(document_->Main());
        colors_ = XCAFDoc_DocumentTool::ColorTool(document_->Main());
        materials_ = XCAFDoc_DocumentTool::MaterialTool(document_->Main());
    }

    TDF_Label group(const char* name) {
        const TDF_Label label = shapes_->NewShape();
        TDataStd_Name::Set(label, name);
        return label;
    }

    TDF_Label part(const char* name, const TopoDS_Shape& shape, const Substance& substance) {
        const TDF_Label label = shapes_->AddShape(shape, false);
        TDataStd_Name::Set(label, name);
        colors_->SetColor(label, substance.color, XCAFDoc_ColorSurf);
        materials_->SetMaterial(label, new TCollection_HAsciiString(substance.name),
                                new TCollection_HAsciiString(""), substance.density,
                                new TCollection_HAsciiString("density measure"),
                                new TCollection_HAsciiString("POSITIVE_RATIO_MEASURE"));
        return label;
    }

    void place(const TDF_Label& into,
               const TDF_Label& what,
               const char* name,
               double x = 0,
               double y = 0,
               double z = 0) {
        gp_Trsf trsf;
        trsf.SetTranslation(gp_Vec(x, y, z));
        TDataStd_Name::Set(shapes_->AddComponent(into, what, TopLoc_Location(trsf)), name);
    }

    void put(const TDF_Label& into,
             const char* name,
             const TopoDS_Shape& shape,
             const Substance& substance) {
        place(into, part(name, shape, substance), name);
    }

    bool write(const char* file) {
        shapes_->UpdateAssemblies();
        STEPCAFControl_Writer writer;
        // Curves in the surfaces' own coordinates can be computed and would double the file.
        Interface_Static::SetIVal("write.surfacecurve.mode", 0);
        writer.SetColorMode(true);
        writer.SetNameMode(true);
        writer.SetMaterialMode(true);
        return writer.Transfer(document_, STEPControl_AsIs) &&
               writer.Write(file) == IFSelect_RetDone;
    }

private:
    Handle(TDocStd_Document) document_;
    Handle(XCAFDoc_ShapeTool) shapes_;
    Handle(XCAFDoc_ColorTool) colors_;
    Handle(XCAFDoc_MaterialTool) materials_;
};

constexpr double width = 118, depth = 30;
constexpr double topOfBase = 9, topOfWrap = 50, topOfPlate = 63;
constexpr double front = -depth / 2;
constexpr double lensX = 6, lensZ = 30;

/// Something that stands on the front at a place of it.
TopoDS_Shape onFront(const TopoDS_Shape& upright, double x, double z, double outwards = 0) {
    return moved(facingFront(upright), x, front - outwards, z);
}

TopoDS_Shape onBack(const TopoDS_Shape& upright, double x, double z, double outwards = 0) {
    return moved(facingBack(upright), x, -front + outwards, z);
}

TDF_Label body(Assembly& camera) {
    const TDF_Label group = camera.group("Body");
    camera.put(group, "Base plate", roundedBox(width, depth, topOfBase, 13, 1.2), aluminium);
    TopoDS_Shape wrap = moved(
        roundedBox(width + 0.8, depth + 0.8, topOfWrap - topOfBase, 13.2, 0.35), 0, 0, topOfBase);
    camera.put(group, "Wrap", wrap, leather);
    const TopoDS_Shape plate =
        moved(roundedBox(width, depth, topOfPlate - topOfWrap, 13, 1.4), 0, 0, topOfWrap);
    const TopoDS_Shape hump = moved(roundedBox(66, depth - 3, 7, 8, 1.6), -14, 0, topOfPlate - 2);
    camera.put(group, "Top plate", joined(plate, hump), aluminium);
    const TopoDS_Shape grip = moved(roundedBox(13, 7, topOfWrap - topOfBase - 4, 3.2, 1), -47,
                                    front - 1.5, topOfBase + 2);
    camera.put(group, "Grip", grip, leather);
    return group;
}

TDF_Label lensGroup(Assembly& camera) {
    const TDF_Label group = camera.group("Lens 35 mm");
    const auto at = [](const TopoDS_Shape& shape, double outwards) {
        return onFront(shape, lensX, lensZ, outwards);
    };
    camera.put(group, "Mount",
               at(turned({{20, -2}, {28.5, -2}, {28.5, 2.2}, {27.7, 3}, {20, 3}}), 0), steel);
    camera.put(group, "Barrel", at(turned({{19, 3}, {25.5, 3}, {26, 3.6}, {26, 12}, {19, 12}}), 0),
               blackAluminium);
    camera.put(group, "Focus ring", at(knurledRing(27.4, 19, 8.5, 48, 0.7), 12.4), blackAluminium);
    camera.put(group, "Distance scale",
               at(turned({{19, 21.2}, {26, 21.2}, {26, 24.6}, {19, 24.6}}), 0), brass);
    camera.put(group, "Aperture ring", at(knurledRing(26.4, 19, 5, 60, 0.4), 25), aluminium);
    camera.put(
        group, "Front ring",
        at(turned({{23.2, 30.4}, {25.6, 30.4}, {25.6, 35}, {24.8, 36}, {23.6, 36}, {23.2, 35.6}}),
           0),
        blackAluminium);
    camera.put(group, "Name ring",
               at(turned({{14.2, 31.4}, {16, 31}, {23, 34}, {23, 35}, {14.2, 32}}), 0),
               blackAluminium);
    camera.put(group, "Tube", at(turned({{14.2, 4}, {18.8, 4}, {18.8, 30.8}, {14.2, 30.8}}), 0),
               blackAluminium);
    camera.put(group, "Front lens", at(lens(14, 2, 3.6), 28.4), opticalGlass);
    camera.put(group, "Inner lens", at(lens(13.6, 1.6, 2.6), 14), opticalGlass);
    camera.put(group, "Iris", at(turned({{5.5, 20}, {14, 20}, {14, 20.6}, {5.5, 20.3}}), 0),
               blackAluminium);
    camera.put(group, "Sensor", onFront(roundedBox(20, 15, 0.8, 0.5, 0), lensX, lensZ, 3.2),
               displayGlass);
    camera.put(group, "Index mark", at(moved(softened(cylinder(1.1, 0.7), 0.2), 0, 26.1, 8), 0),
               redEnamel);
    const TDF_Label screw =
        camera.part("Mount screw",
                    facingFront(without(softened(cylinder(1.3, 1), 0.25),
                                        moved(roundedBox(3, 0.4, 1, 0.1, 0), 0, 0, 0.55))),
                    steel);
    const double ring = 27.1 / std::sqrt(2.0);
    int number = 0;
    for (const double x : {-ring, ring})
        for (const double z : {-ring, ring})
            camera.place(group, screw, ("Mount screw " + std::to_string(++number)).c_str(),
                         lensX + x, front - 2.6, lensZ + z);
    return group;
}

TDF_Label controls(Assembly& camera) {
    const TDF_Label group = camera.group("Controls");
    const auto onTop = [](const TopoDS_Shape& shape, double x, double y) {
        return moved(shape, x, y, topOfPlate);
    };
    camera.put(group, "Shutter collar", onTop(knurledRing(7.2, 4.4, 3.4, 30, 0.35), 32, -4),
               aluminium);
    camera.put(group, "Shutter button", onTop(softened(cylinder(4.1, 5), 0.9), 32, -4), steel);
    camera.put(group, "Speed dial", onTop(knurledDisc(8.6, 5.4, 36, 0.4), 48, 2.5), aluminium);
    camera.put(group, "Speed dial cap",
               moved(softened(cylinder(5, 0.6), 0.15), 48, 2.5, topOfPlate + 5.4), blackAluminium);
    camera.put(group, "Rewind knob", onTop(knurledDisc(8.2, 6.8, 32, 0.45), -50, 1), aluminium);
    camera.put(group, "Rewind knob cap",
               moved(softened(cylinder(4.6, 0.7), 0.2), -50, 1, topOfPlate + 6.8), brass);
    const TopoDS_Shape shoe =
        without(roundedBox(20, 18, 3, 1, 0), moved(roundedBox(15.5, 20, 3, 0.3, 0), 0, 2, 0.7));
    const TopoDS_Shape slot = moved(roundedBox(18, 20, 1.4, 0.3, 0), 0, 2, 0.7);
    camera.put(group, "Accessory shoe", moved(without(shoe, slot), -14, 2, topOfPlate + 5), steel);
    camera.put(group, "Badge", onFront(softened(cylinder(4, 0.9), 0.35), 48, 41, 0.35), redEnamel);
    camera.put(
        group, "Self-timer lever",
        onFront(joined(cylinder(4.2, 2.2), moved(roundedBox(4.6, 15, 1.8, 2.2, 0.4), 0, -6.5, 0.4)),
                -34, 40, 0.4),
        steel);
    const TDF_Label lug = camera.part(
        "Strap lug", joined(torus(3, 0.7), moved(cylinder(1.6, 2.4), 0, 0, -1.2)), steel);
    camera.place(group, lug, "Strap lug left", -width / 2 - 1.6, 0, 43);
    camera.place(group, lug, "Strap lug right", width / 2 + 1.6, 0, 43);
    return group;
}

TDF_Label finder(Assembly& camera) {
    const TDF_Label group = camera.group("Viewfinder");
    const auto window = [&](const char* frame, const char* pane, double x, double w, double h,
                            const Substance& glass) {
        constexpr double z = topOfPlate - 3.5;
        camera.put(group, frame,
                   onFront(without(roundedBox(w + 3, h + 3, 1.4, 1.6, 0.3),
                                   moved(roundedBox(w, h, 2, 0.8, 0), 0, 0, 0.4)),
                           x, z, -0.1),
                   blackAluminium);
        camera.put(group, pane, onFront(roundedBox(w - 0.2, h - 0.2, 0.5, 0.7, 0), x, z, 0.45),
                   glass);
    };
    window("Viewfinder frame", "Viewfinder window", -32, 15, 8.5, opticalGlass);
    window("Frame illuminator", "Illuminator window", -8, 13, 5, whiteEnamel);
    window("Rangefinder frame", "Rangefinder window", 10, 5, 4, amber);
    camera.put(group, "Eyepiece",
               onBack(turned({{3.6, 0}, {6, 0}, {6, 2.2}, {5.4, 2.8}, {3.6, 2.8}}), -34, 57),
               rubber);
    camera.put(group, "Ocular", onBack(lens(3.5, 0.8, 0.6), -34, 57), opticalGlass);
    return group;
}

TDF_Label back(Assembly& camera) {
    const TDF_Label group = camera.group("Back");
    camera.put(group, "Screen bezel", onBack(roundedBox(62, 36, 1.6, 3, 0.5), -12, 30, 0.2),
               blackAluminium);
    camera.put(group, "Screen", onBack(roundedBox(57, 32, 0.4, 1.5, 0.15), -12, 30, 1.7),
               displayGlass);
    camera.put(group, "Thumb rest", onBack(roundedBox(12, 20, 3.2, 5, 1.4), 44, 40, 0.2), rubber);
    camera.put(group, "Control wheel", onBack(knurledRing(8, 4.6, 2.2, 32, 0.35), 36, 19, 0.3),
               aluminium);
    const TDF_Label button =
        camera.part("Button", facingBack(softened(cylinder(2.6, 1.8), 0.5)), aluminium);
    const std::pair<double, double> places[] = {{25, 40}, {25, 34}, {36, 19}, {47.5, 19}};
    int number = 0;
    for (const auto& [x, z] : places)
        camera.place(group, button, ("Button " + std::to_string(++number)).c_str(), x, -front + 0.3,
                     z);
    return group;
}

} // namespace

} // namespace qor::sample

int main(int argc, char** argv) {
    using namespace qor::sample;
    if (argc != 2) {
        std::fputs("usage: make-sample-model FILE.step\n", stderr);
        return 2;
    }
    Assembly camera;
    const TDF_Label whole = camera.group("Compact camera");
    camera.place(whole, body(camera), "Body");
    camera.place(whole, lensGroup(camera), "Lens 35 mm");
    camera.place(whole, controls(camera), "Controls");
    camera.place(whole, finder(camera), "Viewfinder");
    camera.place(whole, back(camera), "Back");
    return camera.write(argv[1]) ? 0 : 1;
}
