#include "workbench/imaging/Library.h"

#include "platform/system/QorEnvironment.h"
#include "platform/system/QorPaths.h"

#include <Magick++.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace qor::imaging {

namespace {

// Limits of the first policy file that is found count, and a coder that any of them denies stays
// denied. Ours comes first: it gives the limits below room, and closes the coders that run
// programs, fetch addresses or draw scripts.
constexpr const char* policy = R"(<?xml version="1.0" encoding="UTF-8"?>
<policymap>
  <policy domain="resource" name="memory" value="8GiB"/>
  <policy domain="resource" name="map" value="8GiB"/>
  <policy domain="resource" name="width" value="100KP"/>
  <policy domain="resource" name="height" value="100KP"/>
  <policy domain="resource" name="area" value="1GP"/>
  <policy domain="resource" name="disk" value="0"/>
  <policy domain="delegate" rights="none" pattern="*"/>
  <policy domain="filter" rights="none" pattern="*"/>
  <policy domain="path" rights="none" pattern="@*"/>
  <policy domain="coder" rights="none" pattern="{EPHEMERAL,EPS,EPS2,EPS3,FILE,FTP,HTTP,HTTPS,MSL,MVG,PDF,PS,PS2,PS3,SVG,URL,XPS}"/>
</policymap>
)";

/// A folder with our policy file, for as long as the library reads it.
class PolicyFolder {
public:
    PolicyFolder() {
        std::string name = QorGetTempDirectory().Str() + "/pictures-XXXXXX";
        if (mkdtemp(name.data()) == nullptr)
            return; // then the machine's own policy holds, which is stricter
        folder_ = name;
        std::ofstream(folder_ / "policy.xml") << policy;
        QorSetEnv(variable, QorUnicodeString(name));
    }

    ~PolicyFolder() {
        if (folder_.empty())
            return;
        QorSetEnv(variable, before_);
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    PolicyFolder(const PolicyFolder&) = delete;
    PolicyFolder& operator=(const PolicyFolder&) = delete;
    PolicyFolder(PolicyFolder&&) = delete;
    PolicyFolder& operator=(PolicyFolder&&) = delete;

private:
    QorString variable{"MAGICK_CONFIGURE_PATH"};
    std::optional<QorUnicodeString> before_ = QorGetEnv(variable);
    std::filesystem::path folder_;
};

bool start() {
    const PolicyFolder folder;
    Magick::InitializeMagick(nullptr);
    Magick::ResourceLimits::thread(1);
    Magick::ResourceLimits::width(largestSide);
    Magick::ResourceLimits::height(largestSide);
    Magick::ResourceLimits::area(mostPixels);
    Magick::ResourceLimits::memory(std::uint64_t{8} << 30U);
    Magick::ResourceLimits::map(std::uint64_t{8} << 30U);
    Magick::ResourceLimits::disk(0);
    return true;
}

} // namespace

void prepareLibrary() {
    static const bool once = start();
    static_cast<void>(once);
}

} // namespace qor::imaging
