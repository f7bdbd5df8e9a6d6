#include "scenes/QorRdgSceneSettings.h"

#include <variant>

namespace {

using Scene = QorRdgScene;

struct Row {
    const char* key;
    std::variant<int Scene::*, float Scene::*, std::array<float, 3> Scene::*, QorString Scene::*>
        field;
};

const std::array<Row, 15> rows = {{
    {"LightCount", &Scene::lightCount},
    {"LightAmbient", &Scene::ambient},
    {"LightDiffuse", &Scene::diffuse},
    {"LightSpecular", &Scene::specular},
    {"LightColor1", &Scene::color1},
    {"LightDirection1", &Scene::direction1},
    {"LightColor2", &Scene::color2},
    {"LightDirection2", &Scene::direction2},
    {"LightShadow", &Scene::shadow},
    {"BackgroundOn", &Scene::backgroundOn},
    {"BackgroundImage", &Scene::backgroundImage},
    {"BackgroundStretch", &Scene::backgroundStretch},
    {"GroundOn", &Scene::groundOn},
    {"GroundTransparency", &Scene::groundTransparency},
    {"GroundReflectivity", &Scene::groundReflectivity},
}};

struct Reader {
    const QorSettingRepository& settings;
    const char* key;

    void operator()(int& ioValue) const { settings.ReadSetting(key, &ioValue); }

    void operator()(float& ioValue) const { settings.ReadSetting(key, &ioValue); }

    void operator()(std::array<float, 3>& ioValue) const {
        settings.ReadSetting(key, ioValue.data(), 3);
    }

    void operator()(QorString& ioValue) const { settings.ReadSetting(key, &ioValue); }
};

struct Writer {
    QorSettingRepository& settings;
    const char* key;

    void operator()(const int& iValue) const { settings.WriteSetting(key, &iValue); }

    void operator()(const float& iValue) const { settings.WriteSetting(key, &iValue); }

    void operator()(const std::array<float, 3>& iValue) const {
        settings.WriteSetting(key, iValue.data(), 3);
    }

    void operator()(const QorString& iValue) const { settings.WriteSetting(key, iValue); }
};

} // namespace

QorRdgScene QorRdgSceneSettings::GetDefault() {
    QorRdgScene scene;
    scene.index = -1;
    scene.lightCount = 1;
    scene.ambient = 0.2F;
    scene.diffuse = 1.0F;
    scene.specular = 0.7F;
    scene.shadow = 1;
    scene.color1 = {1.0F, 1.0F, 1.0F};
    scene.direction1 = {-1.0F, 1.0F, 1.0F};
    scene.color2 = {1.0F, 1.0F, 1.0F};
    scene.direction2 = {1.0F, 1.0F, 1.0F};
    scene.backgroundOn = 1;
    scene.backgroundImage = "DefaultBackground.jpg";
    scene.backgroundStretch = 1;
    scene.groundOn = 1;
    return scene;
}

void QorRdgSceneSettings::Read(const QorSettingRepository& iSettings, QorRdgScene& ioScene) {
    for (const Row& row : rows)
        std::visit([&](auto iField) { Reader{iSettings, row.key}(ioScene.*iField); }, row.field);
}

void QorRdgSceneSettings::Write(QorSettingRepository& ioSettings, const QorRdgScene& iScene) {
    for (const Row& row : rows)
        std::visit([&](auto iField) { Writer{ioSettings, row.key}(iScene.*iField); }, row.field);
}
