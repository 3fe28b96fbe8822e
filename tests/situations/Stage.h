// Stage: a context with a scene, which draws, captures and picks on request, and calls a function of the test
// at one place of the next pass. The test's thread drives it; the callbacks run on the draw thread.

#pragma once

#include "support/Scene.h"

/// Where the function is called.
enum class Place : int { kNowhere, kFrame, kCapture, kPick, kGauge, kOpenList, kOnData };

/// Results of a pass.
struct Outcome {
  Picture picture;
  std::vector<ULONG> ids;
  unsigned error = 0;  ///< of GL
  friend bool operator==(const Outcome&, const Outcome&) = default;
};

/// Values from the getters of a context and its parts, each with a name.
using Settings = std::vector<std::pair<std::string_view, double>>;

class Stage {
 public:
  static constexpr int kWidth = 64, kHeight = 48;

  Stage();
  ~Stage();
  Stage(Stage&&) = delete;

  /// Restores everything that an operation may have changed.
  void Reset();
  /// Requests one call of a function, at a place of a later pass.
  void Arm(Place aPlace, std::function<void()> aCall);
  /// Runs a function as a task of the draw thread, and waits for it.
  void Task(std::function<void()> aCall);
  /// Draws on request again, and attaches the stage's capture.
  void Control();

  // The passes. Each waits for its end, for at most a minute.
  Outcome Frame();
  Outcome Capture();
  Outcome Pick();

  Settings Read();

  GLPtr<IGLContext> context = GLCreate<IGLContext>(CLSID_GLContext);
  GLPtr<IGLCanvas> canvas;
  GLPtr<IGLViewer> viewer, spare;  ///< the visible viewer, and a hidden one
  GLPtr<IGLLight> light;
  GLPtr<IGLFog> fog;
  GLPtr<IGLFont> font, system;  ///< both printed in every pass
  GLPtr<IGLPainter> painter;
  GLPtr<TestCapture> capture;
  int list = 0;  ///< drawn in every pass

 private:
  class Gauge;
  class Picturing;

  void ForgetMembers();
  void Draw(Scene& aScene);
  void DrawFirst(IGLCanvas& aCanvas);
  void DrawSecond(IGLCanvas& aCanvas);
  void CallAt(Place aPlace);

  GLPtr<IGLViewerGauge> m_Gauge;
  GLString m_Text{"Ab"};
  std::function<void()> m_Call;
  std::atomic<Place> m_Armed{Place::kNowhere};
  std::atomic<bool> m_bCapturing{false}, m_bWanted{false};
  std::atomic<unsigned> m_uError{0};
  Picture m_Picture;  // written before m_bWanted is cleared
};
