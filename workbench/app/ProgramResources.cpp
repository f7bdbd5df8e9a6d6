#include "workbench/app/ProgramResources.h"

#include "platform/system/QorEnvironment.h"
#include "platform/text/QorCatalogs.h"

#include <filesystem>

namespace qor::app {

std::string programResources() {
    std::error_code missing;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", missing);
    if (missing)
        return {};
    const auto prefix = program.parent_path().parent_path();
    return (prefix / "share" / "qorworkbench").string();
}

std::string useProgramResources() {
    constexpr const char* variable = "QorStartupPath";
    const QorUnicodeString directory = programResources();
    QorCatalogs::SetProgramDirectory(directory);
    if (!directory.IsNull() && !QorGetEnv(variable))
        QorSetEnv(variable, directory);
    std::error_code missing;
    if (std::filesystem::is_directory(directory.Str(), missing))
        return {};
    return "the folder \"" + directory.Str() +
           "\" with the program's texts, icons and scenes is missing";
}

} // namespace qor::app
