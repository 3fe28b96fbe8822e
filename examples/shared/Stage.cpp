// Stage: sets up the context of a small example. Host's thread.

#include "shared/Stage.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string_view>

void Require(HRESULT aResult, const char* aMessage) {
  if (FAILED(aResult)) throw std::runtime_error(aMessage);
}

Stage::Stage(int aWidth, int aHeight) {
  setenv("GLLIB_DISPLAY", "headless", 1);
  m_context = GLCreate<IGLContext>(CLSID_GLContext);
  if (!m_context || FAILED(m_context->Initialize(0))) throw std::runtime_error("the context cannot draw");
  m_context->SetViewport(0, 0, aWidth, aHeight);
  m_reader = std::make_unique<FrameReader>(*m_context);
}

IGLViewer& Stage::AddViewer(const GLDATA_POINT& aEye, double aPitch) const {
  IGLViewer* viewer = nullptr;
  Require(m_context->CreateViewer(1, 0, &viewer), "cannot create a viewer");
  GLPtr<IGLCoord> eye;
  viewer->GetCoord(eye.Put());
  eye->SetOrigin3d(aEye.x, aEye.y, aEye.z);
  eye->RotateAboutX_RAD(-aPitch);
  return *viewer;
}

void Stage::AddDistantLight(const GLDATA_POINT& aDirection) const {
  IGLLight* light = nullptr;
  Require(m_context->CreateLight(&light), "cannot create a light");
  GLDATA_POINT direction = aDirection;
  light->SetAsSpotlight(0);
  light->SetDirection(&direction);
  light->Enable(1);
}

Picture Stage::Read() const {
  Picture picture;
  if (!m_reader->Read(picture)) throw std::runtime_error("no frame was drawn");
  return picture;
}

int RunExample(int argc, char** argv, Picture (*aExample)()) {
  if (argc != 3 || std::string_view(argv[1]) != "--out") {
    std::fprintf(stderr, "usage: %s --out FILE.png\n", argv[0]);
    return 2;
  }
  GLKeepFreedMemory();  // Mesa's software renderer frees memory in every frame
  try {
    if (WritePng(aExample(), argv[2])) return 0;
    std::fprintf(stderr, "%s: cannot write %s\n", argv[0], argv[2]);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s: %s\n", argv[0], failure.what());
  }
  return 1;
}
