#pragma once

#include "platform/dialog/QorDlgDialog.h"
#include "platform/system/QorQueueLoop.h"
#include "tests/support/QorTestApplication.h"
#include "tests/support/automation/PortClient.h"
#include "workbench/automation/Error.h"
#include "workbench/automation/Json.h"
#include "workbench/automation/Port.h"

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace qor::automation {

/// An error code as a client gets it.
constexpr int code(ErrorCode error) {
    return static_cast<int>(error);
}

/// A port in this process. The test's thread turns the loop, as a program does; clients are on
/// threads of their own and touch nothing but their sockets.
class PortTest : public QorTestApplicationOn<QorQueueLoop> {
protected:
    using Scenario = std::function<void(PortClient& port)>;

    void SetUp() override { openPort({}); }

    void TearDown() override {
        port.reset();
        for (QorDlgDialog* dialog : dialogs)
            dialog->RequestDelayedDestruction();
        dialogs.clear();
        QorTestApplicationOn::TearDown();
    }

    void openPort(PortOptions options) {
        port.reset();
        options.name = "test";
        options.version = "1.2.3";
        port = std::make_unique<Port>(loop, path(), std::move(options));
        ASSERT_EQ(port->error(), "");
    }

    [[nodiscard]] std::string path() const { return directory.GetPath("port"); }

    /// Turns the loop until \p scenario, on a thread of its own, is done.
    void run(const std::function<void()>& scenario) {
        std::atomic<bool> isDone = false;
        std::thread thread([&] {
            try {
                scenario();
            } catch (const std::exception& error) {
                ADD_FAILURE() << error.what();
            }
            isDone = true;
            loop.Post([] {});
        });
        while (!isDone)
            loop.RunOneTurn(std::chrono::seconds(1));
        thread.join();
    }

    /// The same with a client that is connected.
    void play(const Scenario& scenario) {
        run([&] {
            PortClient client(path());
            scenario(client);
        });
    }

    /// A shown dialog of the test's, destroyed at the end.
    template <class Dialog = QorDlgDialog, class... Arguments>
    Dialog* makeDialog(const char* name, Arguments... arguments) {
        auto* dialog = new Dialog(nullptr, name, arguments...);
        dialogs.push_back(dialog);
        dialog->SetVisibility(QorDlgSHOW);
        return dialog;
    }

    std::unique_ptr<Port> port;

private:
    std::vector<QorDlgDialog*> dialogs;
};

/// The names of the events of an events.take that concern publishers of class \p publisher.
inline std::vector<std::string> eventsOf(const Json& taken, const std::string& publisher) {
    std::vector<std::string> names;
    for (const Json& event : taken)
        if (event.at("publisher") == publisher)
            names.push_back(event.at("event"));
    return names;
}

using Names = std::vector<std::string>;

} // namespace qor::automation
