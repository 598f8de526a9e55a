#pragma once

#include <xcb/xcb.h>

#include <QProcess>
#include <QRect>
#include <QSize>
#include <QString>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

inline constexpr int deadline = 60000;  // milliseconds; only a fault gets there

/// The answer to a request, or null.
template <class Reply, class Cookie>
std::unique_ptr<Reply, decltype(&std::free)> answer(Reply* (*get)(xcb_connection_t*, Cookie,
                                                                  xcb_generic_error_t**),
                                                    xcb_connection_t* connection, Cookie cookie) {
    return {get(connection, cookie, nullptr), &std::free};
}

/// A display of its own without a screen to look at and without a window manager, and what a
/// window manager would do with the windows there.
class VirtualDisplay {
  public:
    VirtualDisplay() {
        // It chooses a number that is free and tells it when it is ready.
        server_.setProcessChannelMode(QProcess::SeparateChannels);
        server_.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1366x768x24", "-nolisten", "tcp",
                               "-noreset"});
        while (!server_.canReadLine() && server_.waitForReadyRead(deadline)) {
        }
        name_ = ":" + QString::fromLatin1(server_.readLine()).trimmed();
        connection_ = xcb_connect(name_.toLatin1().constData(), nullptr);
        if (xcb_connection_has_error(connection_) != 0) {
            throw std::runtime_error("Xvfb does not start");
        }
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    }
    ~VirtualDisplay() {
        xcb_disconnect(connection_);
        server_.terminate();
        server_.waitForFinished(deadline);
    }
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    QString name() const { return name_; }

    /// The visible window of this title; 0 if there is none.
    xcb_window_t find(const std::string& title) const {
        const auto tree =
            answer(xcb_query_tree_reply, connection_, xcb_query_tree(connection_, root_));
        if (!tree) {
            return 0;
        }
        const xcb_window_t* const windows = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            const auto attributes = answer(xcb_get_window_attributes_reply, connection_,
                                           xcb_get_window_attributes(connection_, windows[i]));
            if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                property<char>(windows[i], XCB_ATOM_WM_NAME) ==
                    std::vector<char>(title.begin(), title.end())) {
                return windows[i];
            }
        }
        return 0;
    }

    /// Without window manager the windows are children of the root, so this is on the screen.
    QRect geometry(xcb_window_t window) const {
        const auto reply =
            answer(xcb_get_geometry_reply, connection_, xcb_get_geometry(connection_, window));
        return reply ? QRect(reply->x, reply->y, reply->width, reply->height) : QRect();
    }

    /// What the window told the window manager.
    QSize minimumSize(xcb_window_t window) const {
        const auto hints = property<std::int32_t>(window, XCB_ATOM_WM_NORMAL_HINTS);
        return hints.size() > 6 ? QSize(hints[5], hints[6]) : QSize();
    }

    /// 0xRRGGBB; 0 where nothing has been painted.
    std::uint32_t pixel(xcb_window_t window, std::int16_t x, std::int16_t y) const {
        const auto image =
            answer(xcb_get_image_reply, connection_,
                   xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, x, y, 1, 1, ~0U));
        std::uint32_t colour = 0;
        if (image && xcb_get_image_data_length(image.get()) >= 4) {
            std::memcpy(&colour, xcb_get_image_data(image.get()), sizeof colour);
        }
        return colour & 0xFFFFFFU;
    }

    /// Leaves this part of the screen to windows, as panels do.
    void setWorkArea(const std::array<std::uint32_t, 4>& area) const {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, root_, atom("_NET_WORKAREA"),
                            XCB_ATOM_CARDINAL, 32, static_cast<std::uint32_t>(area.size()),
                            area.data());
        xcb_flush(connection_);
    }

    /// As its close button.
    void close(xcb_window_t window) const {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom("WM_PROTOCOLS");
        event.data.data32[0] = atom("WM_DELETE_WINDOW");
        xcb_send_event(connection_, 0, window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&event));
        xcb_flush(connection_);
    }

  private:
    template <class Item>
    std::vector<Item> property(xcb_window_t window, xcb_atom_t name) const {
        const auto reply = answer(
            xcb_get_property_reply, connection_,
            xcb_get_property(connection_, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 64));
        if (!reply) {
            return {};
        }
        const auto* const first = static_cast<const Item*>(xcb_get_property_value(reply.get()));
        const auto bytes = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
        return {first, first + bytes / sizeof(Item)};
    }

    xcb_atom_t atom(const char* name) const {
        const auto reply =
            answer(xcb_intern_atom_reply, connection_,
                   xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(strlen(name)), name));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    QProcess server_;
    QString name_;
    xcb_connection_t* connection_ = nullptr;
    xcb_window_t root_ = 0;
};
