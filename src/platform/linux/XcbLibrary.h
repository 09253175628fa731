#pragma once

#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>
#include <xcb/xcbext.h>

namespace varnel {

/// The few calls of the X client libraries that this program makes, looked up when first asked for.
/// Linked in, the libraries would be loaded by every run of the terminal program, of which hardly
/// any asks for windows, and a machine without them could run none.
struct XcbLibrary {
    decltype(&xcb_connect) connect;
    decltype(&xcb_connection_has_error) connectionHasError;
    decltype(&xcb_disconnect) disconnect;
    decltype(&xcb_get_property) getProperty;
    decltype(&xcb_get_property_reply) getPropertyReply;
    decltype(&xcb_get_property_value) getPropertyValue;
    decltype(&xcb_get_property_value_length) getPropertyValueLength;
    decltype(&xcb_get_extension_data) getExtensionData;
    decltype(&xcb_send_request) sendRequest;
    decltype(&xcb_wait_for_reply) waitForReply;
    decltype(&xcb_ewmh_init_atoms) initAtoms;
    decltype(&xcb_ewmh_init_atoms_replies) initAtomsReplies;
    decltype(&xcb_ewmh_get_client_list) getClientList;
    decltype(&xcb_ewmh_get_windows_reply) getWindowsReply;
    decltype(&xcb_ewmh_get_windows_reply_wipe) windowsReplyWipe;
    decltype(&xcb_ewmh_get_wm_pid) getWmPid;
    decltype(&xcb_ewmh_get_cardinal_reply) getCardinalReply;

    /// Null where the libraries are not installed.
    [[nodiscard]] static const XcbLibrary *get();
};

} // namespace varnel
