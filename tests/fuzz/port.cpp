// The port's messages: any bytes, cut into lines and read as requests; every answer that could be
// given to them is printed.
#include "workbench/automation/LineReader.h"
#include "workbench/automation/Message.h"
#include "workbench/automation/Method.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace qor::automation;

constexpr std::size_t limit = 4096;

const Method& anyMethod() {
    static const Method method{.name = "any",
                               .params = {{"text", ParamKind::text},
                                          optional("number", ParamKind::number),
                                          optional("integer", ParamKind::integer),
                                          optional("numbers", ParamKind::numbers)},
                               .run = {}};
    return method;
}

/// What a port would send for the request.
std::string answer(const Request& request) {
    try {
        if (request.error)
            throw Error(*request.error);
        checkParams(anyMethod(), request.params);
        return printLine(makeResult(request.id, request.params));
    } catch (const Error& error) {
        return printLine(makeError(request.id, error.code(), error.what()));
    }
}

/// An answer must be one line that is JSON again and holds the id.
void check(const Request& request) {
    const std::string line = answer(request);
    const Json read = Json::parse(line);
    if (line.find('\n') != line.size() - 1 || read.at("id") != request.id)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    LineReader reader(limit);
    reader.add({reinterpret_cast<const char*>(data), size});
    reader.finish();
    while (const auto line = reader.next()) {
        if (line->text.size() > limit)
            std::abort();
        const Message message = line->isTooLong ? tooLongMessage(limit) : readMessage(line->text);
        if (message.requests.empty())
            std::abort();
        for (const Request& request : message.requests)
            check(request);
    }
    return 0;
}
