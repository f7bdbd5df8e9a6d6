#include "platform/text/QorCatalogLanguages.h"
#include "tests/support/QorScopedVariable.h"

#include <gtest/gtest.h>

namespace {

struct Row {
    const char* language; ///< LANGUAGE, and so on; null is unset
    const char* all;
    const char* messages;
    const char* lang;
    std::vector<std::string> expected;
};

std::optional<QorUnicodeString> Value(const char* iValue) {
    if (iValue == nullptr)
        return std::nullopt;
    return QorUnicodeString(iValue);
}

} // namespace

TEST(QorCatalogLanguages, FollowTheUsualOrder) {
    const Row rows[] = {
        {nullptr, nullptr, nullptr, nullptr, {}},
        {nullptr, nullptr, nullptr, "fr_FR.UTF-8", {"fr_FR", "fr"}},
        {nullptr, nullptr, "de_DE", "fr_FR", {"de_DE", "de"}},
        {nullptr, "it", "de_DE", "fr_FR", {"it"}},
        {nullptr, "", "", "fr_FR", {"fr_FR", "fr"}},
        {nullptr, "C", nullptr, "fr_FR", {}},
        {nullptr, "POSIX", nullptr, "fr_FR", {}},
        {nullptr, nullptr, nullptr, "C.UTF-8", {}},
        {nullptr, nullptr, nullptr, "de_DE.UTF-8@euro", {"de_DE@euro", "de_DE", "de"}},
        {nullptr, nullptr, nullptr, "sr@latin", {"sr@latin", "sr"}},
        {"fr:de", nullptr, nullptr, "it_IT", {"fr", "de"}},
        {"fr_CA:fr", nullptr, nullptr, "it_IT", {"fr_CA", "fr"}},
        {"fr", "C", nullptr, nullptr, {}},
        {"fr", nullptr, nullptr, nullptr, {"fr"}},
        {"", nullptr, nullptr, "it_IT", {"it_IT", "it"}},
        {nullptr, nullptr, nullptr, "en_US.UTF-8", {"en_US", "en"}},
        {"en_GB:fr", nullptr, nullptr, "fr_FR", {"en_GB", "en"}}, // the plain texts are English
        {"de:en:fr", nullptr, nullptr, "fr_FR", {"de", "en"}},
        {nullptr, nullptr, nullptr, "../../etc", {}},
        {"a/b", nullptr, nullptr, "x", {"x"}},
    };
    for (const Row& row : rows) {
        const QorScopedVariable language("LANGUAGE", Value(row.language));
        const QorScopedVariable all("LC_ALL", Value(row.all));
        const QorScopedVariable messages("LC_MESSAGES", Value(row.messages));
        const QorScopedVariable lang("LANG", Value(row.lang));
        EXPECT_EQ(QorFindCatalogLanguages(), row.expected)
            << "LANGUAGE=" << Value(row.language).value_or("-")
            << " LC_ALL=" << Value(row.all).value_or("-")
            << " LANG=" << Value(row.lang).value_or("-");
    }
}
