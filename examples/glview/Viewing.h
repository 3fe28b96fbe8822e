// Viewing: what a window of models does, whatever toolkit the window is of: it reads, shows, picks and writes
// pictures. The host's thread, and those of its loader.

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
  /// Shows the models of the options, once they have been read, in a child of a window.
  /// @param aSetTitle sets the window's title
  Viewing(const Options& aOptions, ULONG_PTR aParent, std::function<void(const std::string&)> aSetTitle);

  void SetSize(int aWidth, int aHeight) { m_scene.SetSize(aWidth, aHeight); }
  /// Does what a key stands for, by the digit, sign or capital letter on it; arrows are ^ v < >.
  void Key(char aKey);
  void Press(Dragging::Kind aKind) { m_dragging.Press(aKind); }
  void Move(double aX, double aY) { m_dragging.Move(aX, aY); }
  void Release();
  /// @param aUp steps of the wheel, away from the user
  void Wheel(double aUp);
  /// Shows the model that many places further on in the folder that is shown.
  void Step(int aBy) { m_loader.Step(aBy); }
  /// Shows other models in place of these.
  void Show(std::vector<std::string> aPaths);

  /// Follows what goes on elsewhere; to be called after each event, and after FollowPeriod without one.
  /// @throws ModelError when the first models can't be read
  void Follow();
  std::chrono::milliseconds FollowPeriod() const;

 private:
  void Pick(const PixelBox& aBox);
  /// Cuts the model open square to the next axis, or not at all.
  void NextSection();
  void MoveSection(double aShare);
  void NextStandardView();
  void ToggleMeasuring();
  /// Shows how far reading is, and what was read once it is there.
  void FollowReading();
  void StartCapture();
  /// Writes the picture that was asked for, once it is there.
  void FinishCapture();
  /// Shows a word at the end of the title.
  void Note(const std::string& aWord);
  void UpdateTitle();

  const bool m_together;
  const std::function<void(const std::string&)> m_setTitle;
  std::shared_ptr<const Model> m_model = std::make_shared<const Model>();  // nothing yet
  Scene m_scene;
  Dragging m_dragging;
  std::string m_picked;
  SceneCapture m_picture;
  std::string m_note;
  int m_standardView = -1;  // the last one that was gone to
  bool m_measuring = false;
  Loader m_loader;
  std::optional<std::chrono::steady_clock::time_point> m_titleTime;  // none: at once
};
