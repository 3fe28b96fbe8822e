// Viewing: keys, loading and captures of glview's window. Host's thread.

#include "glview/Viewing.h"

#include <cstdio>
#include <filesystem>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto kTitlePeriod = 250ms, kReadingPeriod = 50ms;
constexpr auto kAnimationPeriod = 15ms;
constexpr int kCaptureZoom = 2;
constexpr double kStep = 0.1, kLook = 0.05;  // per arrow key: radii and radians
constexpr double kSectionStep = 0.02;

/// Returns the first unused file name of the form model-001.png. The name of many models is cut.
std::string FreeName(const std::string& aModel) {
  constexpr std::size_t kLongest = 200;  // bytes; file systems allow 255 for the whole name
  std::string stem = std::filesystem::path(aModel).stem().string();
  if (stem.size() > kLongest) {
    std::size_t end = kLongest;
    while (end > 0 && (stem[end] & 0xC0) == 0x80) --end;  // a byte within a character of UTF-8
    stem.resize(end);
  }
  for (int number = 1;; ++number) {
    char tail[24];
    std::snprintf(tail, sizeof(tail), "-%03d.png", number);
    std::error_code error;  // the write reports it
    if (!std::filesystem::exists(stem + tail, error)) return stem + tail;
  }
}

}  // namespace

Viewing::Viewing(const Options& aOptions, ULONG_PTR aParent,
                 std::function<void(const std::string&)> aSetTitle)
    : m_together(aOptions.together),
      m_setTitle(std::move(aSetTitle)),
      m_scene(m_model, aOptions, aParent),
      m_dragging(m_scene),
      m_loader(aOptions.limits) {
  m_scene.DrawOnRequest();
  m_loader.Start(aOptions.models, m_together);
}

void Viewing::Key(char aKey) {
  switch (aKey) {
    case '1':
    case '4':
      return m_scene.SetViews(aKey - '0');
    case 'A':
      return m_scene.SetAxes(!m_scene.HasAxes());
    case '^':
      return m_scene.Walk(kStep, 0, 0);
    case 'v':
      return m_scene.Walk(-kStep, 0, 0);
    case '<':
      return m_scene.Walk(0, 0, kLook);
    case '>':
      return m_scene.Walk(0, 0, -kLook);
    case '-':
      return MoveSection(-kSectionStep);
    case '+':
    case '=':
      return MoveSection(kSectionStep);
    case 'C':
      return StartCapture();
    case 'D':
      return ToggleMeasuring();
    case 'F':
      return m_scene.SetFog(!m_scene.HasFog());
    case 'M':
      return m_scene.SetTextures(!m_scene.HasTextures());
    case 'R':
      return m_scene.ResetCamera();
    case 'S':
      return NextSection();
    case 'T':
      return m_scene.SetText(!m_scene.HasText());
    case 'V':
      return NextStandardView();
    case 'W': {
      constexpr int kShades = 4;
      return m_scene.SetShade(static_cast<Shade>((static_cast<int>(m_scene.GetShade()) + 1) % kShades));
    }
    default:
      return;
  }
}

void Viewing::Release() {
  if (const auto box = m_dragging.Release()) Pick(*box);
}

void Viewing::Wheel(double aUp) { m_dragging.Wheel(aUp); }

void Viewing::Pick(const PixelBox& aBox) {
  if (m_measuring && aBox.point) {
    m_scene.MeasureAt(aBox.x1, aBox.y1);
    const std::string text = m_scene.Measured();
    return Note(text.empty() ? "measuring" : text);
  }
  const auto ids = m_scene.Pick(aBox);
  m_scene.Mark(ids);
  m_picked.clear();
  for (const std::string& name : m_scene.NamesOf(ids)) m_picked += (m_picked.empty() ? "" : ", ") + name;
  m_titleTime.reset();
}

void Viewing::NextSection() {
  Section section = m_scene.GetSection();
  constexpr int kAxes = 3;
  section.axis = section.axis + 1 == kAxes ? -1 : section.axis + 1;
  m_scene.SetSection(section);
}

void Viewing::MoveSection(double aShare) {
  Section section = m_scene.GetSection();
  section.share += aShare;
  if (section.IsOn()) m_scene.SetSection(section);
}

void Viewing::NextStandardView() {
  constexpr int kViews = static_cast<int>(GLStandardView::Isometric) + 1;
  m_standardView = (m_standardView + 1) % kViews;
  m_scene.GoTo(static_cast<GLStandardView>(m_standardView));
}

void Viewing::ToggleMeasuring() {
  m_measuring = !m_measuring;
  m_scene.EndMeasuring();
  Note(m_measuring ? "measuring" : "");
}

void Viewing::Show(std::vector<std::string> aPaths) { m_loader.Start(std::move(aPaths), m_together); }

void Viewing::Follow() {
  m_scene.Animate();
  FollowReading();
  FinishCapture();
  UpdateTitle();
}

std::chrono::milliseconds Viewing::FollowPeriod() const {
  if (m_scene.IsAnimated()) return kAnimationPeriod;
  return m_loader.IsReading() ? kReadingPeriod : kTitlePeriod;
}

void Viewing::FollowReading() {
  if (!m_loader.IsReading()) return;
  const bool ready = m_loader.IsReady();
  m_scene.ShowReading(ready ? Progress::kIdle : m_loader.Share());
  if (!ready) return;
  try {
    m_model = m_loader.Take();
  } catch (const ModelError& error) {
    const std::string place = m_loader.Place();
    if (m_model->parts.empty() && place.empty()) throw;  // no model to show instead
    return Note(place.empty() ? error.what() : place + ": " + error.what());
  }
  m_scene.SetModel(m_model);
  m_picked.clear();
  Note(m_loader.Place());
}

void Viewing::StartCapture() {
  if (m_picture.IsPending()) return;
  Note("taking a picture");
  m_picture = m_scene.Capture(kCaptureZoom);
}

void Viewing::FinishCapture() {
  if (!m_picture.IsPending() || !m_picture.IsReady(0ms)) return;
  m_scene.Redraw();  // the capture deleted the window's lists; a frame compiles them again
  const auto picture = m_picture.Take();
  if (!picture) return Note("the capture failed");
  const std::string name = FreeName(m_model->name);
  Note(WritePng(*picture, name) ? "wrote " + name : "cannot write " + name);
}

void Viewing::Note(const std::string& aWord) {
  m_note = aWord;
  m_titleTime.reset();
  UpdateTitle();
}

void Viewing::UpdateTitle() {
  const auto now = std::chrono::steady_clock::now();
  if (m_titleTime && now - *m_titleTime < kTitlePeriod) return;
  m_titleTime = now;
  if (m_loader.IsReading()) {
    const int percent = static_cast<int>(m_loader.Share() * 100.0f);
    return m_setTitle("glview - reading " + std::to_string(percent) + " %");
  }
  char frame[32];
  std::snprintf(frame, sizeof(frame), "%.1f ms", m_scene.FrameMilliseconds());
  std::string title =
      m_model->name + " - " + std::to_string(m_model->CountTriangles()) + " triangles - " + frame;
  if (!m_picked.empty()) title += " - " + m_picked;
  if (!m_note.empty()) title += " - " + m_note;
  m_setTitle(title);
}
