#include "benchmarks/import/BenchmarkModels.h"

#include "workbench/import/model/ModelReader.h"

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <Message.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>

namespace qor::import::benchmarks {

namespace {

using nlohmann::json;

TopLoc_Location at(double x, double y) {
    gp_Trsf place;
    place.SetTranslation({x, y, 0});
    return {place};
}

// A flange with a ring of holes and a groove; every number differs from part to part.
TopoDS_Shape flange(int number) {
    const double radius = 20 + 0.1 * number;
    TopoDS_Shape shape = BRepPrimAPI_MakeCylinder(radius, 8).Shape();
    for (int hole = 0; hole < 6; ++hole) {
        const double angle = hole * std::acos(-1.) / 3;
        const gp_Ax2 axis({radius * 0.6 * std::cos(angle), radius * 0.6 * std::sin(angle), -1},
                          gp_Dir(0, 0, 1));
        shape = BRepAlgoAPI_Cut(shape, BRepPrimAPI_MakeCylinder(axis, 2, 10).Shape()).Shape();
    }
    const gp_Ax2 top({0, 0, 8}, gp_Dir(0, 0, 1));
    return BRepAlgoAPI_Cut(shape, BRepPrimAPI_MakeTorus(top, radius * 0.3, 2).Shape()).Shape();
}

// Collects a buffer and the JSON that describes it.
class GlbWriter {
public:
    int accessor(
        const void* data, std::size_t bytes, std::size_t count, int component, const char* type) {
        json_["bufferViews"].push_back(
            {{"buffer", 0}, {"byteOffset", buffer_.size()}, {"byteLength", bytes}});
        buffer_.append(static_cast<const char*>(data), bytes);
        json_["accessors"].push_back({{"bufferView", json_["bufferViews"].size() - 1},
                                      {"componentType", component},
                                      {"count", count},
                                      {"type", type}});
        return static_cast<int>(json_["accessors"].size()) - 1;
    }

    void add(const document::Mesh& mesh) {
        const json attributes{
            {"POSITION", accessor(mesh.positions.data(), mesh.positions.size() * 4,
                                  mesh.vertexCount(), 5126, "VEC3")},
            {"NORMAL", accessor(mesh.normals.data(), mesh.normals.size() * 4, mesh.vertexCount(),
                                5126, "VEC3")}};
        const int indices = accessor(mesh.indices.data(), mesh.indices.size() * 4,
                                     mesh.indices.size(), 5125, "SCALAR");
        json_["meshes"].push_back(
            {{"primitives", {{{"attributes", attributes}, {"indices", indices}}}}});
        json_["nodes"].push_back({{"mesh", json_["meshes"].size() - 1}});
        json_["scenes"][0]["nodes"].push_back(json_["nodes"].size() - 1);
    }

    void write(const std::filesystem::path& file) {
        json_["asset"]["version"] = "2.0";
        json_["buffers"] = {{{"byteLength", buffer_.size()}}};
        std::string text = json_.dump();
        text.resize((text.size() + 3) / 4 * 4, ' ');
        std::ofstream out(file, std::ios::binary);
        const auto word = [&out](std::size_t value) {
            const auto narrow = static_cast<std::uint32_t>(value);
            out.write(reinterpret_cast<const char*>(&narrow), sizeof narrow);
        };
        out << "glTF";
        word(2);
        word(28 + text.size() + buffer_.size());
        word(text.size());
        out << "JSON" << text;
        word(buffer_.size());
        out.write("BIN", 4);
        out << buffer_;
    }

private:
    json json_;
    std::string buffer_;
};

} // namespace

void writeStepAssembly(const std::filesystem::path& file, int parts, int instances) {
    Message::DefaultMessenger()->ChangePrinters().Clear();
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("BinXCAF", document);
    const Handle(XCAFDoc_ShapeTool) shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    const TDF_Label assembly = shapes->NewShape();
    for (int part = 0; part < parts; ++part) {
        const TDF_Label label = shapes->AddShape(flange(part), false);
        for (int instance = 0; instance < instances; ++instance)
            shapes->AddComponent(assembly, label, at(100. * part, 100. * instance));
    }
    shapes->UpdateAssemblies();
    STEPCAFControl_Writer writer;
    writer.Transfer(document);
    writer.Write(file.c_str());
}

void writeGlb(const std::filesystem::path& file, const std::filesystem::path& step) {
    ImportReport report([](const std::string&, double) {}, [](const std::string&) {});
    const auto product = readModel(step, {}, report);
    GlbWriter glb;
    for (const document::Mesh& mesh : product.value().meshes)
        glb.add(mesh);
    glb.write(file);
}

Models::Models()
    : folder_(std::filesystem::temp_directory_path() /
              ("qor-benchmark-" + std::to_string(getpid()))) {
    std::filesystem::create_directory(folder_);
    writeStepAssembly(step(), 66, 3);
    writeGlb(glb(), step());
}

Models::~Models() {
    std::filesystem::remove_all(folder_);
}

} // namespace qor::import::benchmarks
