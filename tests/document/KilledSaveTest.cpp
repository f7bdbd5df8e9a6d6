#include "tests/document/DocumentTest.h"

#include <sys/wait.h>
#include <unistd.h>

#include <random>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

constexpr int rounds = 60;

class KilledSave : public DocumentTest {
protected:
    /// Lets a process save a document again and again, each time with one light more, and kills it
    /// in the middle \p rounds times.
    template <typename Check>
    void killWriters(const std::filesystem::path& path, const Check& check) {
        Product product = sampleProduct();
        product.meshes.push_back(gridMesh(120, 10)); // large enough to be hit in the middle
        const auto document = QorMake<Document>(LoadedDocument{ProductReps(product), {}, {}});
        const useconds_t time = timeOfASave(*document);
        std::minstd_rand random(5);
        for (int round = 0; round < rounds; ++round) {
            const pid_t writer = fork();
            if (writer == 0)
                writeForEver(path, *document);
            usleep(static_cast<useconds_t>(random() % (3 * time)));
            kill(writer, SIGKILL);
            int status = 0;
            ASSERT_EQ(waitpid(writer, &status, 0), writer);
            ASSERT_TRUE(WIFSIGNALED(status));
            check(round);
        }
    }

    /// In microseconds, on this machine as busy as it is.
    useconds_t timeOfASave(const Document& document) const {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_TRUE(writeDocument(file("timed.qor"), document.takeSnapshot()));
        const auto time = std::chrono::steady_clock::now() - start;
        std::filesystem::remove(file("timed.qor"));
        return static_cast<useconds_t>(
            std::chrono::duration_cast<std::chrono::microseconds>(time).count());
    }

    [[noreturn]] static void writeForEver(const std::filesystem::path& path, Document& document) {
        while (true) {
            if (!writeDocument(path, document.takeSnapshot()))
                _exit(1);
            addObject(document, "light");
        }
    }

    static int countLights(const std::filesystem::path& path) {
        Result<LoadedDocument> loaded = readDocument(path);
        EXPECT_TRUE(loaded) << loaded.failure().text;
        if (!loaded)
            return -1;
        return QorMake<Document>(std::move(loaded.value()))->scene()->ListLights().Size();
    }
};

} // namespace

TEST_F(KilledSave, LeavesAWholeDocumentAtEveryMoment) {
    const std::filesystem::path path = writeSample("a.qor");
    killWriters(path, [&](int round) { EXPECT_GE(countLights(path), 1) << round; });
    ASSERT_TRUE(writeDocument(path, sampleDocument()->takeSnapshot()));
    EXPECT_EQ(directory.List(), (std::vector<std::string>{"a.qor"})) << "the next save cleans up";
}

TEST_F(KilledSave, AFirstSaveLeavesNothingOrAWholeDocumentUnderTheName) {
    const std::filesystem::path path = file("new.qor");
    int missing = 0;
    killWriters(path, [&](int /*round*/) {
        if (!std::filesystem::exists(path))
            ++missing;
        else
            EXPECT_GE(countLights(path), 1);
        std::filesystem::remove(path);
    });
    EXPECT_GT(missing, 0) << "no kill came early enough to prove anything";
    EXPECT_LT(missing, rounds) << "no kill came late enough to prove anything";
}
