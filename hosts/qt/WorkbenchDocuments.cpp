#include "qt/WorkbenchDocuments.hpp"

#include <algorithm>

#include "qt/MainWindow.hpp"

namespace tq::qt {

Drawing& TabDocument::drawing() { return *tab_.drawing(); }

Document* WorkbenchDocuments::Current() {
  DrawingTab* tab = window_.currentTab();
  if (!tab || !tab->ready()) return nullptr;
  std::unique_ptr<TabDocument>& document = documents_[tab];
  if (!document) document = std::make_unique<TabDocument>(*tab, window_.editor());
  return document.get();
}

void WorkbenchDocuments::RemoveObserver(DocumentObserver& observer) {
  observers_.erase(std::remove(observers_.begin(), observers_.end(), &observer), observers_.end());
}

void WorkbenchDocuments::Closing(DrawingTab& tab) {
  auto found = documents_.find(&tab);
  if (found == documents_.end()) return;
  for (DocumentObserver* observer : std::vector<DocumentObserver*>(observers_)) observer->DocumentToBeDestroyed(*found->second);
  documents_.erase(found);
}

TabDocument* WorkbenchDocuments::Of(DrawingTab& tab) {
  auto found = documents_.find(&tab);
  return found == documents_.end() ? nullptr : found->second.get();
}

}  // namespace tq::qt
