#include "platform/system/QorSettingRepository.h"
#include "tests/support/QorTestApplication.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <random>

// No setting is ever lost: damaged files, unreadable files, failed and killed saves.

namespace {

constexpr const char* folder = "config/qorworkbench";
constexpr const char* filePath = "config/qorworkbench/Test.settings";
constexpr int settingCount = 500;

class QorSettingSafety : public QorTestApplication {
protected:
    using Lines = std::vector<std::string>;

    static QorVar<QorSettingRepository> Reopen() {
        QorSettingRepository::ForgetAll();
        return QorSettingRepository::GetRepository("Test");
    }
};

QorString Key(int iNumber) {
    return QorString("Key" + std::to_string(iNumber));
}

/// Saves a repository over and over, all settings of one save alike; tells of each save.
[[noreturn]] void SaveForEver(int iTell) {
    const auto repository = QorSettingRepository::GetRepository("Test");
    for (int round = 1;; ++round) {
        for (int i = 0; i < settingCount; ++i)
            repository->WriteSetting(Key(i), &round);
        repository->SaveRepository();
        static_cast<void>(!write(iTell, "x", 1));
    }
}

/// Lets a child save a few times and kills it somewhere on the way.
void KillWhileItSaves(unsigned long iSpins) {
    std::array<int, 2> saved{};
    ASSERT_EQ(pipe(saved.data()), 0);
    const pid_t child = fork();
    if (child == 0)
        SaveForEver(saved[1]);
    char byte = 0;
    EXPECT_EQ(read(saved[0], &byte, 1), 1);
    for (unsigned long spin = 0; spin < iSpins; ++spin)
        std::atomic_signal_fence(std::memory_order_seq_cst); // so that the loop is not left out
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(saved[0]);
    close(saved[1]);
}

} // namespace

TEST_F(QorSettingSafety, ADamagedFileIsSetAsideAndItsGoodLinesCount) {
    const std::string damaged = "Quality = 2\nCustomRes\xFF\nUnit = 1\n";
    directory.Write(filePath, damaged);
    const auto repository = Reopen();
    ASSERT_TRUE(repository);
    int value = 0;
    EXPECT_TRUE(repository->ReadSetting("Quality", &value));
    EXPECT_EQ(value, 2);
    EXPECT_TRUE(repository->ReadSetting("Unit", &value));
    const Lines said = warnings.Take();
    ASSERT_EQ(said.size(), 2U);
    EXPECT_NE(said[0].find(directory.GetPath(filePath) + ", line 2: "), std::string::npos)
        << said[0];
    EXPECT_NE(said[1].find("Test.settings.damaged-1"), std::string::npos) << said[1];
    EXPECT_EQ(directory.Read("config/qorworkbench/Test.settings.damaged-1"), damaged);
    EXPECT_EQ(directory.Read(filePath), damaged); // until the next save
    EXPECT_EQ(repository->SaveRepository(), S_OK);
    EXPECT_EQ(directory.Read(filePath),
              "# QorWorkbench settings, version 1\nQuality = 2\nUnit = 1\n");
    EXPECT_TRUE(Reopen());
    EXPECT_TRUE(warnings.Take().empty());
}

TEST_F(QorSettingSafety, TheSameDamageIsSetAsideOnceAndAnotherBesideIt) {
    directory.Write(filePath, "broken\n");
    EXPECT_TRUE(Reopen());
    EXPECT_TRUE(Reopen());
    EXPECT_EQ(directory.List(folder), (Lines{"Test.settings", "Test.settings.damaged-1"}));
    directory.Write(filePath, "broken otherwise\n");
    EXPECT_TRUE(Reopen());
    EXPECT_EQ(directory.Read("config/qorworkbench/Test.settings.damaged-1"), "broken\n");
    EXPECT_EQ(directory.Read("config/qorworkbench/Test.settings.damaged-2"), "broken otherwise\n");
    EXPECT_FALSE(warnings.Take().empty());
}

TEST_F(QorSettingSafety, AnUnreadableFileIsNeverReplaced) {
    std::filesystem::create_directories(directory.GetPath(filePath)); // even root cannot read it
    directory.Write("config/qorworkbench/Test.settings/inside", "precious");
    const auto repository = Reopen();
    ASSERT_TRUE(repository);
    const int value = 3;
    EXPECT_TRUE(repository->WriteSetting("A", &value)); // for this session
    int read = 0;
    EXPECT_TRUE(repository->ReadSetting("A", &read));
    EXPECT_EQ(repository->SaveRepository(), E_FAIL);
    EXPECT_EQ(directory.Read("config/qorworkbench/Test.settings/inside"), "precious");
    std::filesystem::remove_all(directory.GetPath(filePath));
    directory.Write(filePath, "A = 1\n");
    EXPECT_EQ(repository->SaveRepository(), E_FAIL); // it was never merged with what is there
    EXPECT_EQ(directory.Read(filePath), "A = 1\n");
    EXPECT_EQ(warnings.Take().size(), 3U);
}

TEST_F(QorSettingSafety, ASaveThatFailsSaysSoAndKeepsTheSettings) {
    directory.Write("config", "a file where the folder should be");
    const auto repository = Reopen();
    ASSERT_TRUE(repository);
    const int value = 3;
    repository->WriteSetting("A", &value);
    EXPECT_EQ(repository->SaveRepository(), E_FAIL);
    const Lines said = warnings.Take();
    ASSERT_EQ(said.size(), 1U);
    EXPECT_NE(said[0].find(directory.GetPath(filePath)), std::string::npos) << said[0];
    std::filesystem::remove(directory.GetPath("config"));
    EXPECT_EQ(repository->SaveRepository(), S_OK);
    EXPECT_EQ(directory.Read(filePath), "# QorWorkbench settings, version 1\nA = 3\n");
}

TEST_F(QorSettingSafety, ALaterVersionsFileIsKeptWhole) {
    const std::string later = "# QorWorkbench settings, version 7\n[new]\nA = 1\nB <- {1}\n";
    directory.Write(filePath, later);
    EXPECT_EQ(Reopen()->SaveRepository(), S_OK);
    EXPECT_EQ(directory.Read(filePath), later);
}

TEST_F(QorSettingSafety, AKilledSaveLeavesTheOldOrTheNewSettings) {
    std::mt19937 random(7); // NOLINT(cert-msc51-cpp): the same moments every time
    for (int round = 0; round < 40; ++round) {
        KillWhileItSaves(random() % 2'000'000);
        const auto repository = Reopen();
        ASSERT_TRUE(repository);
        int first = 0;
        ASSERT_TRUE(repository->ReadSetting(Key(0), &first));
        for (int i = 0; i < settingCount; ++i) {
            int value = 0;
            ASSERT_TRUE(repository->ReadSetting(Key(i), &value)) << i;
            ASSERT_EQ(value, first) << "settings of two saves are mixed";
        }
        ASSERT_TRUE(warnings.Take().empty()) << "the file was damaged";
    }
}
