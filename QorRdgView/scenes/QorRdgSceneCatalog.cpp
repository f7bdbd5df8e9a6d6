#include "scenes/QorRdgSceneCatalog.h"

#include "platform/system/QorPaths.h"
#include "platform/text/QorMsgCatalog.h"
#include "platform/text/QorNumberScan.h"
#include "platform/text/QorPathList.h"
#include "platform/text/QorRscCatalog.h"
#include "platform/text/QorWarning.h"

#include <algorithm>
#include <filesystem>
#include <variant>

namespace {

namespace fs = std::filesystem;

constexpr const char* catalogName = "QorRdgScenes";
constexpr int mostScenes = 100'000;

using Scene = QorRdgScene;
using Vector = std::array<float, 3>;

struct IntegerRow {
    const char* key;
    int Scene::*field;
    int absent;
};

struct FloatRow {
    const char* key;
    float Scene::*field;
    float absent;
};

struct VectorRow {
    const char* key;
    Vector Scene::*field;
    Vector absent;
    bool countsLight;
};

using Row = std::variant<IntegerRow, FloatRow, VectorRow>;

const std::array<Row, 12> rows = {{
    FloatRow{".Light.Ambient", &Scene::ambient, 0.38F},
    FloatRow{".Light.Diffuse", &Scene::diffuse, 0.35F},
    FloatRow{".Light.Specular", &Scene::specular, 0.97F},
    IntegerRow{".Light.Shadow", &Scene::shadow, 1},
    // A scene with the second colour alone has one light, and that is the first, white: meant.
    VectorRow{".Light.Color1", &Scene::color1, {1.0F, 1.0F, 1.0F}, true},
    VectorRow{".Light.Direction1", &Scene::direction1, {-1.0F, 1.0F, 1.0F}, false},
    VectorRow{".Light.Color2", &Scene::color2, {1.0F, 1.0F, 1.0F}, true},
    VectorRow{".Light.Direction2", &Scene::direction2, {1.0F, 1.0F, 1.0F}, false},
    IntegerRow{".Background.Stretch", &Scene::backgroundStretch, 1},
    IntegerRow{".Ground", &Scene::groundOn, 0},
    FloatRow{".Ground.Transparency", &Scene::groundTransparency, 0.0F},
    FloatRow{".Ground.Reflectivity", &Scene::groundReflectivity, 0.0F},
}};

/// Reads a row of one scene. A value that is there and does not parse leaves the field at zero, or
/// at what was parsed of it.
struct RowReader {
    const std::string& prefix;
    QorRdgScene& scene;

    void operator()(const IntegerRow& iRow) const {
        QorString text;
        if (Find(iRow.key, text))
            static_cast<void>(QorScanInteger(text.Str(), scene.*iRow.field));
        else
            scene.*iRow.field = iRow.absent;
    }

    void operator()(const FloatRow& iRow) const {
        QorString text;
        if (Find(iRow.key, text))
            static_cast<void>(QorScanFloat(text.Str(), scene.*iRow.field));
        else
            scene.*iRow.field = iRow.absent;
    }

    void operator()(const VectorRow& iRow) const {
        QorString text;
        if (!Find(iRow.key, text)) {
            scene.*iRow.field = iRow.absent;
            return;
        }
        QorScanFloats(text.Str(), scene.*iRow.field);
        if (iRow.countsLight)
            ++scene.lightCount;
    }

private:
    [[nodiscard]] bool Find(const char* iKey, QorString& oText) const {
        return QorRscCatalog::BuildResource(catalogName, prefix + iKey, oText) != 0;
    }
};

/// The part of \p iPath below \p iFolder; empty when it lies elsewhere.
std::string Below(const fs::path& iFolder, const fs::path& iPath) {
    const fs::path part = iPath.lexically_relative(iFolder);
    return part.empty() || *part.begin() == ".." || part == "." ? std::string() : part.string();
}

/// The part of an absolute path below a `rendering` folder of the path list, or the path itself.
/// So a dumped scene whose picture was chosen there finds it again, by whichever of its names.
std::string BelowRendering(const std::string& iPath, const QorUnicodeString& iStartupPath) {
    if (!iPath.starts_with('/'))
        return iPath;
    std::error_code failed; // then the name is empty, and below nothing
    const fs::path target = fs::weakly_canonical(iPath, failed);
    for (const std::string& directory : QorSplitPathList(iStartupPath.Str())) {
        const fs::path folder = fs::path(directory) / "rendering";
        for (const std::string& part :
             {Below(folder.lexically_normal(), fs::path(iPath).lexically_normal()),
              Below(fs::weakly_canonical(folder, failed), target)})
            if (!part.empty())
                return part;
    }
    return iPath;
}

void ReadBackground(const std::string& iPrefix,
                    const QorUnicodeString& iStartupPath,
                    QorRdgScene& ioScene) {
    QorString value;
    if (QorRscCatalog::BuildResource(catalogName, iPrefix + ".Background.Image", value) == 0 ||
        value.IsNull())
        return;
    const std::string relative = "rendering\\" + BelowRendering(value.Str(), iStartupPath);
    const std::optional<QorUnicodeString> found = QorFindPath(relative, iStartupPath);
    if (!found)
        return;
    ioScene.backgroundImage = found->Str();
    ioScene.backgroundOn = 1;
}

std::unique_ptr<QorRdgScene> ReadScene(int iIndex, const QorUnicodeString& iStartupPath) {
    auto scene = std::make_unique<QorRdgScene>();
    scene->index = iIndex;
    const std::string prefix = "Scene" + std::to_string(iIndex + 1);
    for (const Row& row : rows)
        std::visit(RowReader{prefix, *scene}, row);
    ReadBackground(prefix, iStartupPath, *scene);
    scene->title = QorMsgCatalog::BuildMessage(catalogName, prefix + ".Title", {}, "");
    return scene;
}

int ReadCount() {
    int count = 0;
    QorString text;
    if (QorRscCatalog::BuildResource(catalogName, "Count", text) != 0)
        static_cast<void>(QorScanInteger(text.Str(), count));
    if (count <= mostScenes)
        return count;
    QorWarn("catalog QorRdgScenes: Count is " + text.Str() + ", read as " +
            std::to_string(mostScenes));
    return mostScenes;
}

} // namespace

QorRdgSceneCatalog::Scenes QorRdgSceneCatalog::Read(const QorUnicodeString& iStartupPath) {
    Scenes scenes;
    const int count = ReadCount();
    for (int i = 0; i < count; ++i)
        scenes.push_back(ReadScene(i, iStartupPath));
    std::stable_sort(scenes.begin(), scenes.end(), [](const auto& iOne, const auto& iOther) {
        return iOne->title < iOther->title;
    });
    return scenes;
}
