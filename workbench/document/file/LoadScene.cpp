#include "workbench/document/file/DocumentTables.h"
#include "workbench/document/product/tables/Database.h"
#include "workbench/document/product/tables/RowReader.h"

#include <cmath>

namespace qor::document {

using tables::Statement;

namespace {

struct Bounds {
    std::size_t objects;
    std::size_t nodes;
};

SceneReference readReference(const Statement& row, const Bounds& bounds) {
    SceneReference reference;
    reference.target = tables::enumerator(row, 5, SceneReference::Target::Node);
    reference.index = tables::reference(row, 6);
    const std::size_t count =
        reference.target == SceneReference::Target::Node ? bounds.nodes : bounds.objects;
    const bool isNothing = reference.target == SceneReference::Target::Nothing;
    if (isNothing != (reference.index == none) ||
        (!isNothing && static_cast<std::size_t>(reference.index) >= count))
        tables::damaged("a reference to nothing");
    return reference;
}

double finiteReal(const Statement& row, int column) {
    const double value = row.real(column);
    if (!std::isfinite(value))
        tables::damaged("an attribute that is no number");
    return value;
}

void readValue(const Statement& row, const Bounds& bounds, SceneAttribute& attribute) {
    switch (attribute.type) {
    case SceneType::Integer:
    case SceneType::Boolean:
        attribute.integer = row.integer(5);
        return;
    case SceneType::Text:
        attribute.text = row.text(5);
        return;
    case SceneType::Real:
    case SceneType::Color:
    case SceneType::Point:
        for (int i = 0; i < 3; ++i)
            attribute.numbers[static_cast<std::size_t>(i)] = finiteReal(row, 5 + i);
        return;
    case SceneType::Reference:
    case SceneType::References:
        attribute.references.push_back(readReference(row, bounds));
        return;
    }
}

SceneRows loadObjects(sqlite3* database, std::size_t materials) {
    Statement select(database, "SELECT id, kind, name, material FROM scene_object ORDER BY id");
    SceneRows scene;
    while (select.step()) {
        tables::expectRow("scene_object", select.integer(0), scene.size());
        SceneRow row;
        row.kind = select.text(1);
        row.name = select.text(2);
        row.material = tables::reference(select, 3);
        if (row.material != none && static_cast<std::size_t>(row.material) >= materials)
            tables::damaged("an object of a material that is not there");
        scene.push_back(std::move(row));
    }
    return scene;
}

/// The list of one attribute that stands for an empty one becomes empty.
void closeList(SceneAttribute& attribute) {
    if (attribute.type == SceneType::References && attribute.references.size() == 1 &&
        attribute.references.front().target == SceneReference::Target::Nothing)
        attribute.references.clear();
}

void loadAttributes(sqlite3* database, std::size_t nodes, SceneRows& scene) {
    Statement select(database, "SELECT object, position, item, attribute, type, a, b, c "
                               "FROM scene_attribute ORDER BY object, position, item");
    const Bounds bounds{scene.size(), nodes};
    while (select.step()) {
        const std::int32_t object = tables::reference(select, 0);
        if (object == none || static_cast<std::size_t>(object) >= scene.size())
            tables::damaged("an attribute of no object");
        std::vector<SceneAttribute>& attributes =
            scene[static_cast<std::size_t>(object)].attributes;
        const SceneType type = tables::enumerator(select, 4, SceneType::References);
        if (select.integer(2) == 0) {
            tables::expectRow("scene_attribute", select.integer(1), attributes.size());
            attributes.push_back(
                {.name = select.text(3), .type = type, .text = {}, .references = {}});
        } else if (attributes.empty() || attributes.back().type != type ||
                   type != SceneType::References) {
            tables::damaged("an attribute with a second value");
        }
        readValue(select, bounds, attributes.back());
    }
    for (SceneRow& row : scene)
        for (SceneAttribute& attribute : row.attributes)
            closeList(attribute);
}

} // namespace

SceneRows loadSceneRows(sqlite3* database, std::size_t nodes, std::size_t materials) {
    checkDocumentTables(database);
    SceneRows scene = loadObjects(database, materials);
    loadAttributes(database, nodes, scene);
    return scene;
}

} // namespace qor::document
