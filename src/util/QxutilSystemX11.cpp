#include "QxutilSystemX11_p.h"

#include <QGuiApplication>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

struct FreeDeleter {
    void operator()(void* p) const { std::free(p); }
};
template <typename T> using Reply = std::unique_ptr<T, FreeDeleter>;

xcb_connection_t* connection() {
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

xcb_window_t rootWindow(xcb_connection_t* c) {
    const xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(c));
    return it.rem ? it.data->root : XCB_NONE;
}

xcb_atom_t atom(xcb_connection_t* c, const char* name) {
    Reply<xcb_intern_atom_reply_t> r(xcb_intern_atom_reply(
        c, xcb_intern_atom(c, 0, static_cast<uint16_t>(std::strlen(name)), name), nullptr));
    return r ? r->atom : XCB_NONE;
}

QByteArray property(xcb_connection_t* c, xcb_window_t w, xcb_atom_t prop, xcb_atom_t type) {
    Reply<xcb_get_property_reply_t> r(
        xcb_get_property_reply(c, xcb_get_property(c, 0, w, prop, type, 0, 1 << 16), nullptr));
    if (!r || r->type == XCB_NONE)
        return {};
    return QByteArray(static_cast<const char*>(xcb_get_property_value(r.get())),
                      xcb_get_property_value_length(r.get()));
}

} // namespace

namespace qxt_x11 {

bool available() {
    return connection() != nullptr;
}

QList<HWND> topLevelWindows() {
    QList<HWND> result;
    xcb_connection_t* c = connection();
    if (!c)
        return result;
    const xcb_window_t root = rootWindow(c);
    const QByteArray list =
        property(c, root, atom(c, "_NET_CLIENT_LIST_STACKING"), XCB_ATOM_WINDOW);
    if (!list.isEmpty()) {
        const auto* ids = reinterpret_cast<const xcb_window_t*>(list.constData());
        for (qsizetype i = list.size() / qsizetype(sizeof(xcb_window_t)); i-- > 0;)
            result.append(ids[i]);
        return result;
    }
    Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(c, xcb_query_tree(c, root), nullptr));
    if (!tree)
        return result;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = xcb_query_tree_children_length(tree.get()); i-- > 0;)
        result.append(children[i]);
    return result;
}

QStringList windowClass(HWND window) {
    xcb_connection_t* c = connection();
    if (!c)
        return {};
    const QByteArray value = property(c, xcb_window_t(window), XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
    QStringList parts;
    for (const QByteArray& part : value.split('\0'))
        if (!part.isEmpty())
            parts.append(QString::fromLatin1(part));
    return parts;
}

QString windowTitle(HWND window) {
    xcb_connection_t* c = connection();
    if (!c)
        return {};
    const QByteArray utf8 =
        property(c, xcb_window_t(window), atom(c, "_NET_WM_NAME"), atom(c, "UTF8_STRING"));
    if (!utf8.isEmpty())
        return QString::fromUtf8(utf8);
    return QString::fromLatin1(
        property(c, xcb_window_t(window), XCB_ATOM_WM_NAME, XCB_ATOM_STRING));
}

void requestClose(HWND window) {
    xcb_connection_t* c = connection();
    if (!c)
        return;
    xcb_client_message_event_t e;
    std::memset(&e, 0, sizeof e);
    e.response_type = XCB_CLIENT_MESSAGE;
    e.format = 32;
    e.window = xcb_window_t(window);
    e.type = atom(c, "WM_PROTOCOLS");
    e.data.data32[0] = atom(c, "WM_DELETE_WINDOW");
    e.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(c, 0, e.window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&e));
    xcb_flush(c);
}

} // namespace qxt_x11
