#include "platform/system/QorSettingRepository.h"

#include "tests/support/DecimalComma.h"
#include "tests/support/QorTestApplication.h"

#include <array>

namespace {

constexpr const char* filePath = "config/qorworkbench/Test.settings";

class QorSettingRepositoryTest : public QorTestApplication {
protected:
    static QorVar<QorSettingRepository> Open() {
        return QorSettingRepository::GetRepository("Test");
    }

    /// The repository as the next start of the program finds it.
    static QorVar<QorSettingRepository> Reopen() {
        QorSettingRepository::ForgetAll();
        return Open();
    }
};

} // namespace

TEST_F(QorSettingRepositoryTest, IsSharedByName) {
    EXPECT_EQ(Open(), Open());
    EXPECT_NE(Open(), QorSettingRepository::GetRepository("Other"));
    EXPECT_EQ(Open()->GetPath(), directory.GetPath(filePath));
    EXPECT_STREQ(Open()->IsA(), "QorSettingRepository");
    EXPECT_EQ(Open()->GetName(), "Test");
}

TEST_F(QorSettingRepositoryTest, OpeningWritesNothing) {
    EXPECT_TRUE(Open());
    EXPECT_TRUE(directory.List().empty());
}

TEST_F(QorSettingRepositoryTest, GivesBackWhatWasSaved) {
    {
        const DecimalComma german;
        const auto repository = Open();
        const int quality = 2;
        const std::array color{1.0F, 0.2F, 1.0F / 3};
        const double exact = 0.1 + 0.2;
        EXPECT_TRUE(repository->WriteSetting("Quality", &quality));
        EXPECT_TRUE(repository->WriteSetting("Color", color.data(), 3));
        EXPECT_TRUE(repository->WriteSetting("Exact", &exact));
        EXPECT_TRUE(repository->WriteSetting("Image", QorString("größer.jpg")));
        EXPECT_EQ(repository->SaveRepository(), S_OK);
    }
    EXPECT_EQ(directory.Read(filePath), "# QorWorkbench settings, version 1\n"
                                        "Quality = 2\n"
                                        "Color = 1.0, 0.2, 0.33333334\n"
                                        "Exact = 0.30000000000000004\n"
                                        "Image = \"größer.jpg\"\n");
    const DecimalComma german;
    const auto repository = Reopen();
    int quality = 0;
    std::array<float, 3> color{};
    double exact = 0;
    QorString image;
    EXPECT_TRUE(repository->ReadSetting("Quality", &quality));
    EXPECT_TRUE(repository->ReadSetting("Color", color.data(), 3));
    EXPECT_TRUE(repository->ReadSetting("Exact", &exact));
    EXPECT_TRUE(repository->ReadSetting("Image", &image));
    EXPECT_EQ(quality, 2);
    EXPECT_EQ(color, (std::array{1.0F, 0.2F, 1.0F / 3}));
    EXPECT_EQ(exact, 0.1 + 0.2);
    EXPECT_EQ(image, "größer.jpg");
    EXPECT_EQ(directory.List("config/qorworkbench"), std::vector<std::string>{"Test.settings"});
}

TEST_F(QorSettingRepositoryTest, ConvertsNumbers) {
    const auto repository = Open();
    const std::array<double, 4> numbers{299.7, -299.7, 3e9, 1e300};
    const int integer = 7;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        repository->WriteSetting(QorString("N") + std::to_string(i), &numbers[i]);
    repository->WriteSetting("I", &integer);
    int asInteger = -1;
    float asFloat = -1;
    double asDouble = -1;
    EXPECT_TRUE(repository->ReadSetting("N0", &asInteger));
    EXPECT_EQ(asInteger, 299);
    EXPECT_TRUE(repository->ReadSetting("N1", &asInteger));
    EXPECT_EQ(asInteger, -299);
    EXPECT_FALSE(repository->ReadSetting("N2", &asInteger)); // no int is that large
    EXPECT_EQ(asInteger, -299);
    EXPECT_TRUE(repository->ReadSetting("N2", &asFloat));
    EXPECT_EQ(asFloat, 3e9F);
    EXPECT_FALSE(repository->ReadSetting("N3", &asFloat));
    EXPECT_TRUE(repository->ReadSetting("I", &asFloat));
    EXPECT_EQ(asFloat, 7.0F);
    EXPECT_TRUE(repository->ReadSetting("I", &asDouble));
    EXPECT_EQ(asDouble, 7.0);
}

TEST_F(QorSettingRepositoryTest, AWrongCountOrKindReadsAsAbsent) {
    const auto repository = Open();
    const std::array values{1, 2, 3};
    repository->WriteSetting("Three", values.data(), 3);
    repository->WriteSetting("Text", QorUnicodeString("text"));
    std::array<int, 4> read{9, 9, 9, 9};
    QorString text("before");
    for (const int count : {-1, 0, 1, 2, 4})
        EXPECT_FALSE(repository->ReadSetting("Three", read.data(), count)) << count;
    EXPECT_FALSE(repository->ReadSetting("Missing", read.data()));
    EXPECT_FALSE(repository->ReadSetting("Text", read.data()));
    EXPECT_FALSE(repository->ReadSetting("Three", &text));
    EXPECT_FALSE(repository->ReadSetting("Missing", &text));
    EXPECT_FALSE(repository->ReadSetting("Three", static_cast<int*>(nullptr), 3));
    EXPECT_EQ(read, (std::array{9, 9, 9, 9}));
    EXPECT_EQ(text, "before");
    EXPECT_TRUE(repository->ReadSetting("Three", read.data(), 3));
    EXPECT_EQ(read, (std::array{1, 2, 3, 9}));
}

TEST_F(QorSettingRepositoryTest, WritingReplacesWhateverWasThere) {
    const auto repository = Open();
    const int number = 1;
    repository->WriteSetting("A", QorString("text"));
    repository->WriteSetting("A", &number);
    int read = 0;
    EXPECT_TRUE(repository->ReadSetting("A", &read));
    EXPECT_EQ(read, 1);
    EXPECT_FALSE(repository->WriteSetting("no key", &number));
    EXPECT_FALSE(repository->WriteSetting("A", &number, 0));
    EXPECT_FALSE(repository->WriteSetting("A", static_cast<const float*>(nullptr), 1));
    EXPECT_TRUE(repository->SetSetting("B", std::string("x")));
    ASSERT_NE(repository->FindSetting("B"), nullptr);
    EXPECT_EQ(*repository->FindSetting("B"), QorSettingValue(std::string("x")));
}

TEST_F(QorSettingRepositoryTest, WritingChangesTheRunningProgramOnly) {
    const int number = 5;
    Open()->WriteSetting("A", &number);
    int read = 0;
    EXPECT_TRUE(Open()->ReadSetting("A", &read)); // kept though nobody held it
    EXPECT_FALSE(Reopen()->ReadSetting("A", &read));
}

TEST_F(QorSettingRepositoryTest, ALockedOneCannotBeOpened) {
    const auto held = Open();
    QorSettingRepository::SetLocked("Test", true);
    EXPECT_FALSE(Open());
    EXPECT_TRUE(QorSettingRepository::GetRepository("Other"));
    const int number = 5;
    EXPECT_TRUE(held->WriteSetting("A", &number)); // an opened one goes on
    EXPECT_EQ(held->SaveRepository(), S_OK);
    QorSettingRepository::SetLocked("Test", false);
    EXPECT_EQ(Open(), held);
}

TEST_F(QorSettingRepositoryTest, ANameMustBeAFiles) {
    for (const char* name : {"", ".", "..", "../x", "/etc/passwd", ".hidden"})
        EXPECT_FALSE(QorSettingRepository::GetRepository(name)) << name;
    EXPECT_FALSE(QorSettingRepository::GetRepository(QorString(std::string("a\0b", 3))));
    EXPECT_FALSE(QorSettingRepository::GetRepository(QorString(std::string(300, 'x'))));
}

TEST_F(QorSettingRepositoryTest, FollowsTheUsersDirectories) {
    const QorScopedVariable home("HOME", directory.GetPath("home"));
    for (const auto& value : {std::optional<QorUnicodeString>(), {"relative/path"}, {""}}) {
        const QorScopedVariable config("XDG_CONFIG_HOME", value);
        EXPECT_EQ(Reopen()->GetPath(),
                  directory.GetPath("home/.config/qorworkbench/Test.settings"));
    }
}

TEST_F(QorSettingRepositoryTest, SavesToAnotherFileWhenAsked) {
    const int number = 5;
    Open()->WriteSetting("A", &number);
    EXPECT_EQ(Open()->SaveRepository(directory.GetPath("copy").c_str()), S_OK);
    EXPECT_EQ(directory.Read("copy"), "# QorWorkbench settings, version 1\nA = 5\n");
    EXPECT_EQ(directory.Read(filePath), "");
}
