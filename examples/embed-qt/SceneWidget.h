// SceneWidget: a widget that shows a model. Its native window is the parent of the component's window. Host's
// thread only.

#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "shared/model/Dragging.h"
#include "shared/model/Scene.h"

/// A widget with a native window, in which Qt paints nothing.
class NativeWidget : public QWidget {
 public:
  explicit NativeWidget(QWidget* aParent);

  QPaintEngine* paintEngine() const override { return nullptr; }
  /// Window id to pass to the component.
  ULONG_PTR Window() const { return static_cast<ULONG_PTR>(internalWinId()); }
};

class SceneWidget final : public NativeWidget {
 public:
  /// Receives the parts that the user picks.
  using Picked = std::function<void(const std::vector<ULONG>&)>;

  /// @throws std::runtime_error if no context can be created
  SceneWidget(std::shared_ptr<const Model> aModel, Picked aPicked, QWidget* aParent);

  Scene& GetScene() { return m_scene; }
  QSize sizeHint() const override { return {720, 600}; }

 protected:
  bool event(QEvent* aEvent) override;
  void resizeEvent(QResizeEvent* aEvent) override;
  void mousePressEvent(QMouseEvent* aEvent) override;
  void mouseMoveEvent(QMouseEvent* aEvent) override;
  void mouseReleaseEvent(QMouseEvent* aEvent) override;
  void wheelEvent(QWheelEvent* aEvent) override;

 private:
  void MovePointer(const QMouseEvent& aEvent);

  Scene m_scene;  // destroyed before the widget's window
  Dragging m_dragging;
  Picked m_picked;
};
