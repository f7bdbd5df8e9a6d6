#pragma once

#include "workbench/import/model/ImportReport.h"

#include <Message_ProgressIndicator.hxx>

namespace qor::import {

/// Passes Open CASCADE's progress on to the report's current stage.
class OcctProgress : public Message_ProgressIndicator {
public:
    /// \p report must outlive the indicator.
    explicit OcctProgress(ImportReport& report) : report_(report) {}

protected:
    void Show(const Message_ProgressScope& /*scope*/, const Standard_Boolean /*force*/) override {
        report_.advance(GetPosition());
    }

private:
    ImportReport& report_;
};

} // namespace qor::import
