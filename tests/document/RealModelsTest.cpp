#include "tests/document/DocumentTest.h"

#include <cstdlib>
#include <map>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

namespace fs = std::filesystem;

class RealModels : public DocumentTest {};

/// What is known of a real model: counts and units from its own text; boxes as they were once found
/// to agree with the coordinates in it.
struct KnownModel {
    const char* name;
    std::size_t nodes;
    std::size_t meshes;
    const char* unit;
    QorMathVector extent; ///< millimetres
    int mostInstances;    ///< of one part that has a shape
};

constexpr auto knownModels = std::to_array<KnownModel>({
    {"as1-oc-214.stp", 28, 5, "mm", {200.0, 150.0, 84.0}, 8},
    {"linkrods.step", 1, 1, "mm", {5.020, 1.499, 2.0}, 1},
    {"screw.step", 1, 1, "mm", {19.843, 20.0, 42.295}, 1},
    {"bearing.iges", 1, 1, "mm", {0.101, 0.122, 0.0314}, 1},
    {"2CylinderEngine.glb", 82, 29, "m", {743384.4, 268000.0, 273013.1}, 20},
});

int mostInstances(const ProductReps& product) {
    std::map<std::int32_t, int> counts;
    int most = 0;
    for (const ProductNode_var& node : product.nodes())
        if (node->part() != none &&
            product.facts().parts[static_cast<std::size_t>(node->part())].mesh != none)
            most = std::max(most, ++counts[node->part()]);
    return most;
}

} // namespace

// Models that nobody on the project made are not in the tree; this test is built only where they
// are.
TEST_F(RealModels, OpenWithTheirTreesInstancesBoxesAndUnits) {
    const char* folder = std::getenv("QOR_MODELS_DIR");
    ASSERT_NE(folder, nullptr);
    DocumentStore store(loop, options());
    int checked = 0;
    for (const KnownModel& known : knownModels) {
        const fs::path model = fs::path(folder) / known.name;
        if (!fs::exists(model))
            continue;
        ++checked;
        const Result<Document_var> opened = open(store, model);
        ASSERT_TRUE(opened) << opened.failure().text;
        const ProductReps& product = opened.value()->product();
        const QorMathVector extent = product.worldBox().Extent();
        RecordProperty(std::string("box of ") + known.name, std::to_string(extent.x) + " " +
                                                                std::to_string(extent.y) + " " +
                                                                std::to_string(extent.z));
        EXPECT_EQ(product.nodes().size(), known.nodes) << known.name;
        EXPECT_EQ(product.meshes().size(), known.meshes) << known.name;
        EXPECT_EQ(opened.value()->unit().name, known.unit) << known.name;
        EXPECT_EQ(mostInstances(product), known.mostInstances) << known.name;
        ASSERT_TRUE(save(store, *opened.value(), file("saved.qor")));
        Result<LoadedDocument> again = readDocument(file("saved.qor"));
        ASSERT_TRUE(again) << again.failure().text;
        EXPECT_EQ(again.value().product.worldBox().Extent(), extent) << known.name;
        EXPECT_EQ(again.value().product.countTriangles(), product.countTriangles());
        store.release(*opened.value());
    }
    EXPECT_GT(checked, 0) << "no known model in " << folder;
}
