#include "platform/linux/X11ClientList.h"

#include "platform/linux/Malloced.h"
#include "platform/linux/X11ClientIds.h"
#include "platform/linux/XcbLibrary.h"

#include <QByteArray>

#include <array>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <unistd.h>

namespace varnel {

namespace {

/// A connection to the display that DISPLAY names, with the names that window managers use.
class Session {
public:
    explicit Session(const XcbLibrary &x)
        : x(x), connection(x.connect(nullptr, &screen)), hasNames(askForNames())
    {
    }
    ~Session()
    {
        if (hasNames)
            xcb_ewmh_connection_wipe(&names);
        x.disconnect(connection);
    }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    [[nodiscard]] bool isReady() const { return hasNames; }
    /// None when no window manager keeps such a list.
    [[nodiscard]] std::optional<std::vector<xcb_window_t>> clientList();
    /// The owners of these windows, as far as they run on this machine.
    [[nodiscard]] QSet<int> owners(const std::vector<xcb_window_t> &windows);

private:
    using Questions = std::vector<xcb_get_property_cookie_t>;

    [[nodiscard]] bool askForNames()
    {
        return x.connectionHasError(connection) == 0
            && x.initAtomsReplies(&names, x.initAtoms(connection, &names), nullptr) != 0;
    }
    [[nodiscard]] std::vector<xcb_window_t> ofThisMachine(const std::vector<xcb_window_t> &windows);
    [[nodiscard]] bool isThisMachine(xcb_get_property_cookie_t question);
    /// What the programs themselves wrote on their windows.
    [[nodiscard]] QSet<int> statedOwners(const std::vector<xcb_window_t> &windows);

    const XcbLibrary &x;
    int screen = 0;
    xcb_connection_t *connection;
    xcb_ewmh_connection_t names {};
    bool hasNames;
};

std::optional<std::vector<xcb_window_t>> Session::clientList()
{
    xcb_ewmh_get_windows_reply_t reply {};
    if (x.getWindowsReply(&names, x.getClientList(&names, screen), &reply, nullptr) == 0)
        return std::nullopt;
    std::vector<xcb_window_t> windows(reply.windows, reply.windows + reply.windows_len);
    x.windowsReplyWipe(&reply);
    return windows;
}

QByteArray hostName()
{
    std::array<char, 256> name {};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? QByteArray(name.data())
                                                            : QByteArray();
}

bool Session::isThisMachine(xcb_get_property_cookie_t question)
{
    const Malloced<xcb_get_property_reply_t> reply(
        x.getPropertyReply(connection, question, nullptr));
    if (!reply)
        return false;
    const QByteArray machine(static_cast<const char *>(x.getPropertyValue(reply.get())),
                             x.getPropertyValueLength(reply.get()));
    return machine.isEmpty() || machine == hostName();
}

// In both walks all questions go first, then all answers come: one round trip, not one for each
// window.

std::vector<xcb_window_t> Session::ofThisMachine(const std::vector<xcb_window_t> &windows)
{
    constexpr std::uint32_t longestName = 64; // in units of four bytes
    Questions questions;
    for (const xcb_window_t window : windows)
        questions.push_back(x.getProperty(connection, 0, window, XCB_ATOM_WM_CLIENT_MACHINE,
                                          XCB_GET_PROPERTY_TYPE_ANY, 0, longestName));
    std::vector<xcb_window_t> local;
    for (std::size_t i = 0; i < windows.size(); ++i)
        if (isThisMachine(questions[i]))
            local.push_back(windows[i]);
    return local;
}

QSet<int> Session::statedOwners(const std::vector<xcb_window_t> &windows)
{
    Questions questions;
    for (const xcb_window_t window : windows)
        questions.push_back(x.getWmPid(&names, window));
    QSet<int> owners;
    for (const xcb_get_property_cookie_t question : questions) {
        std::uint32_t processId = 0;
        if (x.getCardinalReply(&names, question, &processId, nullptr) != 0)
            owners.insert(static_cast<int>(processId));
    }
    return owners;
}

QSet<int> Session::owners(const std::vector<xcb_window_t> &windows)
{
    // Another machine's process ids say nothing about the processes here.
    const std::vector<xcb_window_t> local = ofThisMachine(windows);
    const std::optional<QSet<int>> known = clientProcesses(x, connection, local);
    return known ? *known : statedOwners(local);
}

std::unique_ptr<Session> connected()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return nullptr;
    const XcbLibrary *x = XcbLibrary::get();
    auto session = x != nullptr ? std::make_unique<Session>(*x) : nullptr;
    return session && session->isReady() ? std::move(session) : nullptr;
}

std::unique_ptr<Session> kept;

} // namespace

std::optional<QSet<int>> windowOwners()
{
    const std::unique_ptr<Session> fresh = kept ? nullptr : connected();
    Session *session = kept ? kept.get() : fresh.get();
    if (session == nullptr)
        return std::nullopt;
    const std::optional<std::vector<xcb_window_t>> windows = session->clientList();
    if (!windows)
        return std::nullopt;
    return session->owners(*windows);
}

void keepDisplayConnection()
{
    kept = connected();
}

} // namespace varnel
