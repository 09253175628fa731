/* windowWatch PROGRAM...: starts a program under a running X server and prints one line:
 * nanoseconds from its start to the first window with content, and its proportional memory in KiB a
 * second later. Then ends it.
 *
 * A window has content when the program has drawn into it while it was to be seen: the server tells
 * so (DAMAGE). Windows of less than 100 by 100 are helpers of the toolkits and do not count. */

#define _GNU_SOURCE
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <xcb/damage.h>
#include <xcb/xcb.h>

enum { smallest = 100, patience = 60000 };

extern char **environ;

static xcb_connection_t *display;
static xcb_window_t root;
static uint8_t damageEvent;

static long long now(void)
{
    struct timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1000000000LL + time.tv_nsec;
}

static void watchRoot(void)
{
    const uint32_t children = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    display = xcb_connect(NULL, NULL);
    if (xcb_connection_has_error(display)) {
        fputs("windowWatch: no X server\n", stderr);
        exit(1);
    }
    root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(display, &xcb_damage_id);
    if (!extension->present) {
        fputs("windowWatch: the X server does not tell what is drawn (DAMAGE)\n", stderr);
        exit(1);
    }
    damageEvent = extension->first_event;
    free(xcb_damage_query_version_reply(display, xcb_damage_query_version(display, 1, 1), NULL));
    xcb_change_window_attributes(display, root, XCB_CW_EVENT_MASK, &children);
    xcb_flush(display);
}

static bool isSeen(xcb_window_t window)
{
    xcb_get_window_attributes_reply_t *attributes =
        xcb_get_window_attributes_reply(display, xcb_get_window_attributes(display, window), NULL);
    xcb_get_geometry_reply_t *geometry =
        xcb_get_geometry_reply(display, xcb_get_geometry(display, window), NULL);
    const bool seen = attributes != NULL && geometry != NULL
        && attributes->map_state == XCB_MAP_STATE_VIEWABLE && geometry->width >= smallest
        && geometry->height >= smallest;
    free(attributes);
    free(geometry);
    return seen;
}

/* The window manager's own windows are no program's: it makes a frame when it is asked to show. */
static bool belongsTo(xcb_window_t window, xcb_window_t manager)
{
    const uint32_t ofWindow = xcb_get_setup(display)->resource_id_mask;
    return (window & ~ofWindow) == (manager & ~ofWindow);
}

static xcb_window_t windowOfManager(void)
{
    static const char name[] = "_NET_SUPPORTING_WM_CHECK";
    xcb_intern_atom_reply_t *atom =
        xcb_intern_atom_reply(display, xcb_intern_atom(display, 0, sizeof name - 1, name), NULL);
    xcb_get_property_reply_t *property = xcb_get_property_reply(
        display, xcb_get_property(display, 0, root, atom->atom, XCB_ATOM_WINDOW, 0, 1), NULL);
    if (property == NULL || xcb_get_property_value_length(property) != sizeof(xcb_window_t)) {
        fputs("windowWatch: no window manager\n", stderr);
        exit(1);
    }
    const xcb_window_t window = *(xcb_window_t *)xcb_get_property_value(property);
    free(atom);
    free(property);
    return window;
}

/* Whether the event shows the first window with content. */
static bool handle(const xcb_generic_event_t *event, xcb_window_t manager)
{
    const uint8_t type = event->response_type & 0x7f;
    if (type == XCB_CREATE_NOTIFY) {
        const xcb_create_notify_event_t *created = (const xcb_create_notify_event_t *)event;
        if (created->parent == root && !belongsTo(created->window, manager))
            xcb_damage_create(display, xcb_generate_id(display), created->window,
                              XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
        xcb_flush(display);
    } else if (type == damageEvent + XCB_DAMAGE_NOTIFY) {
        return isSeen(((const xcb_damage_notify_event_t *)event)->drawable);
    }
    return false;
}

static bool waitForContent(xcb_window_t manager)
{
    const long long end = now() + patience * 1000000LL;
    while (now() < end) {
        xcb_generic_event_t *event;
        while ((event = xcb_poll_for_event(display)) != NULL) {
            const bool shown = handle(event, manager);
            free(event);
            if (shown)
                return true;
        }
        struct pollfd readable = {xcb_get_file_descriptor(display), POLLIN, 0};
        poll(&readable, 1, 100);
    }
    return false;
}

static long proportionalMemory(pid_t process)
{
    char path[64];
    char line[256];
    long size = -1;
    snprintf(path, sizeof path, "/proc/%d/smaps_rollup", process);
    FILE *file = fopen(path, "r");
    while (file != NULL && fgets(line, sizeof line, file) != NULL && size < 0)
        if (sscanf(line, "Pss: %ld kB", &size) != 1)
            size = -1;
    if (file != NULL)
        fclose(file);
    return size;
}

int main(int argc, char **argv)
{
    pid_t child;
    posix_spawn_file_actions_t silent;
    if (argc < 2)
        return 2;
    watchRoot();
    const xcb_window_t manager = windowOfManager();
    posix_spawn_file_actions_init(&silent);
    posix_spawn_file_actions_addopen(&silent, 1, "/dev/null", 1, 0);
    posix_spawn_file_actions_addopen(&silent, 2, "/dev/null", 1, 0);
    const long long start = now();
    if (posix_spawnp(&child, argv[1], &silent, NULL, argv + 1, environ) != 0) {
        perror(argv[1]);
        return 1;
    }
    const bool shown = waitForContent(manager);
    const long long taken = now() - start;
    sleep(1);
    const long memory = proportionalMemory(child);
    kill(child, SIGTERM);
    waitpid(child, NULL, 0);
    if (!shown) {
        fprintf(stderr, "windowWatch: no window of %s\n", argv[1]);
        return 1;
    }
    printf("%lld %ld\n", taken, memory);
    return 0;
}
