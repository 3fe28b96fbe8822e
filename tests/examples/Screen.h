// Screen: an X server of a test, the content of its windows, and input from its mouse and keyboard. One test
// thread.

#pragma once

#include <xcb/xcb.h>

#include "Program.h"
#include "shared/Picture.h"
#include "support/XServer.h"

/// A 24-bit screen of 2048 by 1536 pixels without a window manager.
class Screen {
 public:
  Screen();
  ~Screen();
  Screen(Screen&&) = delete;

  /// Returns the value of DISPLAY for programs on this screen.
  const std::string& Display() const { return m_server.Display(); }

  /// Waits for a top-level window whose title contains a text. Later operations concern this window.
  /// @return false if there is none in time
  bool WaitForWindow(const std::string& aTitle);
  std::string Title() const;
  /// Resizes the window, as a user does by its frame.
  void Resize(int aWidth, int aHeight);
  /// Asks the window to close, as a user does by its frame.
  void Close();
  /// Gives the window the keyboard focus, after it is shown.
  void Focus();

  /// Returns the picture of the screen in the window's place.
  Picture Shot() const;
  /// Returns the colour of a pixel of the window, 0xRRGGBB.
  std::uint32_t Pixel(int aX, int aY) const;

  // Input. Positions are pixels of the window.
  void MoveTo(int aX, int aY);
  void Click(int aX, int aY);
  /// @param aHeld keycode of a key that is held meanwhile; 0 for none
  void Drag(int aX1, int aY1, int aX2, int aY2, std::uint8_t aHeld = 0);
  /// Presses and releases a key. @param aKeycode keycode of the server
  void Press(std::uint8_t aKeycode);
  /// Drops files on the window, as a file manager does.
  void Drop(const std::vector<std::string>& aPaths);

 private:
  struct Place {
    int x = 0, y = 0, width = 0, height = 0;
  };

  std::string TitleOf(xcb_window_t aWindow) const;
  /// Returns the position and size of the window on the screen; all 0 if it does not exist.
  Place Where() const;
  xcb_atom_t Atom(const std::string& aName) const;
  /// Sends the window a message. @param aType name of its type
  void Send(const char* aType, const std::vector<std::uint32_t>& aData);
  /// Answers the request for the text of a drop.
  bool HandOver(const std::string& aText);
  void Fake(std::uint8_t aType, std::uint8_t aDetail, int aX = 0, int aY = 0);
  /// Presses or releases the left mouse button. @param aType XCB_BUTTON_PRESS or XCB_BUTTON_RELEASE
  void Button(std::uint8_t aType);

  const XServer m_server{"2048x1536x24"};
  xcb_connection_t* m_connection = nullptr;
  xcb_window_t m_root = 0;
  xcb_window_t m_window = 0;
  xcb_window_t m_source = 0;  // source of drops
};

/// A host in a window on a separate screen. Its model and its output are in the folder.
class HostOnScreen : public testing::Test {
 protected:
  ~HostOnScreen() override;

  void Run(const std::vector<std::string>& aCommand);
  /// Runs it, and waits for a window whose title contains a text.
  void Open(const std::vector<std::string>& aCommand, const std::string& aTitle);
  /// Waits for its end. @return its exit status
  int Status();
  bool TitleEndsWith(const std::string& aEnd);

  Screen m_screen;
  TestFolder m_folder;

 private:
  pid_t m_program = -1;
};
