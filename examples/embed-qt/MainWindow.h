// MainWindow: the model, the tree of its parts, and the tool bar. What is picked in one of the two is picked
// in the other. The host's thread only.

#pragma once

#include <QMainWindow>
#include <vector>

#include "embed-qt/SceneWidget.h"

class QTreeWidget;

class MainWindow final : public QMainWindow {
 public:
  /// @throws std::runtime_error when there is no context to be had
  explicit MainWindow(std::shared_ptr<const Model> aModel);

 private:
  void FillTree();
  void FillToolBar();
  void AskForBackground();
  /// Selects parts in the tree, and so in the scene.
  void SelectInTree(const std::vector<ULONG>& aIds);
  /// Marks in the scene what is selected in the tree.
  void MarkSelected();

  const std::shared_ptr<const Model> m_model;
  QTreeWidget* m_tree;  // these two belong to the window
  SceneWidget* m_sceneWidget;
};
