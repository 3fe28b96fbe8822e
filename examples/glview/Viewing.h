// Viewing: the toolkit-independent part of glview's window. It reads, shows and picks models and writes
// pictures. Host's thread, and the threads of its loader.

#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "glview/Loader.h"
#include "glview/Options.h"
#include "shared/model/Dragging.h"
#include "shared/model/Scene.h"

class Viewing {
 public:
  /// Shows the models of the options in a child of a window, after they have been read.
  /// @param aSetTitle sets the window's title
  Viewing(const Options& aOptions, ULONG_PTR aParent, std::function<void(const std::string&)> aSetTitle);

  void SetSize(int aWidth, int aHeight) { m_scene.SetSize(aWidth, aHeight); }
  /// Handles a key. @param aKey the digit, sign or capital letter on it; arrows are ^ v < >
  void Key(char aKey);
  void Press(Dragging::Kind aKind) { m_dragging.Press(aKind); }
  void Move(double aX, double aY) { m_dragging.Move(aX, aY); }
  void Release();
  /// @param aUp steps of the wheel, positive away from the user
  void Wheel(double aUp);
  /// Shows the model aBy positions further on in the current folder.
  void Step(int aBy) { m_loader.Step(aBy); }
  /// Shows other models instead of the current ones.
  void Show(std::vector<std::string> aPaths);

  /// Continues reads, animations and captures, and updates the title. The host calls it after each event, and
  /// after FollowPeriod without an event.
  /// @throws ModelError if the first models cannot be read
  void Follow();
  std::chrono::milliseconds FollowPeriod() const;

 private:
  void Pick(const PixelBox& aBox);
  /// Moves the section to the next axis, or switches it off after the last one.
  void NextSection();
  void MoveSection(double aShare);
  void NextStandardView();
  void ToggleMeasuring();
  /// Shows the progress of reading, and the model after it has been read.
  void FollowReading();
  void StartCapture();
  /// Writes the requested picture after it has been taken.
  void FinishCapture();
  /// Shows a note at the end of the title.
  void Note(const std::string& aWord);
  void UpdateTitle();

  const bool m_together;
  const std::function<void(const std::string&)> m_setTitle;
  std::shared_ptr<const Model> m_model = std::make_shared<const Model>();  // empty until the first read
  Scene m_scene;
  Dragging m_dragging;
  std::string m_picked;
  SceneCapture m_picture;
  std::string m_note;
  int m_standardView = -1;  // index of the last standard view; -1 for none
  bool m_measuring = false;
  Loader m_loader;
  std::optional<std::chrono::steady_clock::time_point> m_titleTime;  // no value: update at once
};
