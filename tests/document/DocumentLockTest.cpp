#include "workbench/document/file/DocumentLock.h"

#include "tests/document/DocumentTest.h"

#include <sys/wait.h>
#include <unistd.h>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

class DocumentLockTest : public DocumentTest {};

/// A process that has locked a document, until it is killed.
class OtherProgram {
public:
    explicit OtherProgram(const std::filesystem::path& document) {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        process_ = fork();
        if (process_ == 0) {
            const auto lock = DocumentLock::acquire(document);
            const char sign = lock ? 'y' : 'n';
            if (write(ready[1], &sign, 1) == 1)
                pause();
            _exit(0);
        }
        char sign = 0;
        EXPECT_EQ(read(ready[0], &sign, 1), 1);
        EXPECT_EQ(sign, 'y');
        close(ready[0]);
        close(ready[1]);
    }

    ~OtherProgram() { die(); }

    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;
    OtherProgram(OtherProgram&&) = delete;
    OtherProgram& operator=(OtherProgram&&) = delete;

    void die() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
        }
        process_ = -1;
    }

    [[nodiscard]] pid_t process() const { return process_; }

private:
    pid_t process_ = -1;
};

} // namespace

TEST_F(DocumentLockTest, TheSecondProgramIsToldWhoHasTheDocument) {
    const OtherProgram other(file("a.qor"));
    const auto lock = DocumentLock::acquire(file("a.qor"));
    ASSERT_FALSE(lock);
    EXPECT_NE(lock.failure().text.find("open in another program (process " +
                                       std::to_string(other.process()) + " on "),
              std::string::npos)
        << lock.failure().text;
    EXPECT_TRUE(DocumentLock::isHeld(file("a.qor")));
    EXPECT_FALSE(DocumentLock::isHeldByThisProgram(file("a.qor")));
}

TEST_F(DocumentLockTest, TheLockOfADeadProgramIsTakenOver) {
    OtherProgram other(file("a.qor"));
    other.die();
    EXPECT_EQ(directory.List(), (std::vector<std::string>{".a.qor.lock"})) << "it is still there";
    EXPECT_FALSE(DocumentLock::isHeld(file("a.qor")));
    EXPECT_TRUE(DocumentLock::acquire(file("a.qor")));
}

TEST_F(DocumentLockTest, ItIsGoneWithItsHolder) {
    {
        const auto lock = DocumentLock::acquire(file("a.qor"));
        ASSERT_TRUE(lock);
        const auto second = DocumentLock::acquire(file("a.qor"));
        ASSERT_FALSE(second);
        EXPECT_NE(second.failure().text.find("open in this program already"), std::string::npos);
        EXPECT_TRUE(DocumentLock::isHeldByThisProgram(file("a.qor")));
    }
    EXPECT_TRUE(directory.List().empty());
}

TEST_F(DocumentLockTest, TwoNamesOfADocumentHaveOneLock) {
    writeSample("a.qor");
    std::filesystem::create_symlink("a.qor", file("b.qor"));
    const auto lock = DocumentLock::acquire(file("a.qor"));
    EXPECT_FALSE(DocumentLock::acquire(file("b.qor")));
    EXPECT_FALSE(DocumentLock::acquire(file("x") / ".." / "a.qor"));
}

TEST_F(DocumentLockTest, WhereNoLockCanBeMadeItSaysSo) {
    const auto lock = DocumentLock::acquire(file("nowhere") / "a.qor");
    ASSERT_FALSE(lock);
    EXPECT_EQ(lock.failure().kind, FaultKind::Machine);
}
