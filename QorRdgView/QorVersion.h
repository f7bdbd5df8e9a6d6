#pragma once

/// The version of the front-end library, as "major.minor.patch". The text is static.
const char* QorVersion();
