// The QApplication of all tests in this program, made before the first and kept to the end.
#include "workbench/desktop/Desktop.h"

#include <gtest/gtest.h>

#include <QApplication>

namespace {

class QtEnvironment : public testing::Environment {
public:
    void SetUp() override {
        qor::desktop::Desktop::prepareApplication();
        qt_ = std::make_unique<QApplication>(count_, arguments_);
    }

    void TearDown() override { qt_.reset(); }

private:
    int count_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QApplication> qt_;
};

[[maybe_unused]] auto* const environment = testing::AddGlobalTestEnvironment(new QtEnvironment);

} // namespace
