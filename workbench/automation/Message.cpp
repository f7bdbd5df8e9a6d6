#include "workbench/automation/Message.h"

#include <algorithm>

namespace qor::automation {

namespace {

/// Whether arrays and objects nest deeper than we read. Copying and printing values is recursive,
/// so the depth has to be known before.
bool isTooDeep(std::string_view line) {
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (inString) {
            i += c == '\\' ? 1 : 0;
            inString = c != '"';
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > deepestNesting)
                return true;
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return false;
}

Request wrong(ErrorCode code, const std::string& text, Json id = nullptr) {
    Request request;
    request.id = std::move(id);
    request.error = Error(code, text);
    return request;
}

Message single(Request request) {
    Message message;
    message.requests.push_back(std::move(request));
    return message;
}

std::string describe(const nlohmann::json::exception& error) {
    const std::string_view text = error.what();
    const bool isEncoding = text.find("UTF-8") != std::string_view::npos;
    const std::string what =
        isEncoding ? "the message is not valid UTF-8" : "the message is no JSON";
    if (const auto* parse = dynamic_cast<const nlohmann::json::parse_error*>(&error))
        return what + " (at byte " + std::to_string(parse->byte) + ")";
    return "a number of the message is too large";
}

/// What keeps \p value from being a request, or null.
const char* findFault(const Json& value) {
    const auto version = value.find("jsonrpc");
    if (version == value.end() || *version != "2.0")
        return "\"jsonrpc\" must be \"2.0\"";
    const auto method = value.find("method");
    if (method == value.end() || !method->is_string())
        return "\"method\" must be a text";
    const auto params = value.find("params");
    if (params != value.end() && !params->is_structured())
        return "\"params\" must be an object";
    return nullptr;
}

Request readRequest(Json value) {
    if (!value.is_object())
        return wrong(ErrorCode::invalidRequest, "a request must be an object");
    const auto id = value.find("id");
    if (const char* fault = findFault(value))
        return wrong(ErrorCode::invalidRequest, fault, id != value.end() ? *id : Json());
    Request request;
    request.wantsAnswer = id != value.end();
    if (request.wantsAnswer)
        request.id = std::move(*id);
    request.method = value["method"].get<std::string>();
    const auto params = value.find("params");
    if (params != value.end() && params->is_array() && !params->empty())
        request.error = Error(ErrorCode::invalidParams, "parameters are given by name");
    else if (params != value.end() && params->is_object())
        request.params = std::move(*params);
    return request;
}

} // namespace

Message readMessage(std::string_view line) {
    if (isTooDeep(line))
        return single(wrong(ErrorCode::invalidRequest,
                            "the message is nested deeper than " + std::to_string(deepestNesting)));
    Json value;
    try {
        value = Json::parse(line);
    } catch (const nlohmann::json::exception& error) {
        return single(wrong(ErrorCode::parseError, describe(error)));
    }
    if (!value.is_array())
        return single(readRequest(std::move(value)));
    if (value.empty())
        return single(wrong(ErrorCode::invalidRequest, "the batch is empty"));
    Message batch;
    batch.isBatch = true;
    for (Json& element : value)
        batch.requests.push_back(readRequest(std::move(element)));
    return batch;
}

Message tooLongMessage(std::size_t limit) {
    return single(wrong(ErrorCode::invalidRequest,
                        "the message is longer than " + std::to_string(limit) + " bytes"));
}

Json makeResult(const Json& id, Json result) {
    return {{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}};
}

Json makeError(const Json& id, ErrorCode code, const std::string& text) {
    return {{"jsonrpc", "2.0"},
            {"id", id},
            {"error", {{"code", static_cast<int>(code)}, {"message", text}}}};
}

std::string printLine(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace qor::automation
