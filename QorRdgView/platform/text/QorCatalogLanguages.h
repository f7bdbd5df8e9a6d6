#pragma once

#include <string>
#include <vector>

/// The folders of translations to look into, best first, from the environment variables as
/// QorCatalogs describes them. English ends the list, for the plain texts are English.
[[nodiscard]] std::vector<std::string> QorFindCatalogLanguages();
