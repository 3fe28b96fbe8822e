// Screen: an X server of the test's own, what its windows show, and a hand on its mouse and keyboard.
// For one test thread; the server's process is ended by its id.

#pragma once

#include <sys/types.h>
#include <xcb/xcb.h>

#include "Program.h"
#include "shared/Picture.h"
#include "support/Test.h"

/// Runs while the object stands: a 24-bit screen of 2048 by 1536 pixels, without a window manager.
class Screen {
 public:
  Screen();
  ~Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  /// The value of DISPLAY for a program that is to be shown.
  const std::string& Display() const { return m_display; }

  /// Waits for a top-level window whose title holds a text, and takes it as the one that is meant from now
  /// on.
  /// @return false when none comes
  bool WaitForWindow(const std::string& aTitle);
  std::string Title() const;
  /// Gives the window another size, as a user does by its frame.
  void Resize(int aWidth, int aHeight);
  /// Asks the window to close, as a user does by its frame.
  void Close();
  /// Gives the keyboard to the window, once it is shown.
  void Focus();

  /// What the screen shows in the window's place.
  Picture Shot() const;
  /// The colour of a pixel of the window, 0xRRGGBB.
  std::uint32_t Pixel(int aX, int aY) const;

  // Input. Places are pixels of the window.
  void MoveTo(int aX, int aY);
  void Button(bool aDown);
  void Click(int aX, int aY);
  /// @param aHeld keycode of a key that is held meanwhile; 0 for none
  void Drag(int aX1, int aY1, int aX2, int aY2, std::uint8_t aHeld = 0);
  /// Presses and releases a key. @param aKeycode the server's
  void Press(std::uint8_t aKeycode);
  /// Drops files on the window, as a file manager does.
  void Drop(const std::vector<std::string>& aPaths);

 private:
  struct Place {
    int x = 0, y = 0, width = 0, height = 0;
  };

  std::string TitleOf(xcb_window_t aWindow) const;
  /// Where the window stands.
  Place Where() const;
  xcb_atom_t Atom(const std::string& aName) const;
  /// Sends the window a message. @param aType the name of its type
  void Send(const char* aType, const std::vector<std::uint32_t>& aData);
  /// Answers the question for the text that a drop brings.
  bool HandOver(const std::string& aText);
  void Fake(std::uint8_t aType, std::uint8_t aDetail, int aX = 0, int aY = 0);

  TestFolder m_folder;
  pid_t m_process = -1;
  std::string m_display = ":";
  xcb_connection_t* m_connection = nullptr;
  xcb_window_t m_root = 0;
  xcb_window_t m_window = 0;
  xcb_window_t m_source = 0;  // of drops
};

/// A host in a window of a screen of its own. What it is and what it says stand in the folder.
class HostOnScreen : public testing::Test {
 protected:
  ~HostOnScreen() override;

  void Run(const std::vector<std::string>& aCommand);
  /// Runs it, and waits for a window whose title holds a text.
  void Open(const std::vector<std::string>& aCommand, const std::string& aTitle);
  /// Waits for its end. @return its exit status
  int Status();
  bool TitleEndsWith(const std::string& aEnd);

  Screen m_screen;
  TestFolder m_folder;

 private:
  pid_t m_program = -1;
};
