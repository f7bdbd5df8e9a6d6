#pragma once

#include "platform/component/QorHandle.h"
#include "platform/system/QorSettingFile.h"
#include "platform/text/QorString.h"

#include <vector>

/// A named set of settings, shared by all who ask for it: numbers, arrays of numbers and strings by
/// key. Writing changes the running program; SaveRepository puts it on disk, in
/// `$XDG_CONFIG_HOME/qorworkbench/NAME.settings` (`~/.config` when that is unset), one readable
/// line a setting. User-interface thread only.
///
/// A damaged file is copied aside as `NAME.settings.damaged-N` with a warning before anything is
/// written over it, and its good lines count. A file that is there and cannot be read gives
/// an empty repository for this session, with a warning; saving fails then, so that the file is
/// never replaced by defaults. Lines of a later version are kept as they are.
class QorSettingRepository : public QorBaseUnknown {
    QorDeclareClass(QorSettingRepository)

    /// The repository of that name, read from disk the first time; null when it cannot be
    /// opened: it is locked, or the name cannot be a file's. Kept until ForgetAll.
    [[nodiscard]] static QorVar<QorSettingRepository> GetRepository(const QorString& iName);

    /// Makes the next openings of a repository fail, or succeed again.
    static void SetLocked(const QorString& iName, bool iLocked);

    /// Forgets all repositories, what was not saved included, and all locks; the next GetRepository
    /// reads again.
    /// Handles that are held keep theirs. An exit hook does it at the end.
    static void ForgetAll();

    /// Reads exactly \p iCount numbers. A number stored as integer or float converts; to an int it
    /// is cut towards zero. False, and nothing is changed, when the key is absent, has another
    /// count, is a string, or does not fit.
    bool ReadSetting(const QorString& iKey, int* oValues, int iCount = 1) const;
    bool ReadSetting(const QorString& iKey, float* oValues, int iCount = 1) const;
    bool ReadSetting(const QorString& iKey, double* oValues, int iCount = 1) const;
    /// False, and nothing is changed, when the key is absent or a number.
    bool ReadSetting(const QorString& iKey, QorString* oValue) const;
    bool ReadSetting(const QorString& iKey, QorUnicodeString* oValue) const;

    /// Sets a setting, whatever it was before; a new key goes to the end. A key that is empty or
    /// holds blanks, control characters, `=`, `"` or a leading `#` is refused.
    bool WriteSetting(const QorString& iKey, const int* iValues, int iCount = 1);
    bool WriteSetting(const QorString& iKey, const float* iValues, int iCount = 1);
    bool WriteSetting(const QorString& iKey, const double* iValues, int iCount = 1);
    bool WriteSetting(const QorString& iKey, const QorString& iValue);
    bool WriteSetting(const QorString& iKey, const QorUnicodeString& iValue);

    /// The setting as it is stored, or null; valid until the next change.
    [[nodiscard]] const QorSettingValue* FindSetting(const QorString& iKey) const;

    /// Sets a setting of any kind.
    bool SetSetting(const QorString& iKey, QorSettingValue iValue);

    /// Writes the repository to \p iFile, or to its own file when that is null. E_FAIL, with a
    /// warning, when it cannot be written; the file is then what it was.
    QorResult SaveRepository(const char* iFile = nullptr);

    [[nodiscard]] const QorString& GetName() const { return name; }

    /// The file that it is read from and saved to.
    [[nodiscard]] const std::string& GetPath() const { return path; }

protected:
    ~QorSettingRepository() override = default;

private:
    QorSettingRepository(QorString iName, std::string iPath);
    void Load();
    [[nodiscard]] bool SetAsideDamaged();
    [[nodiscard]] std::string FindAsidePath() const;

    QorString name;
    std::string path;
    QorSettingFile settings;
    std::string damagedText; ///< what was read from a damaged file, until it is safe elsewhere
    bool unreadable = false;
};
