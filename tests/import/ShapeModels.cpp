#include "tests/import/ShapeModels.h"

#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <IGESControl_Controller.hxx>
#include <IGESControl_Writer.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <STEPControl_Controller.hxx>
#include <TDataStd_Name.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_MaterialTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

#include <Quantity_Color.hxx>

#include <cmath>

namespace qor::import::testing {

namespace {

TopLoc_Location at(double x, double y, double z) {
    gp_Trsf place;
    place.SetTranslation({x, y, z});
    return {place};
}

Quantity_Color rgb(double red, double green, double blue) {
    return {red, green, blue, Quantity_TOC_RGB};
}

// A document that is built label by label and written as STEP.
class ModelDocument {
public:
    ModelDocument() {
        Message::DefaultMessenger()->ChangePrinters().Clear();
        XCAFApp_Application::GetApplication()->NewDocument("BinXCAF", document_);
        shapes = XCAFDoc_DocumentTool::ShapeTool(document_->Main());
        colors = XCAFDoc_DocumentTool::ColorTool(document_->Main());
        XCAFDoc_ShapeTool::SetAutoNaming(false);
    }

    TDF_Label part(const TopoDS_Shape& shape, const char* name) {
        return named(shapes->AddShape(shape, false), name);
    }

    TDF_Label assembly(const char* name) { return named(shapes->NewShape(), name); }

    TDF_Label add(const TDF_Label& assembly,
                  const TDF_Label& part,
                  const TopLoc_Location& place,
                  const char* name) {
        return named(shapes->AddComponent(assembly, part, place), name);
    }

    void paint(const TDF_Label& label, const Quantity_Color& color) {
        colors->SetColor(label, color, XCAFDoc_ColorSurf);
    }

    void makeOf(const TDF_Label& label, const char* substance) {
        const auto text = [](const char* value) {
            return new TCollection_HAsciiString(value);
        };
        XCAFDoc_DocumentTool::MaterialTool(document_->Main())
            ->SetMaterial(label, text(substance), text(""), 1000, text("density measure"),
                          text("POSITIVE_RATIO_MEASURE"));
    }

    void write(const std::filesystem::path& file, const std::string& unit) {
        shapes->UpdateAssemblies();
        STEPControl_Controller::Init();
        Interface_Static::SetCVal("write.step.unit", unit.c_str());
        STEPCAFControl_Writer writer;
        writer.SetColorMode(true);
        writer.SetNameMode(true);
        writer.Transfer(document_);
        writer.Write(file.c_str());
        Interface_Static::SetCVal("write.step.unit", "MM");
    }

    Handle(XCAFDoc_ShapeTool) shapes;
    Handle(XCAFDoc_ColorTool) colors;

private:
    static TDF_Label named(const TDF_Label& label, const char* name) {
        TDataStd_Name::Set(label, TCollection_ExtendedString(name, true));
        return label;
    }

    Handle(TDocStd_Document) document_;
};

} // namespace

void writeStepMachine(const std::filesystem::path& file, const std::string& unit) {
    ModelDocument model;
    const TopoDS_Shape boltShape = BRepPrimAPI_MakeCylinder(2, 10).Shape();
    const TDF_Label bolt = model.part(boltShape, "bolt");
    model.paint(bolt, rgb(1, 0, 0));
    const TopExp_Explorer face(boltShape, TopAbs_FACE);
    model.paint(model.shapes->AddSubShape(bolt, face.Current()), rgb(0, 0, 1));
    const TDF_Label nut = model.part(BRepPrimAPI_MakeBox(5., 5., 3.).Shape(), "nut");
    const TDF_Label plate = model.part(BRepPrimAPI_MakeBox(100., 50., 4.).Shape(), "plate");

    const TDF_Label fixing = model.assembly("fixing");
    model.add(fixing, bolt, at(0, 0, 0), "bolt:1");
    model.paint(model.add(fixing, nut, at(0, 0, 10), "nut:1"), rgb(1, 1, 0));
    const TDF_Label frame = model.assembly("frame");
    for (int i = 0; i < 3; ++i)
        model.add(frame, fixing, at(20. * i, 0, 0), ("fixing:" + std::to_string(i + 1)).c_str());
    const TDF_Label machine = model.assembly("machine");
    model.add(machine, frame, at(0, 0, 4), "frame:1");
    model.paint(model.add(machine, frame, at(0, 30, 4), "frame:2"), rgb(0, 1, 0));
    model.add(machine, plate, at(0, 0, 0), "Gr\xc3\xbcn platte");
    model.write(file, unit);
}

void writeIgesBox(const std::filesystem::path& file, const std::string& unit) {
    IGESControl_Controller::Init();
    IGESControl_Writer writer(unit.c_str(), 0);
    writer.AddShape(BRepPrimAPI_MakeBox(10., 20., 30.).Shape());
    writer.ComputeModel();
    writer.Write(file.c_str());
}

void writeBrepCylinders(const std::filesystem::path& file) {
    const TopoDS_Shape cylinder = BRepPrimAPI_MakeCylinder(5, 10).Shape();
    TopoDS_Compound both;
    const BRep_Builder builder;
    builder.MakeCompound(both);
    builder.Add(both, cylinder);
    builder.Add(both, cylinder.Moved(at(40, 0, 0)));
    BRepTools::Write(both, file.c_str());
}

void writeStepGrid(const std::filesystem::path& file, int count) {
    ModelDocument model;
    const TDF_Label part = model.part(BRepPrimAPI_MakeCylinder(1, 2).Shape(), "pin");
    const TDF_Label grid = model.assembly("grid");
    const int side = static_cast<int>(std::ceil(std::sqrt(count)));
    for (int i = 0; i < count; ++i) {
        const int row = i / side;
        model.add(grid, part, at(5. * (i % side), 5. * row, 0),
                  ("pin:" + std::to_string(i)).c_str());
    }
    model.write(file, "MM");
}

void writeStepSubstances(const std::filesystem::path& file) {
    ModelDocument model;
    const TDF_Label all = model.assembly("samples");
    const auto put = [&](const char* name, const char* substance, double x) {
        const TDF_Label part = model.part(BRepPrimAPI_MakeBox(10, 10, 10).Shape(), name);
        model.makeOf(part, substance);
        model.add(all, part, at(x, 0, 0), name);
        return part;
    };
    put("steel", "Stainless steel", 0);
    model.paint(put("glass", "Optical glass", 20), rgb(0, 0, 1));
    put("unknown", "Unobtainium", 40);
    model.paint(put("red", "Unobtainium", 60), rgb(1, 0, 0));
    model.write(file, "MM");
}

} // namespace qor::import::testing
