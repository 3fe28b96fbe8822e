// MainWindow: the model, the tree of its parts, and the tool bar. Scene and tree share one selection. The
// scene can move into a separate window and back. Host's thread only.

#pragma once

#include <QMainWindow>
#include <vector>

#include "embed-qt/SceneWidget.h"

class QSplitter;
class QTreeWidget;

class MainWindow final : public QMainWindow {
 public:
  /// @throws std::runtime_error if no context can be created
  explicit MainWindow(std::shared_ptr<const Model> aModel);

 protected:
  void closeEvent(QCloseEvent* aEvent) override;
  bool eventFilter(QObject* aWatched, QEvent* aEvent) override;

 private:
  void FillTree();
  void FillToolBar();
  void AskForBackground();
  /// Moves the scene into a separate window, or back beside the tree.
  void Detach(bool aDetached);
  /// Selects parts in the tree, which marks them in the scene.
  void SelectInTree(const std::vector<ULONG>& aIds);
  /// Marks the selected items of the tree in the scene.
  void MarkSelected();

  const std::shared_ptr<const Model> m_model;
  // Qt: the window owns these.
  QSplitter* m_splitter;
  QTreeWidget* m_tree;
  SceneWidget* m_sceneWidget;
  QAction* m_detach = nullptr;
};
