// Viewing: a context with the viewing headers, driven picture by picture.

#pragma once

#include <gllib/GLNavigation.h>
#include <gllib/GLViewing.h>

#include "support/Scene.h"
#include "support/TestDisplay.h"

constexpr std::uint32_t kBlack = 0x000000FF, kWhite = 0xFFFFFFFF;

/// A context that draws when the viewing object requests it. The painter can be replaced between frames.
class Viewing : public testing::Test {
 protected:
  Viewing() {
    PrepareDisplay();
    EXPECT_EQ(m_Context->Initialize(0), S_OK);
    m_Context.As<IGLContext2>()->SetControlledDrawThread(1, 0xFFFFFFFF);
    m_Context->EnableLighting(0);
    SetSize(90, 60);
    m_pViewer = AddViewer(0);
    m_Viewing = GLMake<GLViewing>(*m_Context.Get());
  }
  void SetSize(int aWidth, int aHeight) { m_Context->SetViewport(0, 0, aWidth, aHeight); }
  IGLViewer* AddViewer(int aOrtho) {
    IGLViewer* viewer = nullptr;
    m_Context->CreateViewer(1, aOrtho, &viewer);
    return viewer;
  }
  /// Adds a viewer below all others, which shows only the background.
  void AddBackdrop() { m_pBackdrop = AddViewer(1); }
  void Paint(DrawFunction aDraw) {
    const auto draw = [draw = std::move(aDraw), backdrop = m_pBackdrop](Scene& scene) {
      if (&scene.Viewer() != backdrop) draw(scene);
    };
    m_Viewing->AttachPainter(GLMake<TestPainter>(draw).Get());
  }
  /// Waits for a result of a frame.
  template <class Result>
  static Result Await(std::future<Result> aResult) {
    if (aResult.wait_for(std::chrono::seconds(20)) == std::future_status::ready) return aResult.get();
    ADD_FAILURE() << "no result";
    return {};
  }
  Picture Take(GLCaptureRequest aRequest = {}) {
    const auto target = GLCreate<IGLPixmap>(CLSID_GLPixmap);
    EXPECT_TRUE(Await(m_Viewing->TakePicture(target.Get(), aRequest)));
    return PictureOf(*target);
  }

  GLPtr<IGLContext> m_Context = GLCreate<IGLContext>(CLSID_GLContext);
  IGLViewer* m_pViewer = nullptr;
  IGLViewer* m_pBackdrop = nullptr;
  GLPtr<GLViewing> m_Viewing;
};
