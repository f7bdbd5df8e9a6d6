#include "workbench/document/file/DocumentLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>

namespace qor::document {

namespace fs = std::filesystem;

namespace {

constexpr int attempts = 100; // to open and lock while others remove the file

std::string thisComputer() {
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return name.data();
}

/// Whether the open file is still the one of that name.
bool isStillThere(int descriptor, const fs::path& file) {
    struct stat open {};

    struct stat named {};

    return fstat(descriptor, &open) == 0 && stat(file.c_str(), &named) == 0 &&
           open.st_ino == named.st_ino && open.st_dev == named.st_dev;
}

void writeHolder(int descriptor) {
    const std::string text = std::to_string(getpid()) + " " + thisComputer() + "\n";
    if (ftruncate(descriptor, 0) == 0 &&
        write(descriptor, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        return; // who holds it is for people only; the lock itself needs no text
}

struct Holder {
    long process = 0;
    std::string computer;

    [[nodiscard]] bool isThisProgram() const {
        return process == getpid() && computer == thisComputer();
    }
};

Holder holderOf(const fs::path& file) {
    Holder holder;
    std::ifstream(file) >> holder.process >> holder.computer;
    return holder;
}

Failure heldBy(const fs::path& document, const Holder& holder) {
    if (holder.isThisProgram())
        return {FaultKind::Input, document.string() + ": it is open in this program already"};
    return {FaultKind::Input, document.string() + ": it is open in another program (process " +
                                  std::to_string(holder.process) + " on " + holder.computer + ")"};
}

int openLockFile(const fs::path& file) {
    return open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0644);
}

} // namespace

fs::path DocumentLock::fileOf(const fs::path& document) {
    std::error_code error;
    const fs::path real = fs::weakly_canonical(fs::absolute(document), error);
    const fs::path target = error ? document : real;
    return target.parent_path() / ("." + target.filename().string() + ".lock");
}

Result<std::unique_ptr<DocumentLock>> DocumentLock::acquire(const fs::path& document) {
    const fs::path file = fileOf(document);
    for (int i = 0; i < attempts; ++i) {
        const int descriptor = openLockFile(file);
        if (descriptor < 0)
            return Failure{FaultKind::Machine,
                           document.string() + ": it cannot be locked: " + std::strerror(errno)};
        if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
            close(descriptor);
            return heldBy(document, holderOf(file));
        }
        if (isStillThere(descriptor, file)) {
            writeHolder(descriptor);
            return std::unique_ptr<DocumentLock>(new DocumentLock(file, descriptor));
        }
        close(descriptor); // its last holder removed it meanwhile
    }
    return Failure{FaultKind::Machine, document.string() + ": it cannot be locked"};
}

bool DocumentLock::isHeld(const fs::path& document) {
    const int descriptor = open(fileOf(document).c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool held = flock(descriptor, LOCK_SH | LOCK_NB) != 0;
    close(descriptor);
    return held;
}

bool DocumentLock::isHeldByThisProgram(const fs::path& document) {
    return isHeld(document) && holderOf(fileOf(document)).isThisProgram();
}

DocumentLock::~DocumentLock() {
    unlink(file_.c_str());
    close(descriptor_);
}

} // namespace qor::document
