#include "workbench/import/model/ModelReader.h"

#include "workbench/document/product/ProductCheck.h"
#include "workbench/document/product/ProductQuery.h"
#include "workbench/import/model/ImportError.h"
#include "workbench/import/model/ModelFormat.h"
#include "workbench/import/scene/SceneReader.h"
#include "workbench/import/shape/AssemblyTree.h"
#include "workbench/import/shape/ShapeDocument.h"

#include <Standard_Failure.hxx>
#include <Standard_OutOfMemory.hxx>

#include <algorithm>
#include <new>
#include <sstream>

namespace qor::import {

using document::FaultKind;
using document::Product;

namespace {

// The Earth is 1.3e10 mm wide; what is larger, or smaller than a molecule, has its unit wrong.
constexpr double largestExtentMm = 1e11;
constexpr double smallestExtentMm = 1e-7;

bool isBrep(ModelFormat format) {
    return format == ModelFormat::Step || format == ModelFormat::Iges ||
           format == ModelFormat::Brep || format == ModelFormat::BrepBinary;
}

void checkExtent(const Product& product) {
    const auto box = document::boundingBox(product);
    if (!box)
        throw ImportError("it holds no surface that can be shown");
    double extent = 0;
    double farthest = 0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        extent = std::max(extent, box->high[axis] - box->low[axis]);
        farthest = std::max({farthest, box->high[axis], -box->low[axis]});
    }
    if (extent >= smallestExtentMm && farthest <= largestExtentMm)
        return;
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << "its size of " << extent << " mm at up to " << farthest
         << " mm from the origin makes no sense";
    throw ImportError(text.str());
}

Product
read(const std::filesystem::path& file, const ImportSettings& settings, ImportReport& report) {
    const ModelFormat format = detectFormat(file);
    const std::string name = file.stem().string();
    Product product =
        isBrep(format) ? productOf(readShapeDocument(file, format, report), settings, name, report)
                       : readScene(file, format, report);
    product.sourceFile = file.filename().string();
    product.name = name;
    if (const auto fault = document::findFault(product))
        throw ImportError("it makes no sound product: " + *fault);
    checkExtent(product);
    return product;
}

} // namespace

document::Result<Product>
readModel(const std::filesystem::path& file, const ImportSettings& settings, ImportReport& report) {
    const auto failure = [&file](FaultKind kind, const std::string& text) {
        return document::Failure{kind, file.string() + ": " + text};
    };
    try {
        return read(file, settings, report);
    } catch (const ImportError& error) {
        return failure(error.kind, error.what());
    } catch (const std::bad_alloc&) {
        return failure(FaultKind::Machine, "not enough memory to read it");
    } catch (const Standard_OutOfMemory&) {
        return failure(FaultKind::Machine, "not enough memory to read it");
    } catch (const Standard_Failure& error) {
        const std::string text = error.GetMessageString();
        return failure(FaultKind::Input,
                       "the geometry library gave up on it" + (text.empty() ? text : ": " + text));
    } catch (const std::exception& error) {
        return failure(FaultKind::Input, std::string("it cannot be read: ") + error.what());
    }
}

} // namespace qor::import
