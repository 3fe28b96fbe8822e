// SceneWidget: forwards Qt's events to the scene. Host's thread.

#include "embed-qt/SceneWidget.h"

#include <QMouseEvent>
#include <QWheelEvent>

namespace {

constexpr double kWheelNotch = 120;  // in Qt's unit, eighths of a degree

}  // namespace

NativeWidget::NativeWidget(QWidget* aParent) : QWidget(aParent) {
  setAttribute(Qt::WA_NativeWindow);        // a separate window, not a part of the main window
  setAttribute(Qt::WA_PaintOnScreen);       // no double buffer of Qt over the picture
  setAttribute(Qt::WA_NoSystemBackground);  // Qt does not clear the window
  winId();                                  // creates the window now
}

SceneWidget::SceneWidget(std::shared_ptr<const Model> aModel, Picked aPicked, QWidget* aParent)
    : NativeWidget(aParent),
      m_scene(std::move(aModel), SceneOptions(), Window()),
      m_dragging(m_scene),
      m_picked(std::move(aPicked)) {
  setMinimumSize(160, 120);
  m_scene.DrawOnRequest();
}

bool SceneWidget::event(QEvent* aEvent) {
  // Qt can give a widget another window when its parent changes. The scene moves to the new window.
  if (aEvent->type() == QEvent::WinIdChange && Window() != 0) m_scene.MoveTo(Window());
  return QWidget::event(aEvent);
}

void SceneWidget::resizeEvent(QResizeEvent*) {
  const QSize pixels = size() * devicePixelRatioF();  // pixels of the screen, not Qt's
  m_scene.SetSize(pixels.width(), pixels.height());
}

void SceneWidget::MovePointer(const QMouseEvent& aEvent) {
  const QPointF pixel = aEvent.localPos() * devicePixelRatioF();
  m_dragging.Move(pixel.x(), pixel.y());
}

void SceneWidget::mousePressEvent(QMouseEvent* aEvent) {
  MovePointer(*aEvent);
  m_dragging.Press(Dragging::KindOf(aEvent->button() == Qt::LeftButton,
                                    aEvent->modifiers().testFlag(Qt::ShiftModifier),
                                    aEvent->modifiers().testFlag(Qt::ControlModifier)));
}

void SceneWidget::mouseMoveEvent(QMouseEvent* aEvent) { MovePointer(*aEvent); }

void SceneWidget::mouseReleaseEvent(QMouseEvent* aEvent) {
  MovePointer(*aEvent);
  if (const auto box = m_dragging.Release()) m_picked(m_scene.Pick(*box));
}

void SceneWidget::wheelEvent(QWheelEvent* aEvent) {
  m_dragging.Wheel(aEvent->angleDelta().y() / kWheelNotch);
}
