#include "platform/scene/QorIAlias.h"
#include "tests/document/DocumentTest.h"

using namespace qor::document;
using namespace qor::document::testing;

namespace {

class DocumentScene : public DocumentTest {};

Document_var reread(const std::filesystem::path& file, const Document& document) {
    EXPECT_TRUE(writeDocument(file, document.takeSnapshot()));
    Result<LoadedDocument> loaded = readDocument(file);
    EXPECT_TRUE(loaded) << loaded.failure().text;
    return QorMake<Document>(std::move(loaded.value()));
}

QorAttributeValue attribute(const Document& document, const char* kind, const char* name) {
    QorAttributeValue value;
    const auto objects = document.scene()->ListObjects(kind);
    EXPECT_TRUE(objects.Size() > 0 && objects[1]->GetAttribute(name, value).IsDone()) << kind;
    return value;
}

} // namespace

TEST_F(DocumentScene, AnImportBecomesObjects) {
    const Document_var document = sampleDocument();
    EXPECT_FALSE(document->isModified());
    EXPECT_TRUE(document->IsAKindOf("QorProduct"));
    const auto lights = document->scene()->ListLights();
    ASSERT_EQ(lights.Size(), 1);
    EXPECT_EQ(QorQuery<QorIAlias>(QorRscObject::From(lights[1]))->GetAlias(), "lamp");
    EXPECT_EQ(lights[1]->GetType(), "spot");
    EXPECT_EQ(lights[1]->GetIntensity(), 11.0);
    // (1, 2, 3) of the node whose axes are turned and moved.
    EXPECT_EQ(lights[1]->GetPosition(), (QorMathPoint{101.0, -3.0, 7.0}));
    EXPECT_EQ(lights[1]->GetDirection(), (QorMathVector{0.0, 1.0, 0.0}));
    EXPECT_NEAR(lights[1]->GetOuterAngle(), 2.0 * 0.2 * 57.29577951, 1e-6);
    const auto cameras = document->scene()->ListCameras();
    ASSERT_EQ(cameras.Size(), 1);
    EXPECT_EQ(cameras[1]->GetEye(), (QorMathPoint{1.0, 2.0, 3.0}));
    EXPECT_EQ(cameras[1]->GetProjection(), "parallel");
    const auto materials = document->scene()->ListMaterials();
    ASSERT_EQ(materials.Size(), 1);
    EXPECT_EQ(materials[1]->GetGraphicMaterial(), document->product().materials()[0].Get());
    const auto surroundings = document->scene()->ListEnvironments();
    ASSERT_EQ(surroundings.Size(), 1);
    EXPECT_NEAR(surroundings[1]->GetIntensity() * surroundings[1]->GetColor().red, 0.1, 1e-12);
}

TEST_F(DocumentScene, AParallelCameraSeesTheSameHeightAtItsTarget) {
    const Document_var document = sampleDocument();
    const auto camera = document->scene()->ListCameras()[1];
    const double distance = (camera->GetTarget() - camera->GetEye()).Norm();
    const double half = camera->GetFieldOfView() / 2.0 / 57.295779513;
    EXPECT_NEAR(2.0 * distance * std::tan(half), 77.0, 1e-6);
}

TEST_F(DocumentScene, ObjectsComeBackWithEveryAttribute) {
    const Document_var document = sampleDocument();
    QorRscContainer& scene = *document->scene();
    const auto shooting = scene.CreateObject("shooting", "Hero");
    shooting->SetAttribute("Width", 1920);
    shooting->SetAttribute("OutputName", QorUnicodeString("h\xc3\xa9ro"));
    shooting->SetAttribute("Camera", QorReference(scene.ListObjects("camera")[1]));
    shooting->SetAttribute("Lights", QorReferences{QorReference(scene.ListObjects("light")[1])});
    addObject(*document, "light", "empty");
    addObject(*document, "shooting", "Plain");

    const Document_var again = reread(file("a.qor"), *document);
    EXPECT_FALSE(again->isModified());
    for (const QorRscKind* kind : QorRscKind::GetAll()) {
        const auto before = scene.ListObjects(kind->name);
        const auto after = again->scene()->ListObjects(kind->name);
        ASSERT_EQ(before.Size(), after.Size()) << kind->name;
        for (int i = 1; i <= before.Size(); ++i) {
            EXPECT_EQ(before[i]->GetAlias(), after[i]->GetAlias());
            for (const QorAttribute& one : kind->attributes) {
                if (one.type == QorAttributeType::Reference ||
                    one.type == QorAttributeType::References)
                    continue;
                EXPECT_EQ(one.get(*before[i]), one.get(*after[i])) << kind->name << " " << one.name;
            }
        }
    }
    EXPECT_EQ(std::get<QorReference>(attribute(*again, "shooting", "Camera")).Get(),
              again->scene()->ListObjects("camera")[1]);
    EXPECT_EQ(std::get<QorReferences>(attribute(*again, "shooting", "Lights")).size(), 1U);
    QorAttributeValue none;
    ASSERT_TRUE(again->scene()->ListObjects("shooting")[2]->GetAttribute("Lights", none).IsDone());
    EXPECT_TRUE(std::get<QorReferences>(none).empty());
}

TEST_F(DocumentScene, AChangedMaterialAndANewOneAreSaved) {
    const Document_var document = sampleDocument();
    document->scene()->ListMaterials()[1]->SetRoughness(0.125F);
    const auto made = document->scene()->CreateMaterial();
    made->SetMetallic(1.0F);
    QorTextureUse use;
    use.image = QorMake<QorPixelImage>(
        1, 1, 3, std::make_shared<const QorPixelImage::Pixels>(QorPixelImage::Pixels{9, 8, 7}));
    made->GetGraphicMaterial()->SetTexture(QorTextureSlot::BaseColor, use);

    const Document_var again = reread(file("a.qor"), *document);
    const auto materials = again->scene()->ListMaterials();
    ASSERT_EQ(materials.Size(), 2);
    EXPECT_EQ(materials[1]->GetRoughness(), 0.125F);
    EXPECT_EQ(again->product().materials()[0]->roughness, 0.125F);
    EXPECT_EQ(materials[2]->GetMetallic(), 1.0F);
    const QorTextureUse& kept =
        materials[2]->GetGraphicMaterial()->GetTexture(QorTextureSlot::BaseColor);
    ASSERT_TRUE(kept.image);
    EXPECT_EQ(*kept.image->GetPixels(), (QorPixelImage::Pixels{9, 8, 7, 255}));
}

TEST_F(DocumentScene, ARemovedObjectDoesNotComeBack) {
    const Document_var document = sampleDocument();
    document->scene()->RemoveObject(document->scene()->ListObjects("light")[1]);
    EXPECT_TRUE(document->isModified());
    EXPECT_EQ(reread(file("a.qor"), *document)->scene()->ListLights().Size(), 0);
}

TEST_F(DocumentScene, HidingShowingAndIsolatingSwitchWhatTheySay) {
    const Document_var document = sampleDocument();
    const auto& nodes = document->product().nodes();
    document->setVisible(*nodes[1], false);
    EXPECT_TRUE(document->isModified());
    EXPECT_FALSE(nodes[1]->isShown());
    EXPECT_TRUE(nodes[0]->isShown());
    document->showAll();
    EXPECT_TRUE(nodes[1]->isShown() && nodes[2]->isShown());
    ProductNode* const kept[] = {nodes[2].Get()};
    document->isolate(kept);
    EXPECT_TRUE(nodes[0]->isShown());
    EXPECT_FALSE(nodes[1]->isShown());
    EXPECT_TRUE(nodes[2]->isShown());
    ProductNode* const all[] = {nodes[0].Get()};
    document->isolate(all);
    EXPECT_FALSE(nodes[1]->isShown()) << "what is below keeps its own switch";
    document->isolate({});
    EXPECT_TRUE(nodes[2]->isShown());
    EXPECT_FALSE(reread(file("a.qor"), *document)->product().nodes()[1]->isVisible());
}

TEST_F(DocumentScene, ThePathOfANodeBeginsAtItsRoot) {
    const Document_var document = sampleDocument();
    const auto& nodes = document->product().nodes();
    const auto path = document->BuildPathElement(nodes[2].Get());
    ASSERT_EQ(path->GetSize(), 2);
    EXPECT_EQ(path->GetElement(0), nodes[0].Get());
    EXPECT_EQ(path->GetLeaf(), nodes[2].Get());
    QorRscObject* lamp = document->scene()->ListObjects("light")[1];
    EXPECT_EQ(document->BuildPathElement(lamp)->GetSize(), 1);
}

TEST_F(DocumentScene, ANodeIsKnownByItsName) {
    const Document_var document = sampleDocument();
    ProductNode* node = document->product().nodes()[2].Get();
    const auto alias = QorQuery<QorIAlias>(node);
    ASSERT_TRUE(alias);
    EXPECT_EQ(alias->GetAlias(), node->name().c_str());
    EXPECT_EQ(alias->SetAlias("another"), E_FAIL);
    EXPECT_EQ(alias->GetAlias(), node->name().c_str());
}

TEST_F(DocumentScene, AnotherDocumentComesWithItsScene) {
    const Document_var other = sampleDocument();
    QorRscContainer& from = *other->scene();
    const auto shooting = from.CreateObject("shooting", "Hero");
    shooting->SetAttribute("Width", 1234);
    shooting->SetAttribute("Camera", QorReference(from.ListObjects("camera")[1]));
    from.RemoveObject(from.ListObjects("light")[1]);
    QorRscObject* paint = from.ListObjects("material")[1];
    const QorUnicodeString paintName = paint->GetAlias();
    const auto surroundings = from.ListEnvironments();
    ASSERT_EQ(surroundings.Size(), 1);
    surroundings[1]->SetIntensity(7.0);
    ASSERT_TRUE(writeDocument(file("other.qor"), other->takeSnapshot()));

    const Document_var document = sampleDocument();
    addObject(*document, "shooting", "Hero");
    Result<LoadedDocument> loaded = readDocument(file("other.qor"));
    ASSERT_TRUE(loaded) << loaded.failure().text;
    document->merge(std::move(loaded.value()));

    const QorRscContainer& scene = *document->scene();
    const auto shootings = scene.ListObjects("shooting");
    ASSERT_EQ(shootings.Size(), 2);
    EXPECT_EQ(shootings[2]->GetAlias(), "Hero.2");
    QorAttributeValue value;
    ASSERT_TRUE(shootings[2]->GetAttribute("Width", value).IsDone());
    EXPECT_EQ(std::get<int>(value), 1234);
    ASSERT_TRUE(shootings[2]->GetAttribute("Camera", value).IsDone());
    EXPECT_EQ(QorRscObject::From(std::get<QorReference>(value).Get()),
              static_cast<QorRscObject*>(scene.ListObjects("camera")[2]));
    // A light that the other document no longer had stays away.
    EXPECT_EQ(scene.ListObjects("light").Size(), 1);
    const auto materials = document->scene()->ListMaterials();
    ASSERT_EQ(materials.Size(), 2);
    EXPECT_EQ(materials[2]->GetGraphicMaterial(), document->product().materials()[1].Get());
    const auto all = document->scene()->ListEnvironments();
    ASSERT_EQ(all.Size(), 2);
    EXPECT_TRUE(all[1]->IsActive());
    EXPECT_FALSE(all[2]->IsActive());
    EXPECT_EQ(all[2]->GetIntensity(), 7.0);

    const Document_var again = reread(file("both.qor"), *document);
    EXPECT_EQ(again->scene()->ListObjects("shooting").Size(), 2);
}

TEST_F(DocumentScene, ASnapshotStaysAsItWas) {
    const Document_var document = sampleDocument();
    const DocumentSnapshot snapshot = document->takeSnapshot();
    document->setVisible(*document->product().nodes()[0], false);
    document->merge(LoadedDocument{ProductReps(sampleProduct()), {}, {}});
    ASSERT_TRUE(writeDocument(file("a.qor"), snapshot));
    Result<LoadedDocument> loaded = readDocument(file("a.qor"));
    ASSERT_TRUE(loaded) << loaded.failure().text;
    EXPECT_EQ(loaded.value().product.nodes().size(), sampleProduct().nodes.size());
    EXPECT_TRUE(loaded.value().product.nodes()[0]->isVisible());
    EXPECT_EQ(loaded.value().product.meshes().size(), sampleProduct().meshes.size());
}

TEST_F(DocumentScene, ImportingIntoADocumentKeepsNamesUnique) {
    const Document_var document = sampleDocument();
    document->merge(LoadedDocument{ProductReps(sampleProduct()), {}, {}});
    EXPECT_TRUE(document->isModified());
    EXPECT_EQ(document->product().roots()[1]->name(), "root.2");
    EXPECT_EQ(document->scene()->ListMaterials().Size(), 2);
    EXPECT_EQ(document->scene()->ListObjects("material")[2]->GetAlias(), "paint.2");
    EXPECT_EQ(document->scene()->ListEnvironments().Size(), 1);
    const Document_var again = reread(file("a.qor"), *document);
    EXPECT_EQ(again->product().nodes().size(), 6U);
    EXPECT_EQ(again->product().images().size(), 2U);
}
