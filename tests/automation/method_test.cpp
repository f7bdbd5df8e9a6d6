// The check of parameters against a method's table.
#include "workbench/automation/Error.h"
#include "workbench/automation/Method.h"

#include <gtest/gtest.h>

namespace qor::automation {

namespace {

/// What is wrong with \p params; empty when nothing is.
std::string faultOf(const Method& method, const Json& params) {
    try {
        checkParams(method, params);
    } catch (const Error& error) {
        EXPECT_EQ(error.code(), ErrorCode::invalidParams);
        return error.what();
    }
    return "";
}

Method taking(ParamKind kind) {
    return {.name = "test", .params = {{"p", kind}}, .run = {}};
}

TEST(Method, TakesValuesOfTheKindsInItsTable) {
    struct Row {
        ParamKind kind;
        std::vector<Json> good;
        std::vector<Json> bad;
    };

    const Json list = Json::array();
    const std::vector<Row> rows = {
        {ParamKind::text, {"", "a"}, {1, nullptr, true, list, std::string("a\0b", 3)}},
        {ParamKind::textOrNull, {"a", nullptr}, {1, false, list}},
        {ParamKind::number, {1, -1.5, 1e300, 0}, {"1", nullptr, true, list}},
        {ParamKind::integer, {1, -3, 3.0, 2147483647}, {1.5, 2147483648.0, 1e300, "1", nullptr}},
        {ParamKind::boolean, {true, false}, {0, 1, "true", nullptr}},
        {ParamKind::numbers, {list, {1, 2.5}}, {1, {1, "2"}, {nullptr}}},
        {ParamKind::list, {list, {1, "2"}}, {1, "a", Json::object()}},
        {ParamKind::any, {1, "a", nullptr, list}, {}},
    };
    for (const Row& row : rows) {
        const Method method = taking(row.kind);
        for (const Json& value : row.good)
            EXPECT_EQ(faultOf(method, {{"p", value}}), "") << value;
        for (const Json& value : row.bad)
            EXPECT_NE(faultOf(method, {{"p", value}}), "") << value;
    }
}

TEST(Method, SaysWhichParameterIsWrong) {
    const Method method{.name = "a.b",
                        .params = {{"must", ParamKind::text}, optional("may", ParamKind::number)},
                        .run = {}};
    EXPECT_EQ(faultOf(method, {{"must", ""}}), "");
    EXPECT_EQ(faultOf(method, {{"must", ""}, {"may", 1}}), "");
    EXPECT_EQ(faultOf(method, {{"may", 1}}), R"(parameter "must" is missing)");
    EXPECT_EQ(faultOf(method, {{"must", 1}}), R"(parameter "must" must be a text)");
    EXPECT_EQ(faultOf(method, {{"must", ""}, {"may", nullptr}}),
              R"(parameter "may" must be a number)");
    EXPECT_EQ(faultOf(method, {{"must", ""}, {"other", 1}}), R"(a.b takes no parameter "other")");
}

TEST(Method, LetsFurtherParametersThroughWhenItSaysSo) {
    Method method = taking(ParamKind::text);
    method.takesAnyParams = true;
    EXPECT_EQ(faultOf(method, {{"p", ""}, {"other", 1}}), "");
    EXPECT_NE(faultOf(method, {{"other", 1}}), "");
}

} // namespace

} // namespace qor::automation
