#pragma once

#include <locale.h> // NOLINT(modernize-deprecated-headers): uselocale is POSIX, not in <clocale>

/// While it lives, this thread's printf and strtod write and read numbers as the "C" locale does,
/// whatever the program's locale is.
class QorCLocale {
public:
    QorCLocale() : before(uselocale(Instance())) {}

    ~QorCLocale() { uselocale(before); }

    QorCLocale(const QorCLocale&) = delete;
    QorCLocale& operator=(const QorCLocale&) = delete;

private:
    static locale_t Instance() {
        static const locale_t instance = newlocale(LC_ALL_MASK, "C", nullptr);
        return instance;
    }

    locale_t before;
};
