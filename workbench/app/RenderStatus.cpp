#include "workbench/app/RenderStatus.h"

#include "platform/engine/QorRdgEngineManager.h"
#include "platform/frame/QorApplicationFrame.h"
#include "platform/text/QorMsgCatalog.h"

#include <array>
#include <charconv>

namespace qor::app {

namespace {

using Record = QorRdgEngineManager::Record;

/// One digit behind the point, whatever the locale.
std::string tenths(double seconds) {
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed, 1);
    return {text.data(), end.ptr};
}

QorUnicodeString textFor(const Record& record) {
    const auto message = [](const char* key, const QorMsgParameters& parameters) {
        return QorMsgCatalog::BuildMessage("MainFrame", key, parameters);
    };
    switch (record.status) {
    case QorRdgEngineManager::Status::Done:
        return message("RenderDone", {std::to_string(record.width), std::to_string(record.height),
                                      tenths(record.seconds)});
    case QorRdgEngineManager::Status::Aborted:
        return message("RenderAborted", {});
    case QorRdgEngineManager::Status::Refused:
        return message("RenderRefused", {record.message});
    default:
        return {};
    }
}

} // namespace

RenderStatus::RenderStatus(QorApplicationFrame& frame) {
    if (QorRdgEngineManager* manager = QorRdgEngineManager::GetManager())
        manager->SetEndListener(
            [&frame](const Record& record) { frame.SetStatus(textFor(record)); });
}

RenderStatus::~RenderStatus() {
    if (QorRdgEngineManager* manager = QorRdgEngineManager::GetManager())
        manager->SetEndListener({});
}

} // namespace qor::app
