#pragma once

#include "workbench/document/product/Result.h"

#include <stdexcept>
#include <string>

namespace qor::import {

/// Thrown inside qorimport where a model cannot be read; its text is a lower-case clause without
/// the file's name, which the door (readModel) puts before it.
class ImportError : public std::runtime_error {
public:
    explicit ImportError(const std::string& text,
                         document::FaultKind faultKind = document::FaultKind::Input)
        : std::runtime_error(text), kind(faultKind) {}

    document::FaultKind kind;
};

} // namespace qor::import
