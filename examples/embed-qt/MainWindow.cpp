// MainWindow: the window of embed-qt, and the selection that the scene and the tree share. Host's thread.

#include "embed-qt/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QColorDialog>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <algorithm>

namespace {

constexpr int kIdRole = Qt::UserRole;  // of a tree item: identifier of the part, 0 for the model

ULONG IdOf(const QTreeWidgetItem& aItem) { return aItem.data(0, kIdRole).toUInt(); }

}  // namespace

MainWindow::MainWindow(std::shared_ptr<const Model> aModel) : m_model(std::move(aModel)) {
  // Each widget gets its parent at construction. With a later parent Qt would create its native window again.
  m_splitter = new QSplitter(this);
  m_tree = new QTreeWidget(m_splitter);
  m_sceneWidget = new SceneWidget(
      m_model, [this](const std::vector<ULONG>& aIds) { SelectInTree(aIds); }, m_splitter);
  m_sceneWidget->installEventFilter(this);
  m_splitter->setStretchFactor(1, 1);  // the scene grows with the window
  setCentralWidget(m_splitter);
  FillTree();
  FillToolBar();
  MarkSelected();
  resize(960, 680);
}

void MainWindow::FillTree() {
  m_tree->setHeaderHidden(true);
  m_tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
  auto* const root = new QTreeWidgetItem(m_tree, {QString::fromStdString(m_model->name)});
  root->setData(0, kIdRole, 0u);
  for (const Part& part : m_model->parts) {
    auto* const item = new QTreeWidgetItem(root, {QString::fromStdString(part.name)});
    item->setData(0, kIdRole, part.id);
  }
  root->setExpanded(true);
  connect(m_tree, &QTreeWidget::itemSelectionChanged, this, &MainWindow::MarkSelected);
}

void MainWindow::FillToolBar() {
  QToolBar* const bar = addToolBar("View");
  bar->setMovable(false);
  Scene& scene = m_sceneWidget->GetScene();
  const auto add = [&](const char* aText, int aKey) {
    QAction* const action = bar->addAction(aText);
    action->setShortcut(aKey);
    action->setShortcutContext(Qt::ApplicationShortcut);  // also in the window of a detached scene
    action->setToolTip(QString("%1 (%2)").arg(aText, action->shortcut().toString()));
    return action;
  };
  const auto addSwitch = [&](const char* aText, int aKey, auto aSwitch) {
    QAction* const action = add(aText, aKey);
    action->setCheckable(true);
    connect(action, &QAction::toggled, this, aSwitch);
    return action;
  };
  connect(add("Reset", Qt::Key_R), &QAction::triggered, this, [&scene] { scene.ResetCamera(); });
  addSwitch("Four views", Qt::Key_4, [&scene](bool aOn) { scene.SetViews(aOn ? 4 : 1); });
  addSwitch("Wireframe", Qt::Key_W,
            [&scene](bool aOn) { scene.SetShade(aOn ? Shade::Wire : Shade::Shaded); });
  addSwitch("Fog", Qt::Key_F, [&scene](bool aOn) { scene.SetFog(aOn); });
  addSwitch("Axes", Qt::Key_A, [&scene](bool aOn) { scene.SetAxes(aOn); });
  connect(add("Background…", Qt::Key_B), &QAction::triggered, this, &MainWindow::AskForBackground);
  m_detach = addSwitch("Detach", Qt::Key_D, [this](bool aOn) { Detach(aOn); });
}

void MainWindow::Detach(bool aDetached) {
  // Qt gives the widget another window, and the scene follows: SceneWidget::event.
  if (aDetached) {
    m_sceneWidget->setParent(this, Qt::Window);
    m_sceneWidget->setWindowTitle(QString::fromStdString(m_model->name + " - detached"));
  } else {
    m_splitter->addWidget(m_sceneWidget);
  }
  m_sceneWidget->show();
}

// Qt destroys the native windows of a closed window at once, also those of its widgets, but the context must
// end before its window. Therefore this window is not closed: the event loop ends, and the destructor of the
// scene runs before Qt destroys the window.
void MainWindow::closeEvent(QCloseEvent* aEvent) {
  aEvent->ignore();
  QApplication::quit();
}

bool MainWindow::eventFilter(QObject* aWatched, QEvent* aEvent) {
  if (aEvent->type() != QEvent::Close || !m_detach->isChecked())
    return QMainWindow::eventFilter(aWatched, aEvent);
  m_detach->setChecked(false);  // the user has closed the window of the detached scene
  aEvent->ignore();
  return true;
}

void MainWindow::AskForBackground() {
  const QColor color = QColorDialog::getColor(Qt::white, this, "Background");
  if (!color.isValid()) return;
  const auto part = [](qreal aValue) { return static_cast<float>(aValue); };
  m_sceneWidget->GetScene().SetBackground(
      {part(color.redF()), part(color.greenF()), part(color.blueF()), 1.0f});
}

void MainWindow::SelectInTree(const std::vector<ULONG>& aIds) {
  {
    const QSignalBlocker oneChange(m_tree);  // MarkSelected runs once, after all changes
    m_tree->clearSelection();
    for (QTreeWidgetItemIterator item(m_tree); *item != nullptr; ++item) {
      if (std::find(aIds.begin(), aIds.end(), IdOf(**item)) == aIds.end()) continue;
      m_tree->setCurrentItem(*item, 0, QItemSelectionModel::Select);
    }
  }
  MarkSelected();
}

void MainWindow::MarkSelected() {
  std::vector<ULONG> ids;
  for (const QTreeWidgetItem* item : m_tree->selectedItems()) {
    if (IdOf(*item) != 0) {
      ids.push_back(IdOf(*item));
    } else {  // the model selects all of its parts
      for (const Part& part : m_model->parts) ids.push_back(part.id);
    }
  }
  Scene& scene = m_sceneWidget->GetScene();
  scene.Mark(ids);
  QStringList names;
  for (const std::string& name : scene.NamesOf(ids)) names << QString::fromStdString(name);
  setWindowTitle(names.isEmpty()
                     ? QString::fromStdString(m_model->name)
                     : QString("%1 - %2").arg(QString::fromStdString(m_model->name), names.join(", ")));
  statusBar()->showMessage(names.isEmpty()
                               ? QString("Drag turns, right drag pans, the wheel zooms, a click picks")
                               : names.join(", "));
}
