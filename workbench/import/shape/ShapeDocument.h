#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/import/model/ImportReport.h"
#include "workbench/import/model/ModelFormat.h"

#include <TDocStd_Document.hxx>

#include <filesystem>

namespace qor::import {

/// A B-rep model as Open CASCADE holds it: shapes in millimetres in a labelled document, and the
/// file's own unit.
struct ShapeDocument {
    Handle(TDocStd_Document) document;
    document::SourceUnit unit;
};

/// Reads a STEP, IGES or BREP file. Takes the stages "read" and "transfer". Throws ImportError.
[[nodiscard]] ShapeDocument
readShapeDocument(const std::filesystem::path& file, ModelFormat format, ImportReport& report);

} // namespace qor::import
