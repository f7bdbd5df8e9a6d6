#include "tests/import/ImportHarness.h"
#include "tests/import/ShapeModels.h"

#include <regex>
#include <sstream>

using namespace qor::document;
using namespace qor::import::testing;

namespace {

std::string readText(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// A STEP file that holds only an assembly structure of \p definitions, given as parent and child.
std::string structureOnly(int definitions, const std::vector<std::pair<int, int>>& usages) {
    std::ostringstream data;
    for (int i = 100; i < 100 + definitions; ++i)
        data << "#1" << i << "=PRODUCT('p','p','',(#1));\n#2" << i
             << "=PRODUCT_DEFINITION_FORMATION('','',#1" << i << ");\n#3" << i
             << "=PRODUCT_DEFINITION('d','',#2" << i << ",#2);\n";
    int id = 90000000;
    for (const auto& [parent, child] : usages)
        data << "#" << id++ << "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','u','',#3" << 100 + parent
             << ",#3" << 100 + child << ",$);\n";
    return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','',(''),(''),'','',"
           "'');\n"
           "FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));\nENDSEC;\nDATA;\n"
           "#3=APPLICATION_CONTEXT('');\n#1=PRODUCT_CONTEXT('',#3,'mechanical');\n"
           "#2=PRODUCT_DEFINITION_CONTEXT('',#3,'design');\n" +
           data.str() + "ENDSEC;\nEND-ISO-10303-21;\n";
}

void expectRefusal(const std::filesystem::path& file, const std::string& says) {
    const Imported imported = import(file);
    ASSERT_FALSE(imported.result) << says;
    EXPECT_EQ(imported.result.failure().kind, FaultKind::Input);
    EXPECT_NE(imported.result.failure().text.find(says), std::string::npos)
        << imported.result.failure().text;
}

} // namespace

TEST(StepStructure, AnAssemblyThatContainsItselfIsRefused) {
    const QorTempDirectory folder;
    writeText(folder / "circle.step", structureOnly(3, {{0, 1}, {1, 2}, {2, 0}}));
    expectRefusal(folder / "circle.step", "contains itself");
    writeText(folder / "self.step", structureOnly(1, {{0, 0}}));
    expectRefusal(folder / "self.step", "contains itself");
}

TEST(StepStructure, DoublingTheSameSubAssemblySixtyTimesIsRefused) {
    const QorTempDirectory folder;
    std::vector<std::pair<int, int>> usages;
    for (int i = 0; i < 60; ++i)
        usages.insert(usages.end(), {{i, i + 1}, {i, i + 1}});
    writeText(folder / "doubling.step", structureOnly(61, usages));
    expectRefusal(folder / "doubling.step", "five million occurrences");
}

TEST(StepStructure, FiftyThousandLevelsAreRefused) {
    const QorTempDirectory folder;
    std::vector<std::pair<int, int>> usages;
    for (int i = 0; i < 50'000; ++i)
        usages.emplace_back(i, i + 1);
    writeText(folder / "deep.step", structureOnly(50'001, usages));
    expectRefusal(folder / "deep.step", "deeper than 1000 levels");
}

TEST(StepStructure, AStructureWithoutShapesIsRefused) {
    const QorTempDirectory folder;
    writeText(folder / "bare.step", structureOnly(2, {{0, 1}}));
    expectRefusal(folder / "bare.step", "no ");
}

TEST(StepStructure, AnAbsurdUnitIsRefused) {
    const QorTempDirectory folder;
    writeStepMachine(folder / "inch.step", "INCH");
    const std::string text = readText(folder / "inch.step");
    const std::regex factor("LENGTH_MEASURE_WITH_UNIT\\(25\\.4,");
    ASSERT_TRUE(std::regex_search(text, factor));
    for (const char* absurd : {"1.E+30", "0.", "1.E-30"}) {
        writeText(folder / "absurd.step",
                  std::regex_replace(text, factor,
                                     std::string("LENGTH_MEASURE_WITH_UNIT(") + absurd + ","));
        expectRefusal(folder / "absurd.step", "makes no sense");
    }
}

TEST(StepStructure, WhatCannotBeReadAndWhatNamesItAreCounted) {
    const QorTempDirectory folder;
    writeStepMachine(folder / "a.step", "MM");
    std::string text = readText(folder / "a.step");
    const std::size_t color = text.find("DRAUGHTING_PRE_DEFINED_COLOUR(");
    ASSERT_NE(color, std::string::npos);
    text.replace(color, 10, "CLOUDING_X");
    writeText(folder / "a.step", text);
    const Imported imported = import(folder / "a.step");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    ASSERT_FALSE(imported.warnings.empty());
    EXPECT_TRUE(imported.warnings[0].starts_with(
        "it is damaged: 2 of its entities could not be read, the first is #"))
        << imported.warnings[0];
}

TEST(StepStructure, TruncationIsRefusedOrLeavesOutWhatIsMissing) {
    const QorTempDirectory folder;
    writeStepMachine(folder / "whole.step", "MM");
    const std::string whole = readText(folder / "whole.step");
    for (std::size_t length = 0; length < whole.size(); length += whole.size() / 17) {
        writeText(folder / "cut.step", whole.substr(0, length));
        const Imported imported = import(folder / "cut.step");
        const std::string text = imported.result ? std::string() : imported.result.failure().text;
        EXPECT_TRUE(imported.result || text.starts_with((folder / "cut.step").string())) << text;
    }
}
