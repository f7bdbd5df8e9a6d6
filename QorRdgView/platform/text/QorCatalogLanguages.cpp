#include "platform/text/QorCatalogLanguages.h"

#include "platform/text/QorPathList.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

namespace {

std::string_view GetVariable(const char* iName) {
    const char* value = std::getenv(iName);
    return value != nullptr ? value : "";
}

/// The locale of messages; empty when none is set.
std::string_view GetLocale() {
    constexpr std::array names{"LC_ALL", "LC_MESSAGES", "LANG"};
    for (const char* name : names)
        if (const std::string_view value = GetVariable(name); !value.empty())
            return value;
    return {};
}

void Add(std::vector<std::string>& ioLanguages, std::string_view iLanguage) {
    // The name becomes part of a path.
    if (iLanguage.empty() || iLanguage.front() == '.' || iLanguage.find('/') != iLanguage.npos)
        return;
    if (std::find(ioLanguages.begin(), ioLanguages.end(), iLanguage) == ioLanguages.end())
        ioLanguages.emplace_back(iLanguage);
}

/// Adds fr_CA@x, fr_CA and fr for "fr_CA.UTF-8@x". False when it is English or no language, after
/// which no other counts.
bool AddForms(std::vector<std::string>& ioLanguages, std::string_view iLocale) {
    const std::size_t modifierAt = std::min(iLocale.find('@'), iLocale.size());
    const std::string_view modifier = iLocale.substr(modifierAt);
    const std::string_view place =
        iLocale.substr(0, std::min(iLocale.find_first_of(".@"), iLocale.size()));
    const std::string_view language = place.substr(0, std::min(place.find('_'), place.size()));
    if (place == "C" || place == "POSIX")
        return false;
    if (!modifier.empty())
        Add(ioLanguages, std::string(place).append(modifier));
    Add(ioLanguages, place);
    Add(ioLanguages, language);
    return language != "en";
}

} // namespace

std::vector<std::string> QorFindCatalogLanguages() {
    std::vector<std::string> languages;
    const std::string_view locale = GetLocale();
    if (locale == "C" || locale == "POSIX")
        return languages;
    for (const std::string& language : QorSplitPathList(GetVariable("LANGUAGE")))
        if (!AddForms(languages, language))
            return languages;
    if (languages.empty())
        AddForms(languages, locale);
    return languages;
}
