// SceneWidget: a model in a widget. The component draws into the widget's own window, and Qt leaves that
// alone. The host's thread only.

#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "shared/model/Dragging.h"
#include "shared/model/Scene.h"

/// A widget with a window of its own, in which Qt paints nothing.
class NativeWidget : public QWidget {
 public:
  explicit NativeWidget(QWidget* aParent);

  QPaintEngine* paintEngine() const override { return nullptr; }
  /// The window's id for the component.
  ULONG_PTR Window() const { return static_cast<ULONG_PTR>(internalWinId()); }
};

class SceneWidget final : public NativeWidget {
 public:
  /// Told of the parts that the user points at.
  using Picked = std::function<void(const std::vector<ULONG>&)>;

  /// @throws std::runtime_error when there is no context to be had
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

  Scene m_scene;  // ends before the widget's window does
  Dragging m_dragging;
  Picked m_picked;
};
