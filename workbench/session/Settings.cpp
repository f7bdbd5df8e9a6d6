#include "workbench/session/Settings.h"

#include "platform/system/QorSettingRepository.h"

namespace qor::session {

namespace {

QorVar<QorSettingRepository> settings() {
    return QorSettingRepository::GetRepository("WorkbenchSettings");
}

} // namespace

std::string setting(const char* key, const std::string& otherwise) {
    QorUnicodeString value;
    const auto repository = settings();
    return repository && repository->ReadSetting(key, &value) ? value.Str() : otherwise;
}

void keepSetting(const char* key, const std::string& value) {
    const auto repository = settings();
    if (!repository || setting(key) == value)
        return;
    repository->WriteSetting(key, QorUnicodeString(value));
    (void)repository->SaveRepository();
}

} // namespace qor::session
