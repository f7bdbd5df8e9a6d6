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

/// Places of materials, those that the product lacks behind them.
class MaterialPlaces {
public:
    explicit MaterialPlaces(std::vector<QorVar<QorGraphicMaterial>>& materials)
        : materials_(materials) {
        for (std::size_t i = 0; i < materials.size(); ++i)
            places_.try_emplace(materials[i].Get(), static_cast<std::int32_t>(i));
    }

    std::int32_t of(QorGraphicMaterial* material) {
        const auto [place, isNew] =
            places_.try_emplace(material, static_cast<std::int32_t>(materials_.size()));
        if (isNew)
            materials_.emplace_back(material);
        return place->second;
    }

private:
    std::vector<QorVar<QorGraphicMaterial>>& materials_;
    std::unordered_map<const QorGraphicMaterial*, std::int32_t> places_;
};

SceneRow rowOf(const QorRscObject& object, const ObjectPlaces& places, MaterialPlaces& materials) {
    SceneRow row{.kind = object.GetKind().name.Str(),
                 .name = object.GetAlias().Str(),
                 .material = none,
                 .attributes = {}};
    if (const auto* material = dynamic_cast<const QorRscMaterial*>(&object)) {
        row.material = materials.of(material->GetGraphicMaterial());
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

/// What the references of rows lead to.
struct RowTargets {
    std::vector<QorRscObject_var> objects; ///< of the rows, by index; null for an unknown kind
    const ProductReps& product;
    SceneOffset offset;
};

QorReference objectOf(const SceneReference& reference, const RowTargets& targets) {
    const auto index = static_cast<std::size_t>(reference.index);
    switch (reference.target) {
    case SceneReference::Target::Nothing:
        return {};
    case SceneReference::Target::Object:
        return targets.objects[index].Get();
    case SceneReference::Target::Node:
        return targets.product.nodes()[targets.offset.nodes + index].Get();
    }
    return {};
}

QorAttributeValue valueOf(const SceneAttribute& attribute, const RowTargets& targets) {
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
        return objectOf(attribute.references.front(), targets);
    case SceneType::References:
        break;
    }
    QorReferences list;
    for (const SceneReference& reference : attribute.references)
        if (const QorReference object = objectOf(reference, targets))
            list.push_back(object);
    return list;
}

QorRscObject_var
makeObject(QorRscContainer& scene, const SceneRow& row, const RowTargets& targets) {
    if (row.kind != QorRscMaterial::Kind().name.Str() || row.material == none)
        return scene.CreateObject(row.kind, row.name);
    const std::size_t place = targets.offset.materials + static_cast<std::size_t>(row.material);
    auto object = QorMake<QorRscMaterial>(targets.product.materials()[place].Get());
    object->SetAlias(row.name);
    scene.AddObject(object.Get());
    return object.Get();
}

bool hasActiveSurroundings(QorRscContainer& scene) {
    const auto surroundings = scene.ListEnvironments();
    for (int i = 1; i <= surroundings.Size(); ++i)
        if (surroundings[i]->IsActive())
            return true;
    return false;
}

} // namespace

SceneRows rowsOf(const QorRscContainer& scene, std::vector<QorVar<QorGraphicMaterial>>& materials) {
    const std::vector<QorRscObject_var> objects = allObjects(scene);
    ObjectPlaces places;
    for (std::size_t i = 0; i < objects.size(); ++i)
        places[objects[i]->GetIdentity()] = static_cast<std::int32_t>(i);
    MaterialPlaces materialPlaces(materials);
    SceneRows rows;
    rows.reserve(objects.size());
    for (const QorRscObject_var& object : objects)
        rows.push_back(rowOf(*object, places, materialPlaces));
    return rows;
}

void addScene(QorRscContainer& scene,
              const SceneRows& rows,
              const ProductReps& product,
              const SceneOffset& offset) {
    const bool keepsSurroundings = hasActiveSurroundings(scene);
    RowTargets targets{.objects = {}, .product = product, .offset = offset};
    targets.objects.reserve(rows.size());
    for (const SceneRow& row : rows)
        targets.objects.push_back(makeObject(scene, row, targets));
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (targets.objects[i])
            for (const SceneAttribute& attribute : rows[i].attributes)
                targets.objects[i]->SetAttribute(attribute.name, valueOf(attribute, targets));
    for (const QorRscObject_var& object : targets.objects)
        if (const auto surroundings = QorQuery<QorIRscEnvironment>(object);
            keepsSurroundings && surroundings)
            surroundings->SetActive(false);
}

} // namespace qor::document
