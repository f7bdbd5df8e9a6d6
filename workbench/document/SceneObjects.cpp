#include "workbench/document/SceneObjects.h"

#include "platform/scene/QorRscMaterial.h"

#include <algorithm>
#include <unordered_map>

namespace qor::document {

namespace {

static_assert(static_cast<int>(SceneType::References) ==
                  static_cast<int>(QorAttributeType::References),
              "files number the types of attributes as the library does");

using ObjectPlaces = std::unordered_map<const QorBaseUnknown*, std::int32_t>;

SceneReference referenceTo(const QorReference& object, const ObjectPlaces& places) {
    if (!object)
        return {};
    QorBaseUnknown* identity = object->GetIdentity();
    if (const auto place = places.find(identity); place != places.end())
        return {SceneReference::Target::Object, place->second};
    if (const auto* node = dynamic_cast<const ProductNode*>(identity))
        return {SceneReference::Target::Node, node->id()};
    return {};
}

/// Puts a value into the row of its attribute.
class Recorder {
public:
    Recorder(SceneAttribute& attribute, const ObjectPlaces& places)
        : attribute_(attribute), places_(places) {}

    void operator()(int value) const { attribute_.integer = value; }

    void operator()(double value) const { attribute_.numbers[0] = value; }

    void operator()(bool value) const { attribute_.integer = value ? 1 : 0; }

    void operator()(const QorUnicodeString& value) const { attribute_.text = value.Str(); }

    void operator()(const QorRscColor& value) const {
        attribute_.numbers = {value.red, value.green, value.blue};
    }

    void operator()(const QorMathPoint& value) const {
        attribute_.numbers = {value.x, value.y, value.z};
    }

    void operator()(const QorReference& value) const {
        attribute_.references = {referenceTo(value, places_)};
    }

    void operator()(const QorReferences& value) const {
        for (const QorReference& object : value)
            if (const SceneReference reference = referenceTo(object, places_);
                reference.target != SceneReference::Target::Nothing)
                attribute_.references.push_back(reference);
    }

private:
    SceneAttribute& attribute_;
    const ObjectPlaces& places_;
};

std::vector<QorRscObject_var> allObjects(const QorRscContainer& scene) {
    std::vector<QorRscObject_var> objects;
    for (const QorRscKind* kind : QorRscKind::GetAll())
        for (const QorRscObject_var& object : scene.ListObjects(kind->name))
            objects.push_back(object);
    return objects;
}

std::int32_t placeOf(QorGraphicMaterial* material,
                     std::vector<QorVar<QorGraphicMaterial>>& materials) {
    const auto found = std::find_if(materials.begin(), materials.end(),
                                    [&](const auto& one) { return one.Get() == material; });
    const auto place = static_cast<std::int32_t>(found - materials.begin());
    if (found == materials.end())
        materials.emplace_back(material);
    return place;
}

SceneRow rowOf(const QorRscObject& object,
               const ObjectPlaces& places,
               std::vector<QorVar<QorGraphicMaterial>>& materials) {
    SceneRow row{.kind = object.GetKind().name.Str(),
                 .name = object.GetAlias().Str(),
                 .material = none,
                 .attributes = {}};
    if (const auto* material = dynamic_cast<const QorRscMaterial*>(&object)) {
        row.material = placeOf(material->GetGraphicMaterial(), materials);
        return row; // its values are those of the product's material
    }
    for (const QorAttribute& attribute : object.GetKind().attributes) {
        SceneAttribute stored{.name = attribute.name,
                              .type = static_cast<SceneType>(attribute.type),
                              .text = {},
                              .references = {}};
        std::visit(Recorder(stored, places), attribute.get(object));
        row.attributes.push_back(std::move(stored));
    }
    return row;
}

/// Objects of rows, by index; null for those of an unknown kind.
using RowObjects = std::vector<QorRscObject_var>;

QorReference
objectOf(const SceneReference& reference, const RowObjects& objects, const ProductReps& product) {
    const auto index = static_cast<std::size_t>(reference.index);
    switch (reference.target) {
    case SceneReference::Target::Nothing:
        return {};
    case SceneReference::Target::Object:
        return objects[index].Get();
    case SceneReference::Target::Node:
        return product.nodes()[index].Get();
    }
    return {};
}

QorAttributeValue
valueOf(const SceneAttribute& attribute, const RowObjects& objects, const ProductReps& product) {
    const std::array<double, 3>& numbers = attribute.numbers;
    switch (attribute.type) {
    case SceneType::Integer:
        return static_cast<int>(attribute.integer);
    case SceneType::Real:
        return numbers[0];
    case SceneType::Boolean:
        return attribute.integer != 0;
    case SceneType::Text:
        return QorUnicodeString(attribute.text);
    case SceneType::Color:
        return QorRscColor{numbers[0], numbers[1], numbers[2]};
    case SceneType::Point:
        return QorMathPoint{numbers[0], numbers[1], numbers[2]};
    case SceneType::Reference:
        return objectOf(attribute.references.front(), objects, product);
    case SceneType::References:
        break;
    }
    QorReferences list;
    for (const SceneReference& reference : attribute.references)
        if (const QorReference object = objectOf(reference, objects, product))
            list.push_back(object);
    return list;
}

QorRscObject_var
makeObject(QorRscContainer& scene, const SceneRow& row, const ProductReps& product) {
    if (row.kind != QorRscMaterial::Kind().name.Str() || row.material == none)
        return scene.CreateObject(row.kind, row.name);
    auto object =
        QorMake<QorRscMaterial>(product.materials()[static_cast<std::size_t>(row.material)].Get());
    object->SetAlias(row.name);
    scene.AddObject(object.Get());
    return object.Get();
}

} // namespace

SceneRows rowsOf(const QorRscContainer& scene, std::vector<QorVar<QorGraphicMaterial>>& materials) {
    const std::vector<QorRscObject_var> objects = allObjects(scene);
    ObjectPlaces places;
    for (std::size_t i = 0; i < objects.size(); ++i)
        places[objects[i]->GetIdentity()] = static_cast<std::int32_t>(i);
    SceneRows rows;
    rows.reserve(objects.size());
    for (const QorRscObject_var& object : objects)
        rows.push_back(rowOf(*object, places, materials));
    return rows;
}

void fillScene(QorRscContainer& scene, const SceneRows& rows, const ProductReps& product) {
    RowObjects objects;
    objects.reserve(rows.size());
    for (const SceneRow& row : rows)
        objects.push_back(makeObject(scene, row, product));
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (objects[i])
            for (const SceneAttribute& attribute : rows[i].attributes)
                objects[i]->SetAttribute(attribute.name, valueOf(attribute, objects, product));
}

} // namespace qor::document
