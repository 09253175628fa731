#pragma once

#include <QList>
#include <QProcess>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

#include <gtest/gtest.h>
#include <xcb/xcb.h>

namespace varnel::test {

/// An X server of the test's own, at which DISPLAY points, and, when asked for, a window manager.
/// A test is skipped where they are not installed.
class DesktopSession : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Returns when it keeps a list of windows.
    void startWindowManager();

    /// Starts a program that prints its windows' numbers and "up"; returns when all of them are in
    /// the window manager's list. It ends with the test.
    QProcess &startProgram(const QString &program, const QStringList &arguments);

    /// The window manager's list of windows; none when it keeps no list.
    [[nodiscard]] std::optional<std::vector<xcb_window_t>> clientList() const;

private:
    struct Disconnect {
        void operator()(xcb_connection_t *open) const { xcb_disconnect(open); }
    };
    /// Looks again after each change of the root window's properties.
    void waitUntil(const char *what, const std::function<bool()> &holds) const;
    [[nodiscard]] xcb_window_t root() const;

    QProcess server;
    std::vector<std::unique_ptr<QProcess>> programs;
    std::unique_ptr<xcb_connection_t, Disconnect> connection;
    xcb_atom_t listAtom = XCB_ATOM_NONE;
};

} // namespace varnel::test
