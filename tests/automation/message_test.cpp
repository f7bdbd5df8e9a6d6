// JSON-RPC 2.0: what a line says, and what is wrong with it.
#include "workbench/automation/Message.h"

#include <gtest/gtest.h>

namespace qor::automation {

namespace {

struct Row {
    std::string line;
    int error; ///< of the first request, 0 for none
    Json id;
};

int errorOf(const Request& request) {
    return request.error ? static_cast<int>(request.error->code()) : 0;
}

const std::vector<Row>& rows() {
    static const std::vector<Row> all = {
        {R"({"jsonrpc":"2.0","id":1,"method":"a"})", 0, 1},
        {R"({"jsonrpc":"2.0","id":"x","method":"a","params":{}})", 0, "x"},
        {R"({"jsonrpc":"2.0","id":null,"method":"a"})", 0, nullptr},
        {R"({"jsonrpc":"2.0","id":1.5,"method":"a","params":[]})", 0, 1.5},
        {R"({"jsonrpc":"2.0","id":[1,{"b":2}],"method":"a"})", 0, {1, {{"b", 2}}}},
        {R"({"jsonrpc":"2.0","id":true,"method":"a","more":1})", 0, true},
        {"\xEF\xBB\xBF{\"jsonrpc\":\"2.0\",\"id\":7,\"method\":\"a\"}", 0, 7},
        {"{", -32700, nullptr},
        {"", -32700, nullptr},
        {R"({"jsonrpc":"2.0","id":1,"method":"a"}})", -32700, nullptr},
        {R"({"jsonrpc":"2.0","id":1,"method":"a"} {})", -32700, nullptr},
        {"{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"\xff\"}", -32700, nullptr},
        {"\xff\xfe", -32700, nullptr},
        {R"({"jsonrpc":"2.0","id":1e999,"method":"a"})", -32700, nullptr},
        {R"({"jsonrpc":"2.0","id":1,"method":"\ud800"})", -32700, nullptr},
        {"1", -32600, nullptr},
        {"null", -32600, nullptr},
        {"{}", -32600, nullptr},
        {"[]", -32600, nullptr},
        {"[1]", -32600, nullptr},
        {R"({"jsonrpc":"1.0","id":1,"method":"a"})", -32600, 1},
        {R"({"jsonrpc":2.0,"id":1,"method":"a"})", -32600, 1},
        {R"({"id":"here","method":"a"})", -32600, "here"},
        {R"({"jsonrpc":"2.0","id":1})", -32600, 1},
        {R"({"jsonrpc":"2.0","id":1,"method":1})", -32600, 1},
        {R"({"jsonrpc":"2.0","id":1,"method":"a","params":5})", -32600, 1},
        {R"({"jsonrpc":"2.0","id":1,"method":"a","params":null})", -32600, 1},
        {R"({"jsonrpc":"2.0","id":1,"method":"a","params":[1]})", -32602, 1},
    };
    return all;
}

TEST(Message, IsReadOrRefusedWithTheExactCode) {
    for (const Row& row : rows()) {
        const Message message = readMessage(row.line);
        ASSERT_EQ(message.requests.size(), 1U) << row.line;
        EXPECT_EQ(errorOf(message.requests.front()), row.error) << row.line;
        EXPECT_EQ(message.requests.front().id, row.id) << row.line;
        EXPECT_TRUE(message.requests.front().wantsAnswer) << row.line;
        EXPECT_TRUE(message.requests.front().params.is_object()) << row.line;
    }
}

TEST(Message, WithoutAnIdWantsNoAnswer) {
    const Message message = readMessage(R"({"jsonrpc":"2.0","method":"a"})");
    EXPECT_FALSE(message.requests.front().wantsAnswer);
}

TEST(Message, HoldsTheRequestsOfABatchInOrder) {
    const Message message = readMessage(
        R"([{"jsonrpc":"2.0","id":1,"method":"a"}, 2, {"jsonrpc":"2.0","method":"b"}])");
    ASSERT_EQ(message.requests.size(), 3U);
    EXPECT_TRUE(message.isBatch);
    EXPECT_EQ(message.requests[0].method, "a");
    EXPECT_EQ(errorOf(message.requests[1]), -32600);
    EXPECT_TRUE(message.requests[1].wantsAnswer);
    EXPECT_FALSE(message.requests[2].wantsAnswer);
}

std::string nested(std::size_t depth) {
    return R"({"jsonrpc":"2.0","method":"a","id":)" + std::string(depth, '[') +
           std::string(depth, ']') + "}";
}

TEST(Message, MayNestOnlySoDeep) {
    EXPECT_EQ(errorOf(readMessage(nested(deepestNesting - 1)).requests.front()), 0);
    EXPECT_EQ(errorOf(readMessage(nested(deepestNesting)).requests.front()), -32600);
    EXPECT_EQ(errorOf(readMessage(std::string(10'000'000, '[')).requests.front()), -32600);
    const std::string brackets(1000, '[');
    const std::string inText = R"({"jsonrpc":"2.0","id":"\")" + brackets + R"(","method":"a"})";
    EXPECT_EQ(errorOf(readMessage(inText).requests.front()), 0);
}

TEST(Message, IsPrintedOnOneLineInUtf8) {
    EXPECT_EQ(printLine(makeResult(1, "a\nb")),
              "{\"id\":1,\"jsonrpc\":\"2.0\",\"result\":\"a\\nb\"}\n");
    EXPECT_EQ(printLine(makeResult(1, "\xff")),
              "{\"id\":1,\"jsonrpc\":\"2.0\",\"result\":\"\xEF\xBF\xBD\"}\n");
    EXPECT_EQ(printLine(makeError("x", ErrorCode::blocked, "why")),
              R"({"error":{"code":-32004,"message":"why"},"id":"x","jsonrpc":"2.0"})"
              "\n");
}

TEST(Message, SaysHowLongALineMayBe) {
    const Message message = tooLongMessage(16);
    EXPECT_EQ(errorOf(message.requests.front()), -32600);
    EXPECT_STREQ(message.requests.front().error->what(), "the message is longer than 16 bytes");
}

} // namespace

} // namespace qor::automation
