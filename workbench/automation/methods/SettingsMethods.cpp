#include "platform/system/QorSettingRepository.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/methods/Groups.h"

#include <algorithm>
#include <limits>

namespace qor::automation {

namespace {

QorVar<QorSettingRepository> openRepository(const Call& call) {
    const std::string name = call.text("repository");
    QorVar<QorSettingRepository> repository = QorSettingRepository::GetRepository(name);
    if (!repository)
        throw Error(ErrorCode::failed, "the repository " + inQuotes(name) + " cannot be opened");
    return repository;
}

/// One number stands alone, several are a list.
struct SettingWriter {
    template <class Number>
    Json operator()(const std::vector<Number>& numbers) const {
        return numbers.size() == 1 ? Json(numbers.front()) : Json(numbers);
    }

    Json operator()(const std::string& text) const { return text; }
};

bool isInteger(const Json& value) {
    if (!value.is_number_integer())
        return false;
    const auto number = value.get<double>();
    return number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
}

/// Whole numbers written without a point are integers when all of a list are.
QorSettingValue readSetting(const Json& value) {
    if (value.is_string())
        return value.get<std::string>();
    const Json list = value.is_array() ? value : Json::array({value});
    if (list.empty() ||
        !std::all_of(list.begin(), list.end(), [](const Json& one) { return one.is_number(); }))
        throw Error(ErrorCode::invalidParams,
                    "parameter \"value\" must be a number, a list of numbers or a text");
    if (std::all_of(list.begin(), list.end(), &isInteger))
        return list.get<std::vector<int>>();
    return list.get<std::vector<double>>();
}

Json getSetting(Call& call) {
    const auto repository = openRepository(call);
    const QorSettingValue* value = repository->FindSetting(call.text("key"));
    return value != nullptr ? std::visit(SettingWriter(), *value) : Json();
}

Json setSetting(Call& call) {
    QorSettingValue value = readSetting(call.value("value"));
    const auto repository = openRepository(call);
    if (!repository->SetSetting(call.text("key"), std::move(value)))
        throw Error(ErrorCode::invalidParams,
                    inQuotes(call.text("key")) + " cannot be the key of a setting");
    return Json::object();
}

Json saveSettings(Call& call) {
    const auto repository = openRepository(call);
    if (!QorSucceeded(repository->SaveRepository()))
        throw Error(ErrorCode::failed, repository->GetPath() + " cannot be written");
    return Json::object();
}

Json lockSettings(Call& call) {
    QorSettingRepository::SetLocked(call.text("repository"), call.flag("locked"));
    return Json::object();
}

} // namespace

MethodGroup settingsMethods() {
    const Param repository{"repository", ParamKind::text};
    const Param key{"key", ParamKind::text};
    return {
        {.name = "settings.get", .params = {repository, key}, .run = &getSetting},
        {.name = "settings.set",
         .params = {repository, key, {"value", ParamKind::any}},
         .run = &setSetting},
        {.name = "settings.save", .params = {repository}, .run = &saveSettings},
        {.name = "settings.lock",
         .params = {repository, {"locked", ParamKind::boolean}},
         .run = &lockSettings},
    };
}

} // namespace qor::automation
