#pragma once
// The drawings a host has open, and the events of their lives.
#include "base/Text.hpp"

namespace tq {

class Drawing;
class Editor;

// One open drawing, as the host's document manager knows it.
class Document {
 public:
  virtual ~Document() = default;
  virtual Drawing& drawing() = 0;
  virtual Editor& editor() = 0;
};

class DocumentObserver {
 public:
  virtual ~DocumentObserver() = default;
  // The document is about to be closed; it is still valid during the call.
  virtual void DocumentToBeDestroyed(Document& document) = 0;
};

class Documents {
 public:
  virtual ~Documents() = default;
  // The current document; nothing when none is open.
  virtual Document* Current() = 0;
  virtual void AddObserver(DocumentObserver& observer) = 0;
  virtual void RemoveObserver(DocumentObserver& observer) = 0;
};

}  // namespace tq
