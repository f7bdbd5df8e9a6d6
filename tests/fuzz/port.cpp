// Any bytes from a client of the port: lines come out the same however the bytes arrive, every line
// becomes requests that can be answered, and an answer is one line.
#include "tests/fuzz/Require.h"
#include "workbench/automation/LineReader.h"
#include "workbench/automation/Message.h"

#include <cstddef>
#include <cstdint>

using namespace qor::automation;

namespace {

constexpr std::size_t limit = 512;

std::vector<LineReader::Line> cut(std::string_view bytes, std::size_t step) {
    LineReader reader(limit);
    std::vector<LineReader::Line> lines;
    const auto take = [&] {
        while (auto line = reader.next())
            lines.push_back(std::move(*line));
    };
    for (; !bytes.empty(); bytes.remove_prefix(std::min(step, bytes.size()))) {
        reader.add(bytes.substr(0, step));
        take();
    }
    reader.finish();
    take();
    return lines;
}

void answer(const Request& request) {
    require(request.params.is_object(), "parameters are an object");
    const std::string line = printLine(
        request.error ? makeError(request.id, request.error->code(), request.error->what())
                      : makeResult(request.id, request.params));
    require(line.find('\n') == line.size() - 1, "an answer is one line");
    require(Json::accept(line), "an answer is JSON");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto lines = cut(bytes, size + 1);
    const auto slowly = cut(bytes, 3);
    require(lines.size() == slowly.size(), "as many lines however they arrive");
    for (std::size_t i = 0; i < lines.size(); ++i) {
        require(lines[i].isTooLong == slowly[i].isTooLong && lines[i].text == slowly[i].text,
                "the same lines however they arrive");
        require(lines[i].text.size() <= limit, "no line is longer than the limit");
        const Message message = readMessage(lines[i].text);
        require(!message.requests.empty(), "a line holds a request");
        for (const Request& request : message.requests)
            answer(request);
    }
    return 0;
}
