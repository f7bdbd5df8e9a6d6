#pragma once

#include "tests/support/QorTempDirectory.h"
#include "workbench/document/product/ProductQuery.h"
#include "workbench/import/model/ModelReader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace qor::import::testing {

/// One import in this process, with everything that it reported.
struct Imported {
    document::Result<document::Product> result;
    std::vector<std::string> warnings;
    std::vector<double> fractions;

    document::Product& product() { return result.value(); }
};

inline Imported import(const std::filesystem::path& file, const ImportSettings& settings = {}) {
    Imported out{document::Failure{}, {}, {}};
    ImportReport report(
        [&out](const std::string&, double fraction) { out.fractions.push_back(fraction); },
        [&out](const std::string& text) { out.warnings.push_back(text); });
    out.result = readModel(file, settings, report);
    return out;
}

inline void writeText(const std::filesystem::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

/// Index of the first node of that name, -1 if there is none.
inline std::int32_t nodeNamed(const document::Product& product, const std::string& name) {
    for (std::size_t i = 0; i < product.nodes.size(); ++i)
        if (product.nodes[i].name == name)
            return static_cast<std::int32_t>(i);
    return document::none;
}

inline void expectBox(const document::Product& product,
                      const document::Vector3& low,
                      const document::Vector3& high,
                      double tolerance) {
    const auto box = document::boundingBox(product);
    ASSERT_TRUE(box);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(box->low[axis], low[axis], tolerance) << "axis " << axis;
        EXPECT_NEAR(box->high[axis], high[axis], tolerance) << "axis " << axis;
    }
}

} // namespace qor::import::testing
