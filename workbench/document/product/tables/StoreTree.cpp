#include "workbench/document/product/ProductTables.h"
#include "workbench/document/product/tables/Bytes.h"
#include "workbench/document/product/tables/Database.h"
#include "workbench/document/product/tables/InfoKeys.h"
#include "workbench/document/product/tables/Store.h"
#include "workbench/document/product/tables/ViewNumbers.h"

namespace qor::document::tables {

namespace {

// Rows of product_info.
class InfoTable {
public:
    explicit InfoTable(sqlite3* database)
        : insert_(database, "INSERT INTO product_info VALUES(?,?)") {}

    template <typename T>
    void put(const char* key, const T& value) {
        insert_.bind(1, std::string_view(key));
        insert_.bind(2, value);
        insert_.run();
    }

    void putIfSet(const char* key, std::optional<int> value) {
        if (value)
            put(key, std::int64_t{*value});
    }

private:
    Statement insert_;
};

template <typename View>
void bindNumbers(Statement& insert, int parameter, const View& view, ViewNumbers& keep) {
    keep = numbersOf(view);
    insert.bind(parameter, std::as_bytes(std::span(keep)));
}

} // namespace

void storeInfo(sqlite3* database, const Product& product) {
    InfoTable table(database);
    table.put(info::tablesVersion, std::int64_t{productTablesVersion});
    table.put(info::name, std::string_view(product.name));
    table.put(info::sourceFile, std::string_view(product.sourceFile));
    table.put(info::unitName, std::string_view(product.unit.name));
    table.put(info::unitMm, product.unit.millimetres);
    for (std::size_t i = 0; product.environment && i < 3; ++i)
        table.put(info::environment[i], (*product.environment)[i]);
    table.putIfSet(info::diffuseBounces, product.work.diffuseBounces);
    table.putIfSet(info::glossyBounces, product.work.glossyBounces);
    table.putIfSet(info::transmissionBounces, product.work.transmissionBounces);
    table.putIfSet(info::caustics, product.work.caustics);
}

void storeTree(sqlite3* database, const Product& product) {
    Statement part(database, "INSERT INTO product_part VALUES(?,?,?,?)");
    for (std::size_t i = 0; i < product.parts.size(); ++i) {
        part.bind(1, static_cast<std::int64_t>(i));
        part.bind(2, std::string_view(product.parts[i].name));
        part.bindReference(3, product.parts[i].mesh);
        part.bindReference(4, product.parts[i].material);
        part.run();
    }
    Statement insert(database, "INSERT INTO product_node VALUES(?,?,?,?,?,?,?)");
    for (std::size_t i = 0; i < product.nodes.size(); ++i) {
        const Node& node = product.nodes[i];
        insert.bind(1, static_cast<std::int64_t>(i));
        insert.bind(2, std::string_view(node.name));
        insert.bindReference(3, node.parent);
        insert.bindReference(4, node.part);
        insert.bindReference(5, node.material);
        insert.bind(6, std::int64_t{node.visible});
        if (node.transform == identityTransform)
            insert.bindNull(7);
        else
            insert.bind(7, std::as_bytes(std::span(node.transform)));
        insert.run();
    }
}

void storeViews(sqlite3* database, const Product& product) {
    ViewNumbers numbers{};
    Statement camera(database, "INSERT INTO product_camera VALUES(NULL,?,?,?,?)");
    for (const Camera& view : product.cameras) {
        camera.bind(1, std::string_view(view.name));
        camera.bindReference(2, view.node);
        camera.bind(3, std::int64_t{view.perspective});
        bindNumbers(camera, 4, view, numbers);
        camera.run();
    }
    Statement light(database, "INSERT INTO product_light VALUES(NULL,?,?,?,?)");
    for (const Light& view : product.lights) {
        light.bind(1, std::string_view(view.name));
        light.bindReference(2, view.node);
        light.bind(3, static_cast<std::int64_t>(view.kind));
        bindNumbers(light, 4, view, numbers);
        light.run();
    }
}

void storeAnimations(sqlite3* database, const Product& product) {
    Statement animation(database, "INSERT INTO product_animation VALUES(?,?)");
    Statement insert(database, "INSERT INTO product_track VALUES(NULL,?,?,?,?,?,?)");
    for (std::size_t i = 0; i < product.animations.size(); ++i) {
        animation.bind(1, static_cast<std::int64_t>(i));
        animation.bind(2, std::string_view(product.animations[i].name));
        animation.run();
        for (const Track& track : product.animations[i].tracks) {
            insert.bind(1, static_cast<std::int64_t>(i));
            insert.bind(2, std::int64_t{track.node});
            insert.bind(3, static_cast<std::int64_t>(track.target));
            insert.bind(4, static_cast<std::int64_t>(track.interpolation));
            insert.bind(5, bytesOf(track.times));
            insert.bind(6, bytesOf(track.values));
            insert.run();
        }
    }
}

} // namespace qor::document::tables
