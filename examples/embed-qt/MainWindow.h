// MainWindow: the model, the tree of its parts, and the tool bar. Scene and tree share one selection. Host's
// thread only.

#pragma once

#include <QMainWindow>
#include <vector>

#include "embed-qt/SceneWidget.h"

class QTreeWidget;

class MainWindow final : public QMainWindow {
 public:
  /// @throws std::runtime_error if no context can be created
  explicit MainWindow(std::shared_ptr<const Model> aModel);

 private:
  void FillTree();
  void FillToolBar();
  void AskForBackground();
  /// Selects parts in the tree, which marks them in the scene.
  void SelectInTree(const std::vector<ULONG>& aIds);
  /// Marks the selected items of the tree in the scene.
  void MarkSelected();

  const std::shared_ptr<const Model> m_model;
  QTreeWidget* m_tree;  // Qt: the window owns both
  SceneWidget* m_sceneWidget;
};
