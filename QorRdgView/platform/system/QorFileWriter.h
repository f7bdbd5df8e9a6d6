#pragma once

#include "platform/component/QorResult.h"

#include <string>
#include <string_view>

/// Writes a file as a whole or not at all: into a temporary file beside the target, then fsync,
/// rename, and fsync of the directory. Until Commit has returned S_OK the target is what it was,
/// whatever happens. A target that is a link is written where it leads; one that exists keeps its
/// access mode, and is refused when it is no regular file. One thread at a time.
class QorFileWriter {
public:
    /// Opens the temporary file, and removes those that a writer of the same target, dead for at
    /// least a minute, has left.
    explicit QorFileWriter(std::string iPath);
    /// Without Commit the temporary file is removed.
    ~QorFileWriter();
    QorFileWriter(const QorFileWriter&) = delete;
    QorFileWriter& operator=(const QorFileWriter&) = delete;

    /// Adds bytes. After a failure further calls do nothing and Commit fails.
    void Write(std::string_view iBytes);

    /// Puts the file in its place. On E_FAIL the target is untouched and GetError says why.
    QorResult Commit();

    /// What failed, in lower case and with the path; empty when nothing has.
    [[nodiscard]] const std::string& GetError() const { return error; }

private:
    void Fail(const char* iWhat, int iError);
    void RemoveStale() const;

    std::string target;
    std::string temporary;
    std::string error;
    int file = -1;
};
