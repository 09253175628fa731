#include "platform/linux/X11ClientList.h"

#include <cstdlib>
#include <memory>
#include <vector>

#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

namespace varnel {

namespace {

struct Disconnect {
    void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
};

/// The EWMH atoms of one connection.
class Ewmh {
public:
    explicit Ewmh(xcb_connection_t *connection)
    {
        ready =
            xcb_ewmh_init_atoms_replies(&atoms, xcb_ewmh_init_atoms(connection, &atoms), nullptr)
            != 0;
    }
    ~Ewmh()
    {
        if (ready)
            xcb_ewmh_connection_wipe(&atoms);
    }
    Ewmh(const Ewmh &) = delete;
    Ewmh &operator=(const Ewmh &) = delete;

    bool ready = false;
    xcb_ewmh_connection_t atoms {};
};

std::optional<std::vector<xcb_window_t>> clientList(Ewmh &ewmh, int screen)
{
    xcb_ewmh_get_windows_reply_t reply {};
    if (xcb_ewmh_get_client_list_reply(&ewmh.atoms, xcb_ewmh_get_client_list(&ewmh.atoms, screen),
                                       &reply, nullptr)
        == 0)
        return std::nullopt;
    std::vector<xcb_window_t> windows(reply.windows, reply.windows + reply.windows_len);
    xcb_ewmh_get_windows_reply_wipe(&reply);
    return windows;
}

} // namespace

std::optional<QSet<int>> windowOwners()
{
    int screen = 0;
    const std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(connection.get()) != 0)
        return std::nullopt;
    Ewmh ewmh(connection.get());
    if (!ewmh.ready)
        return std::nullopt;
    const std::optional<std::vector<xcb_window_t>> windows = clientList(ewmh, screen);
    if (!windows)
        return std::nullopt;

    // All questions first, then all answers: one round trip, not one for each window.
    std::vector<xcb_get_property_cookie_t> questions;
    questions.reserve(windows->size());
    for (const xcb_window_t window : *windows)
        questions.push_back(xcb_ewmh_get_wm_pid(&ewmh.atoms, window));
    QSet<int> owners;
    for (const xcb_get_property_cookie_t question : questions) {
        std::uint32_t processId = 0;
        if (xcb_ewmh_get_wm_pid_reply(&ewmh.atoms, question, &processId, nullptr) != 0)
            owners.insert(static_cast<int>(processId));
    }
    return owners;
}

} // namespace varnel
