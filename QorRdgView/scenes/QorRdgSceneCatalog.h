#pragma once

#include "scenes/QorRdgScene.h"

#include <memory>
#include <vector>

/// The predefined scenes: values from the resource catalog "QorRdgScenes", titles from the message
/// catalog of that name, pictures from the folders `rendering` along the start-up path.
class QorRdgSceneCatalog {
public:
    using Scenes = std::vector<std::unique_ptr<QorRdgScene>>;

    /// All scenes in ascending order of their titles; of equal titles the one earlier in the
    /// catalog comes first. A count beyond 100,000 is cut with a warning.
    [[nodiscard]] static Scenes Read(const QorUnicodeString& iStartupPath);
};
