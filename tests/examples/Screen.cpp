// Screen: requests of the X11 protocol, with the XTEST extension for input. One test thread.

#include "Screen.h"

#include <signal.h>
#include <xcb/xtest.h>

namespace {

template <class Reply>
std::unique_ptr<Reply, decltype(&std::free)> Own(Reply* aReply) {
  return {aReply, &std::free};
}

}  // namespace

Screen::Screen() : m_connection(xcb_connect(m_server.Display().c_str(), nullptr)) {
  if (xcb_connection_has_error(m_connection) == 0)
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
}

Screen::~Screen() { xcb_disconnect(m_connection); }

bool Screen::WaitForWindow(const std::string& aTitle) {
  return Eventually([&] {
    const auto tree = Own(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr));
    if (!tree) return false;
    const xcb_window_t* windows = xcb_query_tree_children(tree.get());
    const xcb_window_t* end = windows + xcb_query_tree_children_length(tree.get());
    const auto found = std::find_if(windows, end, [&](xcb_window_t aWindow) {
      return TitleOf(aWindow).find(aTitle) != std::string::npos;
    });
    if (found != end) m_window = *found;
    return found != end;
  });
}

std::string Screen::Title() const { return TitleOf(m_window); }

std::string Screen::TitleOf(xcb_window_t aWindow) const {
  const auto reply = Own(xcb_get_property_reply(
      m_connection, xcb_get_property(m_connection, 0, aWindow, XCB_ATOM_WM_NAME, XCB_ATOM_ANY, 0, 256),
      nullptr));
  if (!reply) return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())),
          static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

void Screen::Resize(int aWidth, int aHeight) {
  const std::uint32_t size[] = {static_cast<std::uint32_t>(aWidth), static_cast<std::uint32_t>(aHeight)};
  xcb_configure_window(m_connection, m_window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
  xcb_flush(m_connection);
}

xcb_atom_t Screen::Atom(const std::string& aName) const {
  const auto reply = Own(xcb_intern_atom_reply(
      m_connection, xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(aName.size()), aName.c_str()),
      nullptr));
  return reply ? reply->atom : 0;
}

void Screen::Send(const char* aType, const std::vector<std::uint32_t>& aData) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = m_window;
  event.type = Atom(aType);
  std::copy(aData.begin(), aData.end(), event.data.data32);
  xcb_send_event(m_connection, 0, m_window, 0, reinterpret_cast<const char*>(&event));
  xcb_flush(m_connection);
}

void Screen::Close() { Send("WM_PROTOCOLS", {Atom("WM_DELETE_WINDOW")}); }

// The source's part of the drag and drop protocol (XDND 5), as far as a drop needs it.
void Screen::Drop(const std::vector<std::string>& aPaths) {
  if (m_source == 0) {
    m_source = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, 0, m_source, m_root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
  }
  xcb_set_selection_owner(m_connection, m_source, Atom("XdndSelection"), XCB_CURRENT_TIME);
  const Place place = Where();
  const auto middle =
      static_cast<std::uint32_t>((place.x + place.width / 2) << 16 | (place.y + place.height / 2));
  Send("XdndEnter", {m_source, 5u << 24, Atom("text/uri-list")});
  Send("XdndPosition", {m_source, 0, middle, XCB_CURRENT_TIME, Atom("XdndActionCopy")});
  Send("XdndDrop", {m_source, 0, XCB_CURRENT_TIME});
  std::string text;
  for (const std::string& path : aPaths) text += "file://" + path + "\r\n";
  Eventually([&] { return HandOver(text); });
}

bool Screen::HandOver(const std::string& aText) {
  const auto event = Own(xcb_poll_for_event(m_connection));
  if (!event || (event->response_type & 0x7F) != XCB_SELECTION_REQUEST) return false;
  const auto& asked = *reinterpret_cast<xcb_selection_request_event_t*>(event.get());
  xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, asked.requestor, asked.property, asked.target, 8,
                      static_cast<std::uint32_t>(aText.size()), aText.data());
  xcb_selection_notify_event_t answer{};
  answer.response_type = XCB_SELECTION_NOTIFY;
  answer.requestor = asked.requestor;
  answer.selection = asked.selection;
  answer.target = asked.target;
  answer.property = asked.property;
  xcb_send_event(m_connection, 0, asked.requestor, 0, reinterpret_cast<const char*>(&answer));
  xcb_flush(m_connection);
  return true;
}

void Screen::Focus() {
  // A window that is not shown yet cannot have the keyboard focus.
  Eventually([&] {
    const auto state = Own(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, m_window), nullptr));
    return state && state->map_state == XCB_MAP_STATE_VIEWABLE;
  });
  xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
  xcb_flush(m_connection);
}

Screen::Place Screen::Where() const {
  const auto size =
      Own(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, m_window), nullptr));
  if (!size) return {};
  return {size->x, size->y, size->width, size->height};
}

Picture Screen::Shot() const {
  const Place place = Where();
  const auto image = Own(xcb_get_image_reply(
      m_connection,
      xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, static_cast<std::int16_t>(place.x),
                    static_cast<std::int16_t>(place.y), static_cast<std::uint16_t>(place.width),
                    static_cast<std::uint16_t>(place.height), ~0u),
      nullptr));
  if (!image) return {};
  Picture picture(place.width, place.height);
  const std::uint8_t* bytes = xcb_get_image_data(image.get());  // blue, green, red, unused; from the top row
  for (int y = place.height - 1; y >= 0; --y) {
    std::uint8_t* pixel = &picture.pixels[static_cast<std::size_t>(y * place.width) * 4];
    for (int x = 0; x < place.width; ++x, pixel += 4, bytes += 4) {
      pixel[0] = bytes[2];
      pixel[1] = bytes[1];
      pixel[2] = bytes[0];
      pixel[3] = 255;
    }
  }
  return picture;
}

std::uint32_t Screen::Pixel(int aX, int aY) const {
  const Picture shot = Shot();
  if (aX < 0 || aY < 0 || aX >= shot.width || aY >= shot.height) return 0;
  const std::uint8_t* pixel = shot.At(aX, aY);
  return std::uint32_t{pixel[0]} << 16 | std::uint32_t{pixel[1]} << 8 | pixel[2];
}

void Screen::Fake(std::uint8_t aType, std::uint8_t aDetail, int aX, int aY) {
  xcb_test_fake_input(m_connection, aType, aDetail, XCB_CURRENT_TIME, m_root, static_cast<std::int16_t>(aX),
                      static_cast<std::int16_t>(aY), 0);
  xcb_flush(m_connection);
}

void Screen::MoveTo(int aX, int aY) {
  const Place place = Where();
  Fake(XCB_MOTION_NOTIFY, 0, place.x + aX, place.y + aY);
}

void Screen::Button(std::uint8_t aType) { Fake(aType, XCB_BUTTON_INDEX_1); }

void Screen::Click(int aX, int aY) {
  MoveTo(aX, aY);
  Button(XCB_BUTTON_PRESS);
  Button(XCB_BUTTON_RELEASE);
}

void Screen::Drag(int aX1, int aY1, int aX2, int aY2, std::uint8_t aHeld) {
  if (aHeld != 0) Fake(XCB_KEY_PRESS, aHeld);
  MoveTo(aX1, aY1);
  Button(XCB_BUTTON_PRESS);
  MoveTo((aX1 + aX2) / 2, (aY1 + aY2) / 2);
  MoveTo(aX2, aY2);
  Button(XCB_BUTTON_RELEASE);
  if (aHeld != 0) Fake(XCB_KEY_RELEASE, aHeld);
}

void Screen::Press(std::uint8_t aKeycode) {
  Fake(XCB_KEY_PRESS, aKeycode);
  Fake(XCB_KEY_RELEASE, aKeycode);
}

HostOnScreen::~HostOnScreen() {
  if (m_program <= 0) return;
  kill(m_program, SIGKILL);
  WaitFor(m_program);
}

void HostOnScreen::Run(const std::vector<std::string>& aCommand) {
  m_program = Start(aCommand, m_screen.Display(), m_folder / "out", m_folder / "err");
}

void HostOnScreen::Open(const std::vector<std::string>& aCommand, const std::string& aTitle) {
  Run(aCommand);
  ASSERT_TRUE(m_screen.WaitForWindow(aTitle)) << "no window was opened";
  m_screen.Focus();
}

int HostOnScreen::Status() { return WaitFor(std::exchange(m_program, -1)); }

bool HostOnScreen::TitleEndsWith(const std::string& aEnd) {
  return Eventually([&] { return m_screen.Title().ends_with(aEnd); });
}
