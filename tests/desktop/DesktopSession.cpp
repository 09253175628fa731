#include "desktop/DesktopSession.h"

#include <QDeadlineTimer>
#include <QStandardPaths>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <poll.h>

namespace varnel::test {

namespace {

constexpr int patience = 60000; // milliseconds; only a failure takes so long

struct Free {
    void operator()(void *memory) const { std::free(memory); }
};

bool isInstalled(const QString &program)
{
    return !QStandardPaths::findExecutable(program).isEmpty();
}

/// The lines that a program prints up to the one that ends them, without it.
QStringList linesUpTo(QProcess &program, const QByteArray &last)
{
    QStringList lines;
    while (program.canReadLine() || program.waitForReadyRead(patience)) {
        while (program.canReadLine()) {
            const QByteArray line = program.readLine().trimmed();
            if (line == last)
                return lines;
            lines += QString::fromLatin1(line);
            if (last.isNull())
                return lines;
        }
    }
    ADD_FAILURE() << program.program().toStdString() << " did not come up";
    return lines;
}

} // namespace

void DesktopSession::SetUp()
{
    for (const QString &program : {QStringLiteral("Xvfb"), QStringLiteral("openbox")})
        if (!isInstalled(program))
            GTEST_SKIP() << program.toStdString() << " is not installed";
    qunsetenv("WAYLAND_DISPLAY");
    // The server looks for a free number itself, and tells it when it is ready.
    server.start(QStringLiteral("Xvfb"),
                 {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"),
                  QStringLiteral("tcp"), QStringLiteral("-noreset")});
    const QStringList number = linesUpTo(server, QByteArray());
    ASSERT_EQ(number.size(), 1);
    qputenv("DISPLAY", QByteArray(':' + number[0].toLatin1()));

    connection.reset(xcb_connect(nullptr, nullptr));
    ASSERT_EQ(xcb_connection_has_error(connection.get()), 0);
    const char name[] = "_NET_CLIENT_LIST";
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(xcb_intern_atom_reply(
        connection.get(), xcb_intern_atom(connection.get(), 0, sizeof name - 1, name), nullptr));
    ASSERT_TRUE(atom);
    listAtom = atom->atom;
    const std::uint32_t changes = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection.get(), root(), XCB_CW_EVENT_MASK, &changes);
    xcb_flush(connection.get());
}

void DesktopSession::TearDown()
{
    for (const auto &program : programs) {
        program->kill();
        program->waitForFinished(patience);
    }
    connection.reset();
    server.terminate();
    server.waitForFinished(patience);
}

xcb_window_t DesktopSession::root() const
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
}

std::optional<std::vector<xcb_window_t>> DesktopSession::clientList() const
{
    const std::unique_ptr<xcb_get_property_reply_t, Free> reply(xcb_get_property_reply(
        connection.get(),
        xcb_get_property(connection.get(), 0, root(), listAtom, XCB_ATOM_WINDOW, 0, 1024),
        nullptr));
    if (!reply || reply->type != XCB_ATOM_WINDOW)
        return std::nullopt;
    std::vector<xcb_window_t> windows(
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) / 4);
    if (!windows.empty())
        std::memcpy(windows.data(), xcb_get_property_value(reply.get()), windows.size() * 4);
    return windows;
}

void DesktopSession::waitUntil(const char *what, const std::function<bool()> &holds) const
{
    const QDeadlineTimer deadline(patience);
    while (!holds()) {
        ASSERT_FALSE(deadline.hasExpired()) << what;
        // An answer may have brought events along; then there is something to look at already.
        bool changed = false;
        while (xcb_generic_event_t *event = xcb_poll_for_event(connection.get())) {
            changed = true;
            std::free(event);
        }
        pollfd readable {xcb_get_file_descriptor(connection.get()), POLLIN, 0};
        if (!changed)
            ::poll(&readable, 1, int(deadline.remainingTime()));
    }
}

void DesktopSession::startWindowManager()
{
    programs.push_back(std::make_unique<QProcess>());
    // It runs the command when it has looked at the windows that are there: one that is mapped
    // while it still looks may be lost to it.
    programs.back()->start(
        QStringLiteral("openbox"),
        {QStringLiteral("--sm-disable"), QStringLiteral("--startup"), QStringLiteral("echo up")});
    linesUpTo(*programs.back(), "up");
    waitUntil("the window manager keeps a list", [this] { return clientList().has_value(); });
}

QProcess &DesktopSession::startProgram(const QString &program, const QStringList &arguments)
{
    programs.push_back(std::make_unique<QProcess>());
    QProcess &started = *programs.back();
    started.start(program, arguments);
    const QStringList windows = linesUpTo(started, "up");
    waitUntil("the windows are listed", [this, &windows] {
        const auto listed = clientList().value_or(std::vector<xcb_window_t>());
        return std::all_of(windows.begin(), windows.end(), [&](const QString &window) {
            return std::find(listed.begin(), listed.end(), window.toUInt()) != listed.end();
        });
    });
    return started;
}

} // namespace varnel::test
