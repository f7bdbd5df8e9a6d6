#pragma once

#include "platform/component/QorHandle.h"
#include "platform/system/QorSettingRepository.h"
#include "scenes/QorRdgScene.h"

#include <memory>
#include <vector>

/// Holds the scenes of quick renders and applies them to the current viewer: one custom scene,
/// which a person edits and the settings keep, and the predefined ones of the catalog, in the order
/// of their titles. One a process, on the user-interface thread, until the exit hooks run.
///
/// Everything is read once, by the first GetManager; records are then edited in place and never
/// added or removed. Without the settings repository there are no scenes at all.
class QorRdgSceneManager : public QorBaseUnknown {
    QorDeclareClass(QorRdgSceneManager)

    enum SceneType : int { Custom = 1, Predefined = 2 };

    /// The one manager; no reference is given.
    [[nodiscard]] static QorRdgSceneManager* GetManager();

    /// Null without a repository. Scenes stay the manager's.
    [[nodiscard]] QorRdgScene* GetCustomScene() const;
    /// -1 without a repository.
    [[nodiscard]] int GetPredefinedSceneCount() const;
    /// Null for an index that is none.
    [[nodiscard]] QorRdgScene* GetPredefinedScene(const int& i) const;
    /// Chooses the predefined scene at position \p i; an index that is none changes nothing.
    /// Returns the choice.
    int SetPredefinedScene(const int& i);

    [[nodiscard]] int GetPredefinedSceneIndex() const { return predefinedIndex; }

    [[nodiscard]] int GetSceneType() const { return sceneType; }

    /// 1 custom, 2 predefined; not checked.
    void SetSceneType(const int& iType) { sceneType = iType; }

    /// The scene that was saved last: the type comes from the repository and not from SetSceneType,
    /// so that an edit that is not confirmed yet does not count. Null when there is none.
    [[nodiscard]] QorRdgScene* GetCurrentScene() const;

    /// Writes the choice and the custom scene to the repository, and the repository to disk.
    void Save();

    /// Applies a scene to the current viewer; null does nothing.
    void SetScene(const QorRdgScene* iScene);
    /// Takes the picture behind the product away, or shows one.
    void SetBackground();
    void SetBackground(const QorString& iImage, bool iStretch);
    /// Hides the ground, or shows it.
    void SetGround();
    void SetGround(float iTransparency, float iReflectivity);
    void SetLights(const int& iLightCount,
                   const float& iAmbient,
                   const float& iDiffuse,
                   const float& iSpecular,
                   const float iColor1[3],
                   const float iDirection1[3],
                   const float iColor2[3],
                   const float iDirection2[3]);

protected:
    ~QorRdgSceneManager() override;

private:
    QorRdgSceneManager();
    void ReadPredefinedScenes();

    QorVar<QorSettingRepository> repository;
    std::vector<std::unique_ptr<QorRdgScene>> scenes;
    int sceneType = Predefined;
    int predefinedIndex = 0;
};
