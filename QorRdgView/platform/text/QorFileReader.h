#pragma once

#include <string>

/// Reads a whole regular file. 0, or the errno that says why not: EISDIR for a directory, EINVAL
/// for a device, pipe or socket (none is waited for), EFBIG for more than 16 MiB.
[[nodiscard]] int QorReadFile(const std::string& iPath, std::string& oBytes);
