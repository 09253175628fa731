// A program with windows, for tests of lists of windows: desktop_window COUNT [MACHINE [PID]].
// What it writes on them as its process id, as far as PID is not 0, need not be true.
// Prints its windows' numbers, one a line, when all are made, and stays until a signal ends it.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

namespace {

std::string thisMachine()
{
    std::array<char, 256> name {};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

xcb_window_t makeWindow(xcb_connection_t *connection, xcb_ewmh_connection_t *names,
                        const std::string &machine, std::uint32_t processId)
{
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 10, 10, 120, 80, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    if (processId != 0)
        xcb_ewmh_set_wm_pid(names, window, processId);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLIENT_MACHINE,
                        XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(machine.size()),
                        machine.data());
    xcb_map_window(connection, window);
    return window;
}

} // namespace

int main(int argc, char **argv)
{
    const int count = argc > 1 ? std::atoi(argv[1]) : 1;
    const std::string machine = argc > 2 ? argv[2] : thisMachine();
    const auto processId = static_cast<std::uint32_t>(argc > 3 ? std::atoi(argv[3]) : ::getpid());
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    xcb_ewmh_connection_t names {};
    if (xcb_connection_has_error(connection) != 0
        || xcb_ewmh_init_atoms_replies(&names, xcb_ewmh_init_atoms(connection, &names), nullptr)
            == 0)
        return 1;
    std::vector<xcb_window_t> windows;
    for (int i = 0; i < count; ++i)
        windows.push_back(makeWindow(connection, &names, machine, processId));
    xcb_flush(connection);
    for (const xcb_window_t window : windows)
        std::printf("%u\n", window);
    std::puts("up");
    std::fflush(stdout);
    while (xcb_generic_event_t *event = xcb_wait_for_event(connection))
        std::free(event);
    return 0;
}
