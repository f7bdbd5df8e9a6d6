#include "platform/system/QorSettingRepository.h"

#include "platform/system/QorEnvironment.h"
#include "platform/system/QorExitHooks.h"
#include "platform/system/QorFileWriter.h"
#include "platform/system/QorPaths.h"
#include "platform/text/QorFileReader.h"
#include "platform/text/QorWarning.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <set>
#include <type_traits>

namespace {

struct Registry {
    std::map<std::string, QorVar<QorSettingRepository>> open;
    std::set<std::string> locked;
};

/// Outlives everything else; an exit hook empties it.
Registry& TheRegistry() {
    static auto* registry = new Registry;
    return *registry;
}

bool IsFileName(const std::string& iName) {
    constexpr std::size_t most = 100;
    return !iName.empty() && iName.size() <= most && iName.front() != '.' &&
           iName.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
}

/// The user's configuration directory: freedesktop.org, Base Directory 0.8, where a path that
/// is not absolute does not count.
std::string GetConfigDirectory() {
    const std::string given = QorGetEnv("XDG_CONFIG_HOME").value_or("").Str();
    if (given.starts_with('/'))
        return given;
    std::string home = QorGetEnv("HOME").value_or("").Str();
    if (const passwd* user = home.empty() ? getpwuid(geteuid()) : nullptr)
        home = user->pw_dir;
    return home + "/.config";
}

bool Convert(double iFrom, int& oTo) {
    if (!(iFrom > INT_MIN - 1.0 && iFrom < INT_MAX + 1.0))
        return false;
    oTo = static_cast<int>(iFrom);
    return true;
}

bool Convert(double iFrom, float& oTo) {
    if (std::isfinite(iFrom) && std::abs(iFrom) > std::numeric_limits<float>::max())
        return false;
    oTo = static_cast<float>(iFrom);
    return true;
}

bool Convert(double iFrom, double& oTo) {
    oTo = iFrom;
    return true;
}

template <class Number>
bool ConvertAll(const QorSettingValue& iValue, std::vector<Number>& oNumbers) {
    return std::visit(
        [&](const auto& iStored) {
            using Stored = std::decay_t<decltype(iStored)>;
            if constexpr (std::is_same_v<Stored, std::string>) {
                return false;
            } else {
                for (const auto number : iStored)
                    if (!Convert(number, oNumbers.emplace_back()))
                        return false;
                return true;
            }
        },
        iValue);
}

template <class Number>
bool ReadNumbers(const QorSettingValue* iValue, Number* oValues, int iCount) {
    std::vector<Number> numbers;
    if (iValue == nullptr || oValues == nullptr || !ConvertAll(*iValue, numbers) ||
        std::cmp_not_equal(numbers.size(), iCount))
        return false;
    std::copy(numbers.begin(), numbers.end(), oValues);
    return true;
}

template <class Text>
bool ReadText(const QorSettingValue* iValue, Text* oValue) {
    const auto* text = iValue != nullptr ? std::get_if<std::string>(iValue) : nullptr;
    if (text == nullptr || oValue == nullptr)
        return false;
    *oValue = Text(*text);
    return true;
}

template <class Number>
bool IsGiven(const Number* iValues, int iCount) {
    return iValues != nullptr && iCount > 0;
}

} // namespace

QorImplementClass(QorSettingRepository, QorBaseUnknown)

QorSettingRepository::QorSettingRepository(QorString iName, std::string iPath)
    : name(std::move(iName)), path(std::move(iPath)) {
    Load();
}

QorVar<QorSettingRepository> QorSettingRepository::GetRepository(const QorString& iName) {
    Registry& registry = TheRegistry();
    if (!IsFileName(iName.Str()) || registry.locked.contains(iName.Str()))
        return nullptr;
    if (registry.open.empty()) {
        constexpr int afterAllOthers = INT_MAX; // hooks of other priorities may still save settings
        QorCallOnExit(&QorSettingRepository::ForgetAll, afterAllOthers);
    }
    QorVar<QorSettingRepository>& repository = registry.open[iName.Str()];
    if (!repository)
        repository = QorAdopt(new QorSettingRepository(
            iName, GetConfigDirectory() + "/qorworkbench/" + iName.Str() + ".settings"));
    return repository;
}

void QorSettingRepository::SetLocked(const QorString& iName, bool iLocked) {
    if (iLocked)
        TheRegistry().locked.insert(iName.Str());
    else
        TheRegistry().locked.erase(iName.Str());
}

void QorSettingRepository::ForgetAll() {
    Registry& registry = TheRegistry();
    registry.open.clear();
    registry.locked.clear();
}

void QorSettingRepository::Load() {
    std::string text;
    const int error = QorReadFile(path, text);
    unreadable = error != 0 && error != ENOENT && error != ENOTDIR;
    if (unreadable)
        QorWarn(path + ": cannot be read: " + std::strerror(error) +
                "; settings changed now last for this session only");
    if (error != 0)
        return;
    const QorSettingFile::Damage damage = settings.Parse(text);
    if (damage.count == 0)
        return;
    QorWarn(path + ", line " + std::to_string(damage.firstLine) + ": " + damage.reason + "; " +
            std::to_string(damage.count) + " damaged line(s) are left out");
    damagedText = std::move(text);
    static_cast<void>(SetAsideDamaged());
}

std::string QorSettingRepository::FindAsidePath() const {
    for (int number = 1;; ++number) {
        std::string aside = path + ".damaged-" + std::to_string(number);
        std::string there;
        if (QorGetFileInfo(aside) != 0)
            return aside;
        if (QorReadFile(aside, there) == 0 && there == damagedText)
            return {};
    }
}

bool QorSettingRepository::SetAsideDamaged() {
    if (damagedText.empty())
        return true;
    const std::string aside = FindAsidePath();
    if (!aside.empty()) {
        QorFileWriter writer(aside);
        writer.Write(damagedText);
        if (!QorSucceeded(writer.Commit())) {
            QorWarn(writer.GetError());
            return false;
        }
        QorWarn(path + ": the damaged file is kept as " + aside);
    }
    damagedText.clear();
    return true;
}

QorResult QorSettingRepository::SaveRepository(const char* iFile) {
    const std::string file = iFile != nullptr ? iFile : path;
    if (iFile == nullptr && unreadable) {
        QorWarn(path + ": not written, because it could not be read");
        return E_FAIL;
    }
    if (!SetAsideDamaged())
        return E_FAIL;
    if (iFile == nullptr) {
        constexpr unsigned privateMode = 0700;
        QorUnicodeString directory;
        QorUnicodeString ignored;
        QorSplitPath(path, directory, ignored);
        QorCreateDirectory(directory, privateMode); // if this fails, so does the writer
    }
    QorFileWriter writer(file);
    writer.Write(settings.Print());
    const QorResult result = writer.Commit();
    if (!QorSucceeded(result))
        QorWarn(writer.GetError());
    return result;
}

const QorSettingValue* QorSettingRepository::FindSetting(const QorString& iKey) const {
    return settings.Find(iKey.Str());
}

bool QorSettingRepository::ReadSetting(const QorString& iKey, int* oValues, int iCount) const {
    return ReadNumbers(FindSetting(iKey), oValues, iCount);
}

bool QorSettingRepository::ReadSetting(const QorString& iKey, float* oValues, int iCount) const {
    return ReadNumbers(FindSetting(iKey), oValues, iCount);
}

bool QorSettingRepository::ReadSetting(const QorString& iKey, double* oValues, int iCount) const {
    return ReadNumbers(FindSetting(iKey), oValues, iCount);
}

bool QorSettingRepository::ReadSetting(const QorString& iKey, QorString* oValue) const {
    return ReadText(FindSetting(iKey), oValue);
}

bool QorSettingRepository::ReadSetting(const QorString& iKey, QorUnicodeString* oValue) const {
    return ReadText(FindSetting(iKey), oValue);
}

bool QorSettingRepository::SetSetting(const QorString& iKey, QorSettingValue iValue) {
    return settings.Set(iKey.Str(), std::move(iValue));
}

bool QorSettingRepository::WriteSetting(const QorString& iKey, const int* iValues, int iCount) {
    return IsGiven(iValues, iCount) &&
           SetSetting(iKey, std::vector<int>(iValues, iValues + iCount));
}

bool QorSettingRepository::WriteSetting(const QorString& iKey, const float* iValues, int iCount) {
    if (!IsGiven(iValues, iCount))
        return false;
    std::vector<double> numbers;
    for (int i = 0; i < iCount; ++i)
        numbers.push_back(QorWidenFloat(iValues[i]));
    return SetSetting(iKey, std::move(numbers));
}

bool QorSettingRepository::WriteSetting(const QorString& iKey, const double* iValues, int iCount) {
    return IsGiven(iValues, iCount) &&
           SetSetting(iKey, std::vector<double>(iValues, iValues + iCount));
}

bool QorSettingRepository::WriteSetting(const QorString& iKey, const QorString& iValue) {
    return SetSetting(iKey, iValue.Str());
}

bool QorSettingRepository::WriteSetting(const QorString& iKey, const QorUnicodeString& iValue) {
    return SetSetting(iKey, iValue.Str());
}
