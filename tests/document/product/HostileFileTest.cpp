#include "tests/document/product/SampleProduct.h"
#include "tests/support/QorTempDirectory.h"
#include "workbench/document/product/ProductFile.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <array>
#include <fstream>
#include <random>
#include <vector>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

void change(const std::filesystem::path& file, const std::string& sql) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
    char* message = nullptr;
    sqlite3_exec(database, sql.c_str(), nullptr, nullptr, &message);
    EXPECT_EQ(message, nullptr) << message;
    sqlite3_close(database);
}

std::vector<char> bytesOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void write(const std::filesystem::path& file, const std::vector<char>& bytes) {
    std::ofstream(file, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// A change of a sound file that SQLite allows, and what the reader must say to it.
struct Tampering {
    const char* sql;
    const char* says;
};

const auto tamperings = std::to_array<Tampering>({
    {"PRAGMA user_version = 2", "later version"},
    {"PRAGMA application_id = 1", "not a document of this program"},
    {"UPDATE product_info SET value = 2 WHERE key = 'tables_version'", "later version"},
    {"DROP TABLE product_track; DROP TABLE product_animation", "product_animation is missing"},
    {"ALTER TABLE product_part ADD COLUMN extra AS (abs(id))", "product_part is missing or not as"},
    {"DROP TABLE product_info; CREATE VIEW product_info AS SELECT 'name' AS key, 1 AS value",
     "holds no product"},
    {"UPDATE product_mesh SET vertices = 4294967295", "bytes of positions instead of"},
    {"UPDATE product_mesh SET vertices = -1", "the count -1"},
    {"UPDATE product_mesh SET triangles = 1000000000", "bytes of indices instead of"},
    {"UPDATE product_mesh SET positions = 'text'", "bytes of positions instead of"},
    {"UPDATE product_mesh SET normals = zeroblob(7)", "bytes of normals instead of"},
    {"UPDATE product_mesh SET edges = zeroblob(7)", "half an edge"},
    {"UPDATE product_mesh SET indices = randomblob(length(indices))", "names a vertex"},
    {"UPDATE product_mesh SET id = 5; DELETE FROM product_mesh_group", "out of order"},
    {"UPDATE product_mesh_group SET position = 7 WHERE position = 1", "out of order"},
    {"UPDATE product_mesh_group SET mesh = 4", "group of no mesh"},
    {"UPDATE product_texture SET width = 65535, height = 65535", "pixels do not fill"},
    {"UPDATE product_texture SET width = 1 << 40", "the count"},
    {"UPDATE product_material SET alpha_mode = 77", "unknown kind 77"},
    {"UPDATE product_material SET roughness = 9e999", "material 0: a number"},
    {"UPDATE product_material_texture SET slot = 'smell'", "\"smell\""},
    {"UPDATE product_material_texture SET texture = 99", "one of its textures"},
    {"PRAGMA ignore_check_constraints = ON; UPDATE product_node SET parent = 2 WHERE id = 1",
     "parent does not stand before it"},
    {"UPDATE product_node SET part = 1 << 33", "the reference"},
    {"UPDATE product_node SET transform = zeroblob(95)", "wrong length"},
    {"UPDATE product_camera SET numbers = zeroblob(8)", "wrong length"},
    {"UPDATE product_light SET kind = 3", "unknown kind 3"},
    {"UPDATE product_track SET times = zeroblob(6)", "animation with the wrong length"},
    {"UPDATE product_track SET animation = 1", "track of no animation"},
    {"UPDATE product_info SET value = 0 WHERE key = 'unit_mm'", "length unit"},
    {"UPDATE product_info SET value = 'long' WHERE key = 'unit_mm'", "length unit"},
});

} // namespace

TEST(HostileFile, EveryTamperingIsRefusedWithItsReason) {
    const QorTempDirectory folder;
    for (const Tampering& tampering : tamperings) {
        const auto file = folder / "tampered.qor";
        ASSERT_TRUE(writeProduct(file, sampleProduct()));
        change(file, std::string("PRAGMA foreign_keys = OFF; ") + tampering.sql);
        const Result<Product> read = readProduct(file);
        ASSERT_FALSE(read) << tampering.sql;
        EXPECT_EQ(read.failure().kind, FaultKind::Input) << read.failure().text;
        EXPECT_TRUE(read.failure().text.starts_with(file.string() + ": ")) << read.failure().text;
        EXPECT_NE(read.failure().text.find(tampering.says), std::string::npos)
            << tampering.sql << "\n  " << read.failure().text;
    }
}

TEST(HostileFile, CoordinatesThatAreNoNumbersAreRefused) {
    const QorTempDirectory folder;
    ASSERT_TRUE(writeProduct(folder / "a.qor", sampleProduct()));
    std::string blob;
    for (std::size_t i = 0; i < sampleProduct().meshes[0].positions.size(); ++i)
        blob += "0000c07f";
    change(folder / "a.qor", "UPDATE product_mesh SET positions = x'" + blob + "'");
    const Result<Product> read = readProduct(folder / "a.qor");
    ASSERT_FALSE(read);
    EXPECT_NE(read.failure().text.find("coordinate is not finite"), std::string::npos);
}

TEST(HostileFile, WhatIsNoDocumentIsRefused) {
    const QorTempDirectory folder;
    const auto file = folder / "x.qor";
    EXPECT_FALSE(readProduct(folder / "missing.qor"));
    EXPECT_FALSE(readProduct(folder.GetFolder()));
    write(file, {});
    EXPECT_FALSE(readProduct(file));
    write(file, std::vector<char>(100'000, 'A'));
    const Result<Product> read = readProduct(file);
    ASSERT_FALSE(read);
    EXPECT_EQ(read.failure().text, file.string() + ": it is not a document file");
}

TEST(HostileFile, EveryTruncationIsRefused) {
    const QorTempDirectory folder;
    Product product = sampleProduct();
    product.meshes.push_back(gridMesh(100, 10));
    ASSERT_TRUE(writeProduct(folder / "whole.qor", product));
    const std::vector<char> whole = bytesOf(folder / "whole.qor");
    for (std::size_t length = 0; length < whole.size(); length += 9973) {
        write(folder / "part.qor", {whole.begin(), whole.begin() + static_cast<long>(length)});
        EXPECT_FALSE(readProduct(folder / "part.qor")) << length;
    }
}

TEST(HostileFile, AChangedByteIsRefusedOrHarmless) {
    const QorTempDirectory folder;
    ASSERT_TRUE(writeProduct(folder / "whole.qor", sampleProduct()));
    const std::vector<char> whole = bytesOf(folder / "whole.qor");
    std::minstd_rand random(1);
    int refused = 0;
    for (int round = 0; round < 400; ++round) {
        std::vector<char> bytes = whole;
        for (int i = 0; i < 40; ++i)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        write(folder / "changed.qor", bytes);
        const Result<Product> read = readProduct(folder / "changed.qor");
        refused += read ? 0 : 1;
    }
    EXPECT_GT(refused, 0);
}
