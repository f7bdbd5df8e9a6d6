#pragma once

#include <clocale>
#include <cstdlib>
#include <locale>
#include <stdexcept>

/// While it lives, the process runs in a German locale, where a number is written "1,5": in C
/// (printf, strtod) and, for streams made meanwhile, in C++. Throws if that locale cannot be had,
/// for a test would then prove nothing. Not for use while other threads format numbers.
class DecimalComma {
public:
    DecimalComma() {
        setenv("LOCPATH", QOR_TEST_LOCALES, 1);
        if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr)
            throw std::runtime_error("no locale de_DE.UTF-8 in " QOR_TEST_LOCALES);
        before_ = std::locale::global(std::locale("de_DE.UTF-8"));
    }

    ~DecimalComma() {
        std::locale::global(before_);
        std::setlocale(LC_ALL, "C");
        unsetenv("LOCPATH");
    }

    DecimalComma(const DecimalComma&) = delete;
    DecimalComma& operator=(const DecimalComma&) = delete;

private:
    std::locale before_;
};
