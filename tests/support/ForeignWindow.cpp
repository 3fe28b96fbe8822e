// ForeignWindow: a window of a host, on a separate connection to the X server. One test thread.

#include "support/ForeignWindow.h"

ForeignWindow::ForeignWindow(int aWidth, int aHeight) {
  m_pConnection = xcb_connect(nullptr, nullptr);
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(m_pConnection)).data;
  if (screen == nullptr) return;
  m_Window = xcb_generate_id(m_pConnection);
  const std::uint32_t override = 1;
  xcb_create_window(m_pConnection, XCB_COPY_FROM_PARENT, m_Window, screen->root, 20, 20,
                    static_cast<std::uint16_t>(aWidth), static_cast<std::uint16_t>(aHeight), 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &override);
  xcb_map_window(m_pConnection, m_Window);
  Sync();
}

ForeignWindow::~ForeignWindow() { CloseConnection(); }

void ForeignWindow::Sync() const {
  std::free(xcb_get_input_focus_reply(m_pConnection, xcb_get_input_focus(m_pConnection), nullptr));
}

void ForeignWindow::Resize(int aWidth, int aHeight) {
  const std::uint32_t size[] = {static_cast<std::uint32_t>(aWidth), static_cast<std::uint32_t>(aHeight)};
  xcb_configure_window(m_pConnection, m_Window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
  Sync();
}

void ForeignWindow::Unmap() {
  xcb_unmap_window(m_pConnection, m_Window);
  Sync();
}

void ForeignWindow::DestroyWindow() {
  xcb_destroy_window(m_pConnection, m_Window);
  Sync();
}

void ForeignWindow::CloseConnection() {
  if (m_pConnection != nullptr) xcb_disconnect(m_pConnection);
  m_pConnection = nullptr;
}

xcb_window_t ForeignWindow::Child() const {
  xcb_query_tree_reply_t* tree =
      xcb_query_tree_reply(m_pConnection, xcb_query_tree(m_pConnection, m_Window), nullptr);
  const xcb_window_t child =
      tree != nullptr && xcb_query_tree_children_length(tree) > 0 ? xcb_query_tree_children(tree)[0] : 0;
  std::free(tree);
  return child;
}

Picture ForeignWindow::Screenshot(xcb_window_t aWindow, int aWidth, int aHeight) const {
  const auto asked =
      xcb_get_image(m_pConnection, XCB_IMAGE_FORMAT_Z_PIXMAP, aWindow, 0, 0,
                    static_cast<std::uint16_t>(aWidth), static_cast<std::uint16_t>(aHeight), ~0u);
  xcb_get_image_reply_t* image = xcb_get_image_reply(m_pConnection, asked, nullptr);
  Picture picture(aWidth, aHeight);
  if (image != nullptr) {
    const std::uint8_t* bytes = xcb_get_image_data(image);  // blue, green, red, unused
    for (int y = 0; y < aHeight; ++y) {
      for (int x = 0; x < aWidth; ++x, bytes += 4)
        picture.Set(x, y, std::uint32_t{bytes[2]} << 24 | bytes[1] << 16 | bytes[0] << 8 | 0xFF);
    }
  }
  std::free(image);
  return picture;
}
