#pragma once

#include "platform/system/QorSettingRepository.h"
#include "scenes/QorRdgScene.h"

/// The custom scene in a settings repository, one key a field.
class QorRdgSceneSettings {
public:
    /// The custom scene of somebody who has not saved one.
    [[nodiscard]] static QorRdgScene GetDefault();
    /// Keys that are missing, or of another kind or count, leave their field as it was.
    static void Read(const QorSettingRepository& iSettings, QorRdgScene& ioScene);
    /// Writes all fifteen keys; nothing goes to disk.
    static void Write(QorSettingRepository& ioSettings, const QorRdgScene& iScene);
};
