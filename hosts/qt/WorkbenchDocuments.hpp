#pragma once
// The open tabs as the add-in's documents: the current one is the current tab's drawing, and
// a tab that closes is announced to the observers (the per-document data) before it goes.
#include <map>
#include <memory>
#include <vector>

#include "ports/Documents.hpp"

namespace tq::qt {

class DrawingTab;
class MainWindow;

class TabDocument : public Document {
 public:
  TabDocument(DrawingTab& tab, Editor& editor) : tab_(tab), editor_(editor) {}
  Drawing& drawing() override;
  Editor& editor() override { return editor_; }
  DrawingTab& tab() { return tab_; }

 private:
  DrawingTab& tab_;
  Editor& editor_;
};

class WorkbenchDocuments : public Documents {
 public:
  explicit WorkbenchDocuments(MainWindow& window) : window_(window) {}
  // The current tab's document, once its drawing is read; nothing otherwise.
  Document* Current() override;
  void AddObserver(DocumentObserver& observer) override { observers_.push_back(&observer); }
  void RemoveObserver(DocumentObserver& observer) override;
  // The tab is about to close: its observers hear of it while it is still valid.
  void Closing(DrawingTab& tab);
  // The document of a tab; null before the add-in first asked for it.
  TabDocument* Of(DrawingTab& tab);

 private:
  MainWindow& window_;
  std::map<DrawingTab*, std::unique_ptr<TabDocument>> documents_;
  std::vector<DocumentObserver*> observers_;
};

}  // namespace tq::qt
