// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/XDisplay.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <sys/uio.h>
#include <xcb/xcbext.h>

namespace {

constexpr uint16_t smallestProgramWindow = 200;
constexpr xcb_keysym_t controlKey = 0xFFE3;
constexpr uint8_t fakeInputRequest = 2;

/// Input as if from the devices, by the XTEST extension: some toolkits ignore what is merely sent
/// to their windows.
xcb_extension_t testExtension{"XTEST", 0};

struct FakeInput {
    uint8_t extension = 0;
    uint8_t request = 0;
    uint16_t length = 0;
    uint8_t type = 0;
    uint8_t detail = 0;
    uint16_t unused = 0;
    uint32_t time = XCB_CURRENT_TIME;
    uint32_t root = XCB_NONE;
    uint32_t unusedToo[2] = {};
    int16_t x = 0;
    int16_t y = 0;
    uint8_t unusedEither[7] = {};
    uint8_t device = 0;
};

template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

template <typename Reply>
Owned<Reply> owned(Reply *reply) {
    return Owned<Reply>(reply, &std::free);
}

} // namespace

XDisplay::XDisplay() : connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_) != 0)
        throw std::runtime_error("the X display cannot be reached");
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    root_ = screen->root;
    width_ = screen->width_in_pixels;
    height_ = screen->height_in_pixels;
}

XDisplay::~XDisplay() {
    xcb_disconnect(connection_);
}

std::optional<xcb_window_t> XDisplay::programWindow() {
    const auto tree =
        owned(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root_), nullptr));
    if (!tree)
        return std::nullopt;
    const xcb_window_t *windows = xcb_query_tree_children(tree.get());
    for (int index = 0; index < xcb_query_tree_children_length(tree.get()); ++index)
        if (isProgramWindow(windows[index]))
            return windows[index];
    return std::nullopt;
}

bool XDisplay::isProgramWindow(xcb_window_t window) {
    const auto attributes = owned(xcb_get_window_attributes_reply(
        connection_, xcb_get_window_attributes(connection_, window), nullptr));
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
        attributes->override_redirect != 0)
        return false;
    const PixelArea area = geometry(window);
    return area.width >= smallestProgramWindow && area.height >= smallestProgramWindow;
}

PixelArea XDisplay::geometry(xcb_window_t window) {
    const auto reply =
        owned(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
    return reply ? PixelArea{reply->x, reply->y, reply->width, reply->height} : PixelArea{};
}

// A window may be larger than the display, and has no pixels there.
PixelArea XDisplay::onDisplay(xcb_window_t window, const PixelArea &area) {
    const PixelArea all = geometry(window);
    const int left = std::max<int>(area.x, -all.x);
    const int top = std::max<int>(area.y, -all.y);
    const int right = std::min(area.x + area.width, width_ - all.x);
    const int bottom = std::min(area.y + area.height, height_ - all.y);
    return {int16_t(left), int16_t(top), uint16_t(std::max(right - left, 0)),
            uint16_t(std::max(bottom - top, 0))};
}

std::vector<uint32_t> XDisplay::pixels(xcb_window_t window, const PixelArea &wanted) {
    const PixelArea area = onDisplay(window, wanted);
    if (area.width == 0 || area.height == 0)
        return {};
    const auto image = owned(
        xcb_get_image_reply(connection_,
                            xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, area.x,
                                          area.y, area.width, area.height, ~uint32_t(0)),
                            nullptr));
    if (!image)
        return {};
    const auto *data = reinterpret_cast<const uint32_t *>(xcb_get_image_data(image.get()));
    return {data, data + size_t(xcb_get_image_data_length(image.get())) / sizeof(uint32_t)};
}

void XDisplay::place(xcb_window_t window, uint16_t width, uint16_t height) {
    const uint32_t values[] = {0, 0, width, height};
    xcb_configure_window(connection_, window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values);
    xcb_flush(connection_);
}

void XDisplay::focus(xcb_window_t window) {
    xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    xcb_flush(connection_);
}

void XDisplay::clickInto(xcb_window_t window) {
    const PixelArea area = geometry(window);
    focus(window);
    fake(XCB_MOTION_NOTIFY, 0, int16_t(area.x + area.width / 2), int16_t(area.y + area.height / 2));
    fake(XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1);
    fake(XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1);
    xcb_flush(connection_);
}

void XDisplay::press(xcb_keysym_t key, bool withControl) {
    const xcb_keycode_t code = codeOf(key);
    const xcb_keycode_t control = codeOf(controlKey);
    if (withControl)
        fake(XCB_KEY_PRESS, control);
    fake(XCB_KEY_PRESS, code);
    fake(XCB_KEY_RELEASE, code);
    if (withControl)
        fake(XCB_KEY_RELEASE, control);
    xcb_flush(connection_);
}

xcb_keycode_t XDisplay::codeOf(xcb_keysym_t key) {
    const xcb_setup_t *setup = xcb_get_setup(connection_);
    const auto count = uint8_t(setup->max_keycode - setup->min_keycode + 1);
    const auto mapping = owned(xcb_get_keyboard_mapping_reply(
        connection_, xcb_get_keyboard_mapping(connection_, setup->min_keycode, count), nullptr));
    if (!mapping)
        throw std::runtime_error("the X display has no keyboard");
    const xcb_keysym_t *keys = xcb_get_keyboard_mapping_keysyms(mapping.get());
    for (int index = 0; index < count * mapping->keysyms_per_keycode; ++index)
        if (keys[index] == key)
            return xcb_keycode_t(setup->min_keycode + index / mapping->keysyms_per_keycode);
    throw std::runtime_error("the X display's keyboard lacks a key");
}

void XDisplay::fake(uint8_t type, uint8_t detail, int16_t x, int16_t y) {
    FakeInput input;
    input.type = type;
    input.detail = detail;
    input.root = type == XCB_MOTION_NOTIFY ? root_ : xcb_window_t(XCB_NONE);
    input.x = x;
    input.y = y;
    const xcb_protocol_request_t request{1, &testExtension, fakeInputRequest, 1};
    // The library writes into the two parts before the first.
    iovec parts[3] = {};
    parts[2] = {&input, sizeof input};
    xcb_send_request(connection_, 0, parts + 2, &request);
}
