#include "workbench/import/shape/ShapeDocument.h"

#include "workbench/import/model/ImportError.h"
#include "workbench/import/shape/OcctProgress.h"
#include "workbench/import/shape/StepModel.h"

#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <BinTools.hxx>
#include <IGESCAFControl_Reader.hxx>
#include <IGESData_GlobalSection.hxx>
#include <IGESData_IGESModel.hxx>
#include <Message.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TDataStd_Name.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_WorkSession.hxx>

namespace qor::import {

namespace {

// Parsing is about a third of reading a STEP file, building the shapes the rest.
constexpr double readShare = 0.15;
constexpr double transferShare = 0.55;

Handle(TDocStd_Document) newDocument() {
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("BinXCAF", document);
    return document;
}

void expectRead(IFSelect_ReturnStatus status, const char* format) {
    if (status != IFSelect_RetDone)
        throw ImportError(std::string("it cannot be understood as ") + format +
                          "; it is damaged or cut off");
}

template <typename Reader>
void transfer(Reader& reader, const Handle(TDocStd_Document) & document, ImportReport& report) {
    report.enter("transfer", readShare, transferShare);
    const Handle(OcctProgress) progress = new OcctProgress(report);
    Handle(TDocStd_Document) target = document;
    const bool transferred = report.inLibrary(
        [&] { return static_cast<bool>(reader.Transfer(target, progress->Start())); });
    if (!transferred)
        throw ImportError("it holds no shape that can be read");
}

void warnOfDamage(const Handle(Interface_InterfaceModel) & model, ImportReport& report) {
    if (const std::string damage = damageIn(model); !damage.empty())
        report.warn(damage);
}

ShapeDocument readStep(const std::filesystem::path& file, ImportReport& report) {
    STEPCAFControl_Reader reader;
    reader.SetColorMode(true);
    reader.SetNameMode(true);
    reader.SetSHUOMode(true);
    reader.SetLayerMode(false);
    reader.SetMatMode(true);
    reader.SetPropsMode(false);
    expectRead(report.inLibrary([&] { return reader.ReadFile(file.c_str()); }), "STEP");
    const auto model = Handle(StepData_StepModel)::DownCast(reader.Reader().WS()->Model());
    warnOfDamage(model, report);
    checkStepAssembly(model);
    ShapeDocument result{newDocument(), lengthUnitOf(model)};
    transfer(reader, result.document, report);
    return result;
}

ShapeDocument readIges(const std::filesystem::path& file, ImportReport& report) {
    IGESCAFControl_Reader reader;
    reader.SetColorMode(true);
    reader.SetNameMode(true);
    reader.SetLayerMode(false);
    expectRead(report.inLibrary([&] { return reader.ReadFile(file.c_str()); }), "IGES");
    warnOfDamage(reader.IGESModel(), report);
    const IGESData_GlobalSection section = reader.IGESModel()->GlobalSection();
    const std::string name = section.UnitName().IsNull() ? "unit" : section.UnitName()->ToCString();
    // The section gives its unit in those of the session, which are millimetres.
    ShapeDocument result{newDocument(), sensibleUnit(name, section.UnitValue())};
    transfer(reader, result.document, report);
    return result;
}

ShapeDocument readBrep(const std::filesystem::path& file, bool binary, ImportReport& report) {
    TopoDS_Shape shape;
    const BRep_Builder builder;
    const Handle(OcctProgress) progress = new OcctProgress(report);
    const bool read = report.inLibrary([&] {
        const Message_ProgressRange range = progress->Start();
        return binary ? BinTools::Read(shape, file.c_str(), range)
                      : BRepTools::Read(shape, file.c_str(), builder, range);
    });
    if (!read || shape.IsNull())
        throw ImportError("it cannot be understood as BREP; it is damaged or cut off");
    ShapeDocument result{newDocument(), {}};
    const Handle(XCAFDoc_ShapeTool) shapes =
        XCAFDoc_DocumentTool::ShapeTool(result.document->Main());
    const bool assembly = shape.ShapeType() == TopAbs_COMPOUND;
    const TDF_Label label = shapes->AddShape(shape, assembly);
    shapes->UpdateAssemblies();
    TDataStd_Name::Set(label, TCollection_ExtendedString(file.stem().c_str(), true));
    return result;
}

// Open CASCADE prints to the standard output, which is for progress lines only.
void silence() {
    Message::DefaultMessenger()->ChangePrinters().Clear();
}

} // namespace

ShapeDocument
readShapeDocument(const std::filesystem::path& file, ModelFormat format, ImportReport& report) {
    silence();
    // Otherwise nameless shapes are called "COMPOUND" and "SOLID".
    XCAFDoc_ShapeTool::SetAutoNaming(false);
    report.enter("read", 0, readShare);
    switch (format) {
    case ModelFormat::Step:
        return readStep(file, report);
    case ModelFormat::Iges:
        return readIges(file, report);
    case ModelFormat::BrepBinary:
        return readBrep(file, true, report);
    default:
        return readBrep(file, false, report);
    }
}

} // namespace qor::import
