#include "platform/linux/X11ClientIds.h"

#include "platform/linux/Malloced.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include <sys/uio.h>

namespace varnel {

namespace {

// Two requests of the extension, as they go over the wire. They are few enough to do without the
// library that wraps them, which systems seldom have installed.
enum Opcode : std::uint8_t { QueryVersion = 0, QueryClientIds = 4 };

struct RequestHead {
    std::uint8_t majorOpcode = 0; // this and the length are filled in by the library
    std::uint8_t minorOpcode = 0;
    std::uint16_t length = 0;
};
struct VersionRequest {
    RequestHead head;
    std::uint8_t major = 1;
    std::uint8_t minor = 2;
    std::uint16_t unused = 0;
};
struct IdsRequest {
    RequestHead head;
    std::uint32_t count = 0;
};
struct IdSpec {
    std::uint32_t client = 0; ///< any window of it
    std::uint32_t mask = 0;
};
struct VersionReply {
    xcb_generic_reply_t head;
    std::uint16_t major;
    std::uint16_t minor;
};
struct IdsReply {
    xcb_generic_reply_t head;
    std::uint32_t count;
    std::array<std::uint32_t, 5> unused;
};
/// Before each id; the length is that of what follows, in bytes.
struct IdHead {
    IdSpec spec;
    std::uint32_t length = 0;
};

constexpr std::uint32_t processIdMask = 2;

xcb_extension_t resourceExtension {"X-Resource", 0};

/// Sends a request and waits for its answer; null when the server refuses it.
template <typename Reply>
Malloced<Reply> ask(const XcbLibrary &x, xcb_connection_t *connection, Opcode opcode,
                    std::span<std::byte> head, std::span<std::byte> body = {})
{
    // The library keeps two places before the first part to itself.
    std::array<iovec, 4> parts {};
    parts[2] = {head.data(), head.size()};
    parts[3] = {body.data(), body.size()};
    const xcb_protocol_request_t request {body.empty() ? 1U : 2U, &resourceExtension, opcode, 0};
    const unsigned sequence =
        x.sendRequest(connection, XCB_REQUEST_CHECKED, parts.data() + 2, &request);
    xcb_generic_error_t *error = nullptr;
    Malloced<Reply> reply(static_cast<Reply *>(x.waitForReply(connection, sequence, &error)));
    const Malloced<xcb_generic_error_t> owner(error);
    return reply;
}

template <typename T> std::span<std::byte> bytesOf(T &value)
{
    return std::as_writable_bytes(std::span(&value, 1));
}

bool knowsProcesses(const XcbLibrary &x, xcb_connection_t *connection)
{
    const xcb_query_extension_reply_t *extension =
        x.getExtensionData(connection, &resourceExtension);
    if (extension == nullptr || extension->present == 0)
        return false;
    VersionRequest request;
    const auto version = ask<VersionReply>(x, connection, QueryVersion, bytesOf(request));
    return version && (version->major > 1 || (version->major == 1 && version->minor >= 2));
}

QSet<int> processIds(std::span<const std::byte> answers)
{
    QSet<int> ids;
    IdHead head {};
    while (answers.size() >= sizeof head) {
        std::memcpy(&head, answers.data(), sizeof head);
        answers = answers.subspan(sizeof head);
        if (head.length > answers.size())
            break;
        std::uint32_t id = 0;
        if ((head.spec.mask & processIdMask) != 0 && head.length == sizeof id) {
            std::memcpy(&id, answers.data(), sizeof id);
            ids.insert(static_cast<int>(id));
        }
        answers = answers.subspan(head.length);
    }
    return ids;
}

} // namespace

std::optional<QSet<int>> clientProcesses(const XcbLibrary &x, xcb_connection_t *connection,
                                         const std::vector<xcb_window_t> &windows)
{
    if (!knowsProcesses(x, connection))
        return std::nullopt;
    std::vector<IdSpec> specs;
    specs.reserve(windows.size());
    for (const xcb_window_t window : windows)
        specs.push_back({window, processIdMask});
    IdsRequest request;
    request.count = static_cast<std::uint32_t>(specs.size());
    const auto reply = ask<IdsReply>(x, connection, QueryClientIds, bytesOf(request),
                                     std::as_writable_bytes(std::span(specs)));
    if (!reply)
        return std::nullopt;
    const auto *answers = reinterpret_cast<const std::byte *>(reply.get() + 1);
    return processIds({answers, std::size_t {reply->head.length} * 4});
}

} // namespace varnel
