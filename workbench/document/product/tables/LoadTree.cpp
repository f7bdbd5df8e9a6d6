#include "workbench/document/product/ProductTables.h"
#include "workbench/document/product/tables/Bytes.h"
#include "workbench/document/product/tables/Database.h"
#include "workbench/document/product/tables/InfoKeys.h"
#include "workbench/document/product/tables/Load.h"
#include "workbench/document/product/tables/RowReader.h"
#include "workbench/document/product/tables/ViewNumbers.h"

#include <limits>

namespace qor::document::tables {

namespace {

// Looks values of product_info up by key.
class InfoTable {
public:
    explicit InfoTable(sqlite3* database) : database_(database) {}

    void get(const char* key, std::string& value) const {
        look(key, [&value](const Statement& row) { value = row.text(0); });
    }

    void get(const char* key, double& value) const {
        look(key, [&value](const Statement& row) { value = row.real(0); });
    }

    template <typename T>
    void get(const char* key, std::optional<T>& value) const {
        look(key, [&value](const Statement& row) { value = static_cast<T>(row.integer(0)); });
    }

    [[nodiscard]] bool has(const char* key) const {
        bool found = false;
        look(key, [&found](const Statement&) { found = true; });
        return found;
    }

private:
    template <typename Take>
    void look(const char* key, const Take& take) const {
        Statement select(database_, "SELECT value FROM product_info WHERE key = ?1");
        select.bind(1, std::string_view(key));
        if (select.step())
            take(select);
    }

    sqlite3* database_;
};

// Fills \p target from a blob column of known length.
template <typename Array>
void readArray(BlobReader& reader, std::int64_t row, Array& target) {
    reader.read(row, std::as_writable_bytes(std::span(target)));
}

void expectBytes(const Statement& row, int column, std::size_t bytes) {
    if (row.integer(column) != static_cast<std::int64_t>(bytes))
        damaged("an array of numbers with the wrong length");
}

void loadParts(sqlite3* database, Product& product) {
    Statement select(database, "SELECT id, name, mesh, material FROM product_part ORDER BY id");
    while (select.step()) {
        expectRow("product_part", select.integer(0), product.parts.size());
        product.parts.push_back({select.text(1), reference(select, 2), reference(select, 3)});
    }
}

template <typename T>
void readKeys(BlobReader& reader,
              std::int64_t row,
              std::uint64_t bytes,
              const LoadLimits& limits,
              std::vector<T>& values) {
    if (bytes > limits.fileSize || bytes % sizeof(T) != 0)
        damaged("an animation with the wrong length");
    values.resize(bytes / sizeof(T));
    if (bytes != 0)
        reader.read(row, writableBytesOf(values));
}

} // namespace

void loadInfo(sqlite3* database, Product& product) {
    const InfoTable table(database);
    table.get(info::name, product.name);
    table.get(info::sourceFile, product.sourceFile);
    table.get(info::unitName, product.unit.name);
    table.get(info::unitMm, product.unit.millimetres);
    if (table.has(info::environment[0])) {
        product.environment.emplace();
        for (std::size_t i = 0; i < 3; ++i)
            table.get(info::environment[i], (*product.environment)[i]);
    }
    table.get(info::diffuseBounces, product.work.diffuseBounces);
    table.get(info::glossyBounces, product.work.glossyBounces);
    table.get(info::transmissionBounces, product.work.transmissionBounces);
    table.get(info::caustics, product.work.caustics);
}

void loadTree(sqlite3* database, Product& product) {
    loadParts(database, product);
    Statement select(database, "SELECT id, name, parent, part, material, visible, "
                               "length(transform) FROM product_node ORDER BY id");
    BlobReader reader(database, "product_node", "transform");
    while (select.step()) {
        expectRow("product_node", select.integer(0), product.nodes.size());
        Node& node = product.nodes.emplace_back();
        node.name = select.text(1);
        node.parent = reference(select, 2);
        node.part = reference(select, 3);
        node.material = reference(select, 4);
        node.visible = select.integer(5) != 0;
        if (select.isNull(6))
            continue;
        expectBytes(select, 6, sizeof(Transform));
        readArray(reader, select.integer(0), node.transform);
    }
}

void loadViews(sqlite3* database, Product& product) {
    ViewNumbers numbers{};
    Statement camera(database, "SELECT id, name, node, perspective, length(numbers) "
                               "FROM product_camera ORDER BY id");
    BlobReader cameraNumbers(database, "product_camera", "numbers");
    while (camera.step()) {
        expectBytes(camera, 4, sizeof numbers);
        readArray(cameraNumbers, camera.integer(0), numbers);
        Camera& view = product.cameras.emplace_back();
        view.name = camera.text(1);
        view.node = reference(camera, 2);
        view.perspective = camera.integer(3) != 0;
        setNumbers(view, numbers);
    }
    Statement light(database,
                    "SELECT id, name, node, kind, length(numbers) FROM product_light ORDER BY id");
    BlobReader lightNumbers(database, "product_light", "numbers");
    while (light.step()) {
        expectBytes(light, 4, sizeof numbers);
        readArray(lightNumbers, light.integer(0), numbers);
        Light& view = product.lights.emplace_back();
        view.name = light.text(1);
        view.node = reference(light, 2);
        view.kind = enumerator(light, 3, LightKind::Spot);
        setNumbers(view, numbers);
    }
}

void loadAnimations(sqlite3* database, const LoadLimits& limits, Product& product) {
    Statement animation(database, "SELECT id, name FROM product_animation ORDER BY id");
    while (animation.step()) {
        expectRow("product_animation", animation.integer(0), product.animations.size());
        product.animations.emplace_back().name = animation.text(1);
    }
    Statement select(database, "SELECT id, animation, node, target, interpolation, length(times), "
                               "length(key_values) FROM product_track ORDER BY id");
    BlobReader times(database, "product_track", "times");
    BlobReader values(database, "product_track", "key_values");
    while (select.step()) {
        const std::int32_t owner = reference(select, 1);
        if (owner < 0 || static_cast<std::size_t>(owner) >= product.animations.size())
            damaged("a track of no animation");
        Track& track = product.animations[owner].tracks.emplace_back();
        track.node = reference(select, 2);
        track.target = enumerator(select, 3, TrackTarget::Scale);
        track.interpolation = enumerator(select, 4, TrackInterpolation::Step);
        const std::int64_t row = select.integer(0);
        readKeys(times, row, static_cast<std::uint64_t>(select.integer(5)), limits, track.times);
        readKeys(values, row, static_cast<std::uint64_t>(select.integer(6)), limits, track.values);
    }
}

} // namespace qor::document::tables
