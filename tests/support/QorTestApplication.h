#pragma once

#include "platform/component/QorMetaObject.h"
#include "platform/system/QorApplication.h"
#include "platform/system/QorClock.h"
#include "platform/system/QorExitHooks.h"
#include "platform/text/QorCatalogs.h"
#include "tests/support/QorManualLoop.h"
#include "tests/support/QorScopedVariable.h"
#include "tests/support/QorTempDirectory.h"
#include "tests/support/QorWarningRecorder.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>

/// A running program for a test: a loop, an application, an empty
/// directory for settings, no catalogs, the language "C", warnings recorded. At the end the
/// delayed destructions and the exit hooks run, and the test fails if an object, and so its
/// subscriptions and extensions, a timer, posted work or a warning that nobody took is left.
/// Member handles of a derived fixture that are still set when TearDown runs count as left: let
/// them go in the test or in an own TearDown that ends with this one's.
///
/// \p Loop is the loop to use: QorTestApplication below is what nearly all tests want.
template <class Loop>
class QorTestApplicationOn : public testing::Test {
protected:
    QorTestApplicationOn() : atStart(CountObjects()) {}

    void TearDown() override {
        loop.RunPosted();
        QorRunExitHooks();
        loop.RunPosted();
        QorSetClock({});
        EXPECT_EQ(loop.CountTimers(), 0U) << "timers are left";
        EXPECT_EQ(loop.CountPosted(), 0U) << "posted work is left";
        ExpectNoObjects();
        for (const std::string& warning : warnings.Take())
            ADD_FAILURE() << "warning that the test did not expect: " << warning;
        QorCatalogs::SetProgramDirectory("");
        QorCatalogs::Clear();
    }

    /// Fails for every class that has more objects than when the test began.
    void ExpectNoObjects() const {
        std::string left;
        for (const auto& [name, count] : CountObjects()) {
            const auto before = atStart.find(name);
            const long more = count - (before == atStart.end() ? 0 : before->second);
            if (more > 0)
                left += "\n  " + std::to_string(more) + " " + name;
        }
        EXPECT_TRUE(left.empty()) << "objects are left:" << left;
    }

    Loop loop;
    std::unique_ptr<QorInteractiveApplication> application =
        std::make_unique<QorInteractiveApplication>(loop);
    QorTempDirectory directory;
    QorWarningRecorder warnings;

private:
    using Counts = std::map<std::string, long>;

    static Counts CountObjects() {
        const auto counts = QorMetaObject::LiveObjects();
        return {counts.begin(), counts.end()};
    }

    Counts atStart;
    QorScopedVariable settings{"XDG_CONFIG_HOME", directory.GetPath("config")};
    QorScopedVariable startupPath{"QorStartupPath", std::nullopt};
    QorScopedVariable language{"LANGUAGE", std::nullopt};
    QorScopedVariable locale{"LC_ALL", "C"};
};

/// The same with a loop whose time the test moves.
class QorTestApplication : public QorTestApplicationOn<QorManualLoop> {};
