#pragma once

#include <cstddef>
#include <string>

namespace qor::import {

/// What a crash of this process still says: its last line, which names the model. A library that
/// reads a damaged file may follow a reference that leads nowhere; then this line goes out and the
/// process ends as after any failure. Not built into a sanitizer's program, which wants to see
/// crashes. Importing thread only.
class CrashLine {
public:
    /// From now on a crash writes to \p descriptor and ends the process with \p exitCode.
    CrashLine(int descriptor, int exitCode);
    ~CrashLine();
    CrashLine(const CrashLine&) = delete;
    CrashLine& operator=(const CrashLine&) = delete;
    CrashLine(CrashLine&&) = delete;
    CrashLine& operator=(CrashLine&&) = delete;

    /// The line for a crash that comes now, with its line end. Too long ones are cut.
    void set(const std::string& line);
};

} // namespace qor::import
