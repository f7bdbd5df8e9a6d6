#include "scenes/QorRdgSceneManager.h"

#include "platform/system/QorEnvironment.h"
#include "platform/system/QorExitHooks.h"
#include "platform/system/QorTrace.h"
#include "scenes/QorRdgSceneCatalog.h"
#include "scenes/QorRdgSceneSettings.h"
#include "scenes/QorRdgSceneViewer.h"

#include <algorithm>
#include <utility>

QorImplementClass(QorRdgSceneManager, QorBaseUnknown)

namespace {

constexpr int exitPriority = 3;

QorRdgSceneManager* theManager = nullptr;

void ReleaseManager() {
    QorTrace(2, "(QorRdgSceneManager::ReleaseManager) \n");
    if (QorRdgSceneManager* last = std::exchange(theManager, nullptr))
        last->Release();
}

std::array<float, 3> ArrayOf(const float iValues[3]) {
    return {iValues[0], iValues[1], iValues[2]};
}

} // namespace

QorRdgSceneManager* QorRdgSceneManager::GetManager() {
    if (theManager == nullptr) {
        QorTrace(2, "(QorRdgSceneManager::GetManager) Creating the manager\n");
        theManager = new QorRdgSceneManager;
        QorCallOnExit(&ReleaseManager, exitPriority);
    }
    return theManager;
}

QorRdgSceneManager::QorRdgSceneManager()
    : repository(QorSettingRepository::GetRepository("RenderingOptionsSettings")) {
    QorTrace(2, "(QorRdgSceneManager::QorRdgSceneManager) Constructor\n");
    if (!repository)
        return;
    repository->ReadSetting("SceneType", &sceneType);
    repository->ReadSetting("PredefinedScene", &predefinedIndex);
    auto custom = std::make_unique<QorRdgScene>(QorRdgSceneSettings::GetDefault());
    QorRdgSceneSettings::Read(*repository, *custom);
    scenes.push_back(std::move(custom));
    ReadPredefinedScenes();
}

QorRdgSceneManager::~QorRdgSceneManager() {
    QorTrace(2, "(QorRdgSceneManager::~QorRdgSceneManager) Destructor\n");
}

void QorRdgSceneManager::ReadPredefinedScenes() {
    QorTrace(4, "(QorRdgSceneManager::ReadPredefinedScenes) \n");
    const std::optional<QorUnicodeString> startupPath = QorGetEnv("QorStartupPath");
    if (!startupPath)
        return;
    for (std::unique_ptr<QorRdgScene>& scene : QorRdgSceneCatalog::Read(*startupPath))
        scenes.push_back(std::move(scene));
    // The settings hold the number in the catalog, which survives a translation of the titles.
    const auto chosen = std::find_if(scenes.begin() + 1, scenes.end(), [this](const auto& iScene) {
        return iScene->index == predefinedIndex;
    });
    if (chosen != scenes.end())
        predefinedIndex = static_cast<int>(chosen - scenes.begin()) - 1;
}

QorRdgScene* QorRdgSceneManager::GetCustomScene() const {
    QorTrace(4, "(QorRdgSceneManager::GetCustomScene) \n");
    return scenes.empty() ? nullptr : scenes.front().get();
}

int QorRdgSceneManager::GetPredefinedSceneCount() const {
    return static_cast<int>(scenes.size()) - 1;
}

QorRdgScene* QorRdgSceneManager::GetPredefinedScene(const int& i) const {
    if (i < 0 || i >= GetPredefinedSceneCount())
        return nullptr;
    return scenes[static_cast<std::size_t>(i) + 1].get();
}

int QorRdgSceneManager::SetPredefinedScene(const int& i) {
    QorTrace(4, "(QorRdgSceneManager::SetPredefinedScene) i=%d\n", i);
    if (i >= 0 && i < GetPredefinedSceneCount())
        predefinedIndex = i;
    return predefinedIndex;
}

QorRdgScene* QorRdgSceneManager::GetCurrentScene() const {
    QorTrace(4, "(QorRdgSceneManager::GetCurrentScene) \n");
    if (!repository)
        return nullptr;
    int savedType = Predefined;
    repository->ReadSetting("SceneType", &savedType);
    switch (savedType) {
    case Custom:
        return GetCustomScene();
    case Predefined:
        return GetPredefinedScene(predefinedIndex);
    default:
        return nullptr;
    }
}

void QorRdgSceneManager::Save() {
    QorTrace(4, "(QorRdgSceneManager::Save) \n");
    if (!repository)
        return;
    repository->WriteSetting("SceneType", &sceneType);
    if (const QorRdgScene* chosen = GetPredefinedScene(predefinedIndex))
        repository->WriteSetting("PredefinedScene", &chosen->index);
    if (const QorRdgScene* custom = GetCustomScene())
        QorRdgSceneSettings::Write(*repository, *custom);
    repository->SaveRepository();
}

void QorRdgSceneManager::SetScene(const QorRdgScene* iScene) {
    QorTrace(4, "(QorRdgSceneManager::SetScene) \n");
    if (iScene == nullptr)
        return;
    if (iScene->backgroundOn == 0)
        SetBackground();
    else
        SetBackground(iScene->backgroundImage, iScene->backgroundStretch != 0);
    if (iScene->groundOn == 0)
        SetGround();
    else
        SetGround(iScene->groundTransparency, iScene->groundReflectivity);
    SetLights(iScene->lightCount, iScene->ambient, iScene->diffuse, iScene->specular,
              iScene->color1.data(), iScene->direction1.data(), iScene->color2.data(),
              iScene->direction2.data());
    if (repository) // for the quick render; it goes to disk with the next Save
        repository->WriteSetting("SoftShadows", &iScene->shadow);
}

void QorRdgSceneManager::SetBackground() {
    QorTrace(4, "(QorRdgSceneManager::SetBackground) \n");
    QorRdgSceneViewer::RemoveBackground(QorRdgSceneViewer::GetCurrent());
}

void QorRdgSceneManager::SetBackground(const QorString& iImage, bool iStretch) {
    QorTrace(4, "(QorRdgSceneManager::SetBackground) %s\n", iImage.CastToCharPtr());
    QorRdgSceneViewer::SetBackground(QorRdgSceneViewer::GetCurrent(), iImage, iStretch);
}

void QorRdgSceneManager::SetGround() {
    QorTrace(4, "(QorRdgSceneManager::SetGround) \n");
    QorRdgSceneViewer::HideGround(QorRdgSceneViewer::GetCurrent());
}

void QorRdgSceneManager::SetGround(float iTransparency, float iReflectivity) {
    QorTrace(4, "(QorRdgSceneManager::SetGround) \n");
    QorRdgSceneViewer::SetGround(QorRdgSceneViewer::GetCurrent(), iTransparency, iReflectivity);
}

void QorRdgSceneManager::SetLights(const int& iLightCount,
                                   const float& iAmbient,
                                   const float& iDiffuse,
                                   const float& iSpecular,
                                   const float iColor1[3],
                                   const float iDirection1[3],
                                   const float iColor2[3],
                                   const float iDirection2[3]) {
    QorTrace(4, "(QorRdgSceneManager::SetLights) \n");
    QorRdgScene lights;
    lights.lightCount = iLightCount;
    lights.ambient = iAmbient;
    lights.diffuse = iDiffuse;
    lights.specular = iSpecular;
    lights.color1 = ArrayOf(iColor1);
    lights.direction1 = ArrayOf(iDirection1);
    lights.color2 = ArrayOf(iColor2);
    lights.direction2 = ArrayOf(iDirection2);
    QorRdgSceneViewer::SetLights(QorRdgSceneViewer::GetCurrent(), lights);
}
