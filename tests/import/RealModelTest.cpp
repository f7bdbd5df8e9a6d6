#include "tests/import/RealImport.h"
#include "tests/support/QorTempDirectory.h"
#include "workbench/document/product/ProductFile.h"
#include "workbench/document/product/ProductQuery.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

using namespace qor::import;
using namespace qor::import::testing;

namespace {

// What is known of a real model: from its own text, and from other programs.
struct KnownModel {
    const char* name;
    std::size_t nodes;
    std::size_t meshes;
    const char* unit;
};

constexpr auto knownModels = std::to_array<KnownModel>({{"as1-oc-214.stp", 28, 5, "mm"},
                                                        {"linkrods.step", 1, 1, "mm"},
                                                        {"screw.step", 1, 1, "mm"},
                                                        {"bearing.iges", 1, 1, "mm"},
                                                        {"2CylinderEngine.glb", 82, 29, "m"}});

} // namespace

// Models that nobody on the project made are not in the tree; this test is built only where they
// are.
TEST(RealModel, TreesAndUnitsAreAsKnown) {
    const char* folderName = std::getenv("QOR_MODELS_DIR");
    ASSERT_NE(folderName, nullptr);
    int checked = 0;
    const QorTempDirectory folder;
    for (const KnownModel& known : knownModels) {
        const auto model = std::filesystem::path(folderName) / known.name;
        if (!std::filesystem::exists(model))
            continue;
        ++checked;
        ImportProcess process({});
        process.start(realRequest(model, folder / "out.qor"));
        ASSERT_EQ(process.wait().end, ImportEnd::Done) << process.outcome()->text;
        auto read = qor::document::readProduct(folder / "out.qor");
        ASSERT_TRUE(read) << read.failure().text;
        EXPECT_EQ(read.value().nodes.size(), known.nodes) << known.name;
        EXPECT_EQ(read.value().meshes.size(), known.meshes) << known.name;
        EXPECT_EQ(read.value().unit.name, known.unit) << known.name;
        EXPECT_TRUE(qor::document::boundingBox(read.value())) << known.name;
    }
    EXPECT_GT(checked, 0) << "no known model in " << folderName;
}
