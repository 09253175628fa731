#include "platform/linux/XcbLibrary.h"

#include "base/LateLibrary.h"

#include <optional>

namespace varnel {

namespace {

std::optional<XcbLibrary> load()
{
    LateLibrary loader;
    XcbLibrary x {};
    loader.open(QStringLiteral("xcb"), 1);
    loader.find(x.connect, "xcb_connect");
    loader.find(x.connectionHasError, "xcb_connection_has_error");
    loader.find(x.disconnect, "xcb_disconnect");
    loader.find(x.getProperty, "xcb_get_property");
    loader.find(x.getPropertyReply, "xcb_get_property_reply");
    loader.find(x.getPropertyValue, "xcb_get_property_value");
    loader.find(x.getPropertyValueLength, "xcb_get_property_value_length");
    loader.find(x.getExtensionData, "xcb_get_extension_data");
    loader.find(x.sendRequest, "xcb_send_request");
    loader.find(x.waitForReply, "xcb_wait_for_reply");
    loader.open(QStringLiteral("xcb-ewmh"), 2);
    loader.find(x.initAtoms, "xcb_ewmh_init_atoms");
    loader.find(x.initAtomsReplies, "xcb_ewmh_init_atoms_replies");
    loader.find(x.getClientList, "xcb_ewmh_get_client_list");
    loader.find(x.getWindowsReply, "xcb_ewmh_get_windows_reply");
    loader.find(x.windowsReplyWipe, "xcb_ewmh_get_windows_reply_wipe");
    loader.find(x.getWmPid, "xcb_ewmh_get_wm_pid");
    loader.find(x.getCardinalReply, "xcb_ewmh_get_cardinal_reply");
    if (!loader.isComplete())
        return std::nullopt;
    return x;
}

} // namespace

const XcbLibrary *XcbLibrary::get()
{
    static const std::optional<XcbLibrary> library = load();
    return library ? &*library : nullptr;
}

} // namespace varnel
