#include "platform/text/QorPathList.h"

std::vector<std::string> QorSplitPathList(std::string_view iList) {
    std::vector<std::string> directories;
    while (!iList.empty()) {
        const std::size_t end = iList.find(':');
        const std::string_view directory = iList.substr(0, end);
        if (!directory.empty())
            directories.emplace_back(directory);
        iList.remove_prefix(end == std::string_view::npos ? iList.size() : end + 1);
    }
    return directories;
}
